# SPDX-License-Identifier: MIT
# Watching and driving the program on a virtual display, as a user would: shared by the tour and the tests of the
# packages, which source it. They set
#   tour       folder with the program's output.txt and errors.txt
#   pictures   folder for pictures
#   report     file in which the stand-in recorder reports (TARNVIK_STANDIN_REPORT)
#   DISPLAY    a display with a window manager

# wait_for SECONDS WHAT COMMAND...: until the command succeeds. The seconds are those of a quiet machine; a loaded one
# gets three times as long.
wait_for() {
    local end=$((SECONDS + 3 * $1)) what=$2
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
# picture NAME TEXT [TITLE]: of the whole desktop, and, as NAME-only, of the newest window with the title, which is the
# program's if none is given.
picture() {
    local title=${3:-TarnvikControl}
    sleep 0.7 # the picture is of what has been drawn, and the panel follows the recorder after half a second
    import -window root "$pictures/$1.png"
    if window "$title" >/dev/null; then
        import -frame -window "$(window "$title")" "$pictures/$1-only.png"
    fi
    say "picture $pictures/$1.png: $2"
}
# open_menu: id of the menu that is open. It is a window, but the window manager does not know it.
open_menu() {
    local id type managed
    managed=$(xprop -root _NET_CLIENT_LIST)
    for id in $(xdotool search --onlyvisible --name ''); do
        type=$(xprop -id "$id" _NET_WM_WINDOW_TYPE 2>/dev/null)
        # The tray's icon is such a window, too; its type tells.
        if [[ $type == *_TYPE_NORMAL* && $type != *OVERRIDE* && $managed != *$(printf '0x%x' "$id")* ]]; then
            echo "$id"
            return
        fi
    done
    return 1
}
no_menu() { ! open_menu; }
# edges WINDOW: left, top, right and bottom of a window with its frame, if it has one.
edges() {
    { xprop -id "$1" _NET_FRAME_EXTENTS; xwininfo -id "$1"; } | awk -F '[:=,] *' '
        /^_NET_FRAME_EXTENTS.*=/ { frame_left = $2; frame_right = $3; frame_top = $4; frame_bottom = $5 }
        /Absolute upper-left X:/ { left = $2 } /Absolute upper-left Y:/ { top = $2 }
        /Width:/ { width = $2 } /Height:/ { height = $2 }
        END { print left - frame_left, top - frame_top, left + width + frame_right, top + height + frame_bottom }'
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
