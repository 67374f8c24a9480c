#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A virtual desktop, its windows, and the program on it as a user drives it. The tour and the tests of the packages
# source this file; a program calls one of its functions, as in: scripts/desktop.sh windows TITLE
# Whoever sources it sets
#   work       folder with the program's output.txt and errors.txt
#   pictures   folder for pictures
#   texts      file of the translation that the program shows, for text()
#   report     file in which the stand-in recorder reports (TARNVIK_STANDIN_REPORT)

# start_desktop WIDTHxHEIGHT: sets DISPLAY to that of a virtual desktop, which ends with this shell at the latest.
start_desktop() {
    coproc DESKTOP { exec scripts/virtual-desktop "$1"; }
    desktop_process=$DESKTOP_PID
    read -r DISPLAY <&"${DESKTOP[0]}" || die "the virtual desktop does not start"
    export DISPLAY QT_QPA_PLATFORM=xcb
}
# end_desktop: ends it, if it was started, and waits for its end.
end_desktop() {
    [ -n "${desktop_process:-}" ] || return 0
    kill "$desktop_process" 2>/dev/null || true
    wait "$desktop_process" 2>/dev/null || true
}

# wait_for SECONDS WHAT COMMAND...: until the command succeeds. The seconds are those of a quiet machine; a loaded one
# gets three times as long.
wait_for() {
    local end=$((SECONDS + 3 * $1)) what=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        if ((SECONDS >= end)); then
            tail -n 5 "$work"/{output,errors}.txt 2>/dev/null || true
            screenshot "$pictures/failure.png" || true
            die "waited in vain for $what; see $pictures/failure.png"
        fi
        sleep 0.1
    done
}
# text SOURCE [VALUE]: a text of the program as the translations file $texts has it; it must stand in one line. The value
# replaces %1.
text() {
    awk -v source="<source>$1</source>" -v value="${2:-}" '
        found && sub(/^ *<translation>/, "") { sub(/<\/translation>$/, ""); sub(/%1/, value); print; exit }
        index($0, source) { found = 1 }
        END { exit !found }' "$texts" || die "no text '$1' in $texts"
}
# screenshot FILE: of the whole desktop.
screenshot() { import -window root "$1"; }
event_count() { grep -c " $1\$" "$report" || true; }
recorders_started() { [ "$(event_count started)" -ge "$1" ]; }
statuses_written() { [ "$(grep -c 'status .* written' "$work/output.txt")" -ge "$1" ]; }
last_recorder() { awk '$3 == "started" { pid = $2 } END { print pid }' "$report"; }
# windows TITLE: ids of the windows with this title that the window manager knows, the oldest first. Hidden ones are
# none of them, and neither is the icon in the tray.
windows() {
    local list id title
    list=$(xprop -root _NET_CLIENT_LIST)
    list=${list#*#}
    for id in ${list//,/}; do
        title=$(xprop -id "$id" _NET_WM_NAME 2>/dev/null) || continue # it has just been closed
        title=${title#*\"}
        if [ "${title%\"}" = "$1" ]; then
            echo "$id"
        fi
    done
}
# window TITLE: id of the newest one (the alignment dialog has the program's name as its title, too).
window() { windows "$1" | tail -n 1 | grep .; }
two_windows() { [ "$(windows "$1" | wc -l)" -eq 2 ]; }
gone() { ! xprop -root _NET_CLIENT_LIST | grep -q "$1\b"; }
no_window() { ! window "$1"; }
# dialogs TITLE: ids of those windows that are dialogs.
dialogs() {
    local id
    for id in $(windows "$1"); do
        if xprop -id "$id" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q _DIALOG; then
            echo "$id"
        fi
    done
}
dialog() { dialogs TarnvikControl | grep .; }
no_dialog() { ! dialog; }
# geometry WINDOW: left, top, width and height of a window without its frame.
geometry() {
    [ -n "$1" ] || return 1 # xwininfo would wait for a click on one
    xwininfo -id "$1" | awk -F ': *' '
        /Absolute upper-left X:/ { left = $2 } /Absolute upper-left Y:/ { top = $2 }
        /Width:/ { width = $2 } /Height:/ { height = $2 }
        END { print left, top, width, height }'
}
# centre WINDOW: x and y of its middle.
centre() {
    local left top width height
    read -r left top width height <<<"$(geometry "$1")"
    echo $((left + width / 2)) $((top + height / 2))
}
# has_keyboard WINDOW. The window manager's word for the active one does not tell: it may be minimised.
has_keyboard() { [ "$(xdotool getwindowfocus 2>/dev/null)" = $(($1)) ]; }
# activate TITLE: gives the newest window the keyboard, and waits until it keeps it. A window that is activated once more
# loses it for a moment, and with it a key; and where another window has just closed, both the window manager and the
# program itself activate this one, one after the other.
activate() {
    local id kept=0 attempt
    id=$(window "$1")
    for attempt in {1..40}; do
        if has_keyboard "$id"; then
            kept=$((kept + 1))
            [ $kept -lt 6 ] || return 0
        else
            kept=0
            [ $((attempt % 10)) -ne 9 ] || timeout 10 xdotool windowactivate --sync "$id"
        fi
        sleep 0.05
    done
}
# press TITLE KEY...
press() {
    activate "$1"
    shift
    timeout 10 xdotool key --clearmodifiers "$@"
}
# enter TITLE TEXT: types into the window and presses Return.
enter() {
    activate "$1"
    timeout 10 xdotool type --clearmodifiers --delay 2 "$2"
    press "$1" Return
}
# picture NAME TEXT [TITLE]: of the whole desktop, and, as NAME-only, of the newest window with the title, which is the
# program's if none is given.
picture() {
    local title=${3:-TarnvikControl}
    sleep 0.7 # the picture is of what has been drawn, and the panel follows the recorder after half a second
    screenshot "$pictures/$1.png"
    if window "$title" >/dev/null; then
        import -frame -window "$(window "$title")" "$pictures/$1-only.png"
    fi
    say "picture $pictures/$1.png: $2"
}
# open_menu: id of the menu that is open. It is a window, but the window manager does not know it.
open_menu() {
    local id type managed
    managed="$(xprop -root _NET_CLIENT_LIST),"
    for id in $(xdotool search --onlyvisible --name ''); do
        type=$(xprop -id "$id" _NET_WM_WINDOW_TYPE WM_CLASS 2>/dev/null) || continue
        # The tray's icon is such a window, too; its type tells, and under Wine whose it is.
        if [[ $type == *_TYPE_NORMAL* && $type != *OVERRIDE* && $type != *explorer.exe* && $managed != *$(printf '0x%x,' "$id")* ]]; then
            echo "$id"
            return
        fi
    done
    return 1
}
no_menu() { ! open_menu; }
# close_window TITLE: by the button in its frame.
close_window() {
    local top right
    read -r _ top right _ <<<"$(edges "$(window "$1")")"
    xdotool mousemove $((right - 11)) $((top + 10)) click 1
}
tray_icon() { window panel; }
# click_tray: on the only icon.
click_tray() {
    local x y
    read -r x y <<<"$(centre "$(window panel)")"
    xdotool mousemove "$x" "$y" click 1
}
# tray_menu_picture NAME TEXT: of the icon's menu, which is closed again.
tray_menu_picture() {
    local x y
    read -r x y <<<"$(centre "$(window panel)")"
    xdotool mousemove "$x" "$y" click 3
    menu_picture "$1" "$2" "$(window panel)"
    close_menu Escape
}
# edges WINDOW: left, top, right and bottom of a window with its frame, if it has one.
edges() {
    { geometry "$1"; xprop -id "$1" _NET_FRAME_EXTENTS; } | awk -F '[ ,=]+' '
        NR == 1 { left = $1; top = $2; right = left + $3; bottom = top + $4 }
        /^_NET_FRAME_EXTENTS.*=/ { left -= $2; right += $3; top -= $4; bottom += $5 }
        END { print left, top, right, bottom }'
}
# menu_picture NAME TEXT WINDOW: of the open menu together with the window that it belongs to.
menu_picture() {
    local area
    wait_for 5 "the menu" open_menu
    sleep 0.7
    area=$({ edges "$3"; edges "$(open_menu)"; } | awk '
        NR == 1 || $1 < left { left = $1 } NR == 1 || $2 < top { top = $2 }
        NR == 1 || $3 > right { right = $3 } NR == 1 || $4 > bottom { bottom = $4 }
        END { printf "%dx%d+%d+%d", right - left, bottom - top, left, top }')
    import -window root -crop "$area" +repage "$pictures/$1.png"
    say "picture $pictures/$1.png: $2"
}
# close_menu KEY...: presses the keys where the menu has the keyboard.
close_menu() {
    xdotool key --clearmodifiers "$@"
    wait_for 5 "the menu's end" no_menu
}

# Not sourced but called.
if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    set -euo pipefail
    "$@"
fi
