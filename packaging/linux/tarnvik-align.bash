# SPDX-License-Identifier: MIT
# Completion of tarnvik-align's arguments in bash.

# The ids in the alignment files among the words.
_tarnvik_align_ids() {
    local word
    for word in "${COMP_WORDS[@]:2}"; do
        [[ $word == *.ad ]] && "${COMP_WORDS[0]}" list --json "${word//\\/}" 2>/dev/null
    done | grep -o '"id":"[^"\\]*"' | cut -d '"' -f 4
}

_tarnvik_align() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]} options=--help
    compopt +o filenames
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W 'list show verify diff merge remove export import --help --version' -- "$current")
        return
    fi
    if [ "$previous" = --id ]; then
        local id
        while IFS= read -r id; do # compgen -W would run what an id holds
            [[ $id == "$current"* ]] && COMPREPLY+=("$(printf %q "$id")")
        done < <(_tarnvik_align_ids)
        return
    fi
    case $command in
        list) options+=' --json' ;;
        show) options+=' --id --json' ;;
        merge) options+=' --id --all --newer --dry-run --output' ;;
        remove) options+=' --id --output' ;;
        export) options+=' --id' ;;
        import) options+=' --output' ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        return
    fi
    compopt -o filenames
    local pattern='*.ad'
    [[ $command == import && $previous != --output && $previous != -o ]] && pattern='*.json'
    mapfile -t COMPREPLY < <(compgen -f -X "!$pattern" -- "$current"; compgen -d -- "$current")
}

complete -F _tarnvik_align tarnvik-align TarnvikAlign
