#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A Wayland desktop in place of the X11 one: sourced after desktop.sh, whose functions it replaces. Windows are known to
# the compositor, the icon in the tray to D-Bus; menus to neither, so their pictures are of the whole desktop.

start_desktop() {
    coproc DESKTOP { exec scripts/virtual-desktop "$1" --wayland; }
    desktop_process=$DESKTOP_PID
    read -r WAYLAND_DISPLAY SWAYSOCK DBUS_SESSION_BUS_ADDRESS <&"${DESKTOP[0]}" ||
        die "the virtual desktop does not start"
    export WAYLAND_DISPLAY SWAYSOCK DBUS_SESSION_BUS_ADDRESS QT_QPA_PLATFORM=wayland
    unset DISPLAY
}
screenshot() { grim "$1"; }
windows() {
    swaymsg -t get_tree | jq --arg title "$1" '.. | objects | select(.app_id? and .name == $title) | .id' | sort -n
}
gone() { ! swaymsg -t get_tree | jq -e --argjson id "$1" '.. | objects | select(.id? == $id)'; }
dialogs() { windows "$1" | sed 1d; } # the main window is the oldest
no_menu() { true; }
# keys KEY...: named as in "ctrl+q".
keys() {
    local key arguments=()
    for key in "$@"; do
        while [[ $key == *+* ]]; do
            arguments+=(-M "${key%%+*}")
            key=${key#*+}
        done
        arguments+=(-k "$key")
    done
    timeout 10 wtype "${arguments[@]}"
}
press() {
    swaymsg "[con_id=$(window "$1")] focus" >/dev/null
    shift
    keys "$@"
}
enter() {
    swaymsg "[con_id=$(window "$1")] focus" >/dev/null
    timeout 10 wtype "$2"
    press "$1" Return
}
picture() {
    sleep 0.7 # the picture is of what has been drawn, and the panel follows the recorder after half a second
    screenshot "$pictures/$1.png"
    say "picture $pictures/$1.png: $2"
}
menu_picture() { picture "$1" "$2"; }
close_menu() { keys "$@"; }
close_window() { swaymsg "[con_id=$(window "$1")] kill" >/dev/null; }

# item: where the only icon in the tray is found on D-Bus.
item() {
    dbus-send --session --print-reply=literal --dest=org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
        org.freedesktop.DBus.Properties.Get string:org.kde.StatusNotifierWatcher string:RegisteredStatusNotifierItems |
        grep -o ':[0-9.]*/StatusNotifierItem'
}
tray_icon() { item; }
click_tray() {
    local place
    place=$(item)
    dbus-send --session --print-reply --dest="${place%%/*}" "/${place#*/}" org.kde.StatusNotifierItem.Activate \
        int32:0 int32:0 >/dev/null
}
# tray_menu_picture NAME TEXT: its entries; the bar draws the menu only for a mouse, of which there is none here.
tray_menu_picture() {
    local place
    place=$(item)
    say "$2: $(dbus-send --session --print-reply --dest="${place%%/*}" /MenuBar com.canonical.dbusmenu.GetLayout \
        int32:0 int32:-1 array:string: | sed -n '/"label"/ { n; s/.*string "\(.*\)"/\1/p }' | tr -d _ | paste -sd ',')"
}
