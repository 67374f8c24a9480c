# SPDX-License-Identifier: MIT
# Watching and driving the program on a virtual display, as a user would: shared by the tour and the tests of the
# packages, which source it. They set
#   tour       folder with the program's output.txt and errors.txt
#   pictures   folder for pictures
#   report     file in which the stand-in recorder reports (TARNVIK_STANDIN_REPORT)
#   DISPLAY    a display with a window manager

# wait_for SECONDS WHAT COMMAND...: until the command succeeds.
wait_for() {
    local end=$((SECONDS + $1)) what=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        if ((SECONDS >= end)); then
            tail -n 5 "$tour"/{output,errors}.txt 2>/dev/null || true
            import -window root "$pictures/failure.png" || true
            die "waited in vain for $what; see $pictures/failure.png"
        fi
        sleep 0.1
    done
}
event_count() { grep -c " $1\$" "$report" || true; }
recorders_started() { [ "$(event_count started)" -ge "$1" ]; }
statuses_written() { [ "$(grep -c 'status .* written' "$tour/output.txt")" -ge "$1" ]; }
last_recorder() { awk '$3 == "started" { pid = $2 } END { print pid }' "$report"; }
# windows TITLE: ids of the managed windows with this title, the oldest first.
windows() {
    local id
    for id in $(xprop -root _NET_CLIENT_LIST | sed 's/.*#//; s/,/ /g'); do
        if [ "$(xprop -id "$id" _NET_WM_NAME | cut -d'"' -f2)" = "$1" ]; then
            echo "$id"
        fi
    done
}
# window TITLE: id of the newest one (the alignment dialog has the program's name as its title, too).
window() { windows "$1" | tail -n 1 | grep .; }
two_windows() { [ "$(windows "$1" | wc -l)" -eq 2 ]; }
gone() { ! xprop -root _NET_CLIENT_LIST | grep -q "$1\b"; }
no_window() { ! window "$1"; }
dialog() { xprop -id "$(window TarnvikControl)" _NET_WM_WINDOW_TYPE | grep -q DIALOG; }
no_dialog() { ! dialog; }
# press TITLE KEY...
press() {
    local id
    id=$(window "$1")
    shift
    timeout 10 xdotool windowactivate --sync "$id" key --clearmodifiers "$@"
}
# enter TITLE TEXT: types into the window and presses Return.
enter() {
    timeout 10 xdotool windowactivate --sync "$(window "$1")" type --clearmodifiers --delay 2 "$2"
    press "$1" Return
}
# picture NAME TEXT: of the whole desktop, and, as NAME-only, of the newest window of the program.
picture() {
    sleep 0.7 # the picture is of what has been drawn, and the panel follows the recorder after half a second
    import -window root "$pictures/$1.png"
    if window TarnvikControl >/dev/null; then
        import -frame -window "$(window TarnvikControl)" "$pictures/$1-only.png"
    fi
    say "picture $pictures/$1.png: $2"
}
