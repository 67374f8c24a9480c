#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The Debian 13 root in which the program is built for Windows and run under Wine: its own mingw-w64, Qt 6.8 host tools
# and Wine beside the machine's. It is set up once and serves every checkout. Sourced by the scripts of this folder;
# changes to the repository's root.
#
#   TARNVIK_WINDOWS_ROOT   where the root lies (default /var/cache/tarnvik-windows)
#   TARNVIK_WINDOWS_QT     an archive of Qt 6.8.2 for Windows (full path); without it Qt is built from Debian's source
#                          package, which takes more than an hour
#   TARNVIK_WINDOWS_QT_CHECKSUM
#                          the archive's SHA-256, when it is not the one that this project's packages are made with
#   TARNVIK_MIRROR         the Debian mirror (default: the first one that this machine's apt uses)
#
# The compiler cache is the caller's, or, when that is not root, one of the root's own, TARNVIK_WINDOWS_ROOT.ccache.

source "$(dirname "${BASH_SOURCE[0]}")/../lib.sh"

WINDOWS_ROOT=${TARNVIK_WINDOWS_ROOT:-/var/cache/tarnvik-windows}
WINDOWS_QT=${TARNVIK_WINDOWS_QT:-}
QT_VERSION=6.8.2
# Of the archive that this project's packages are made with.
QT_CHECKSUM=d2cbb70a0bf79076ff9abc3aa923f750e7a62a17d4d2c60df6dcd4307eceaaa2
# The checkout's place inside the root: the same for every checkout, so that the compiler cache serves all of them.
INSIDE=/tarnvik

BASE_PACKAGES=ca-certificates,build-essential,cmake,ninja-build,python3,perl,git,xz-utils,dpkg-dev
ROOT_PACKAGES=(g++-mingw-w64-x86-64-posix ccache
    qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools qt6-translations-l10n
    wine wine64 nsis python3-pefile xvfb xauth openbox trayer xdotool xclip x11-utils xrestop imagemagick fonts-dejavu-core procps
    sway waybar wtype grim qt6-wayland dbus at-spi2-core)

# enter_own_mounts SCRIPT ARGUMENT...: goes on as root, in a mount namespace of its own. All mounts made from then on are
# seen by nobody else and end with the script, however it ends; two checkouts can build at the same time. A user who is
# not root keeps their own compiler cache to themselves and owns in the end what was made in build/.
enter_own_mounts() {
    [ -n "${TARNVIK_OWN_MOUNTS:-}" ] && return
    local as_root=() hand_over=() cache=${CCACHE_DIR:-$HOME/.cache/ccache}
    mkdir -p build
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "the Debian root needs mounts and chroot: run this as root, or install sudo"
        as_root=(sudo --preserve-env=CI,SOURCE_DATE_EPOCH,TARNVIK_WINDOWS_ROOT,TARNVIK_WINDOWS_QT,TARNVIK_WINDOWS_QT_CHECKSUM,TARNVIK_MIRROR)
        # Other scripts may remove files meanwhile.
        hand_over=(bash -ec 'trap "find build -uid 0 -exec chown --no-dereference $0 {} + 2>/dev/null || true" EXIT; "$@"'
            "$(id -u):$(id -g)")
        cache=$WINDOWS_ROOT.ccache
    fi
    "${as_root[@]}" unshare --mount true 2>/dev/null ||
        die "this system does not allow mounts of one's own (in a container: it needs the capability SYS_ADMIN)"
    exec "${as_root[@]}" env TARNVIK_OWN_MOUNTS=1 TARNVIK_CCACHE="$cache" unshare --mount "${hand_over[@]}" "$@"
}

# set_up_root: makes or completes the root. Every step is marked when it is complete; an interrupted one is done again.
set_up_root() {
    if [ -n "$WINDOWS_QT" ]; then
        [ -e "$WINDOWS_QT" ] || die "TARNVIK_WINDOWS_QT names $WINDOWS_QT, which is not there"
    elif [ ! -e "$WINDOWS_ROOT/.tarnvik/qt" ]; then
        say "TARNVIK_WINDOWS_QT names no Qt for Windows: one is built from source, which takes more than an hour, once"
    fi
    install_packages debootstrap
    mkdir -p "$(dirname "$WINDOWS_ROOT")"
    # Set-ups that start at the same time wait for the first.
    exec {lock}>"$WINDOWS_ROOT.lock"
    flock "$lock"
    if [ ! -e "$WINDOWS_ROOT/.tarnvik/base" ]; then
        say "Debian 13 root in $WINDOWS_ROOT (some minutes, once; 3 GB)"
        local mirror
        mirror=${TARNVIK_MIRROR:-$(debian_mirror)} || die "name a Debian mirror in TARNVIK_MIRROR"
        rm -rf --one-file-system "$WINDOWS_ROOT" "$WINDOWS_ROOT.new"
        debootstrap --variant=minbase --include=$BASE_PACKAGES trixie "$WINDOWS_ROOT.new" \
            "$mirror" >"$WINDOWS_ROOT.log" ||
            die "debootstrap failed; its log: $WINDOWS_ROOT.log"
        mkdir "$WINDOWS_ROOT.new/.tarnvik" "$WINDOWS_ROOT.new$INSIDE"
        touch "$WINDOWS_ROOT.new/.tarnvik/base"
        mv "$WINDOWS_ROOT.new" "$WINDOWS_ROOT"
    fi
    mount_root
    if [ "$(cat "$WINDOWS_ROOT/.tarnvik/packages" 2>/dev/null)" != "${ROOT_PACKAGES[*]}" ]; then
        say "packages of the Debian 13 root"
        share_network "$WINDOWS_ROOT"
        {
            in_root env -u SOURCE_DATE_EPOCH dpkg --configure -a
            in_root apt-get -q update
            in_root env -u SOURCE_DATE_EPOCH DEBIAN_FRONTEND=noninteractive \
                apt-get -q install -y --no-install-recommends "${ROOT_PACKAGES[@]}"
        } >>"$WINDOWS_ROOT.log" 2>&1 || die "the installation failed; its log: $WINDOWS_ROOT.log"
        echo "${ROOT_PACKAGES[*]}" >"$WINDOWS_ROOT/.tarnvik/packages"
    fi
    set_up_qt
    exec {lock}>&-
}

# set_up_qt: Qt for Windows in /opt/qt-mingw of the root, from the archive or else from Debian's source package.
set_up_qt() {
    local wanted="$QT_VERSION built from source" mark=$WINDOWS_ROOT/.tarnvik/qt
    if [ -n "$WINDOWS_QT" ]; then
        local checksum known=${TARNVIK_WINDOWS_QT_CHECKSUM:-$QT_CHECKSUM}
        checksum=$(sha256sum "$WINDOWS_QT" | cut -d ' ' -f 1)
        [ "$checksum" = "$known" ] || die "$WINDOWS_QT has the SHA-256 $checksum, not $known;" \
            "for an archive of your own name its checksum in TARNVIK_WINDOWS_QT_CHECKSUM"
        wanted="$QT_VERSION $checksum"
    fi
    # A Qt that is there serves those without an archive, too.
    [ -e "$mark" ] && { [ -z "$WINDOWS_QT" ] || [ "$(cat "$mark")" = "$wanted" ]; } && return
    rm -rf "$mark" "$WINDOWS_ROOT/opt/qt-mingw"
    if [ -n "$WINDOWS_QT" ]; then
        say "Qt for Windows from $WINDOWS_QT"
        mkdir -p "$WINDOWS_ROOT/opt/qt-mingw.new"
        tar -C "$WINDOWS_ROOT/opt/qt-mingw.new" -xf "$WINDOWS_QT"
        # The archive may hold the folder or what is in it.
        local content=$WINDOWS_ROOT/opt/qt-mingw.new
        [ -d "$content/bin" ] || content=$(dirname "$(find "$content" -type d -name bin | head -n 1)")
        mv "$content" "$WINDOWS_ROOT/opt/qt-mingw"
        rm -rf "$WINDOWS_ROOT/opt/qt-mingw.new"
    else
        say "Qt for Windows from Debian's source package (more than an hour, once)"
        in_root scripts/windows/build-qt "$QT_VERSION" >"$WINDOWS_ROOT.qt.log" 2>&1 ||
            die "Qt's build failed; its log: $WINDOWS_ROOT.qt.log"
    fi
    [ -e "$WINDOWS_ROOT/opt/qt-mingw/bin/Qt6Core.dll" ] || die "no Qt6Core.dll in $WINDOWS_ROOT/opt/qt-mingw/bin"
    echo "$wanted" >"$mark"
}

# mount_root: what the programs in the root need. Undone by the end of the mount namespace.
mount_root() {
    mount --rbind /proc "$WINDOWS_ROOT/proc"
    mount --rbind /dev "$WINDOWS_ROOT/dev"
    # Displays, Wine's server and temporary files of one run are no business of another.
    mount -t tmpfs -o mode=1777 tmpfs "$WINDOWS_ROOT/tmp"
    mkdir -p "$WINDOWS_ROOT$INSIDE" "$WINDOWS_ROOT/root/.cache/ccache" "$TARNVIK_CCACHE"
    mount --bind "$ROOT" "$WINDOWS_ROOT$INSIDE"
    mount --bind "$TARNVIK_CCACHE" "$WINDOWS_ROOT/root/.cache/ccache"
}

# in_root COMMAND ARGUMENT...: runs it in the root, in the checkout.
in_root() {
    # The cache may be that of this machine's own builds: the root's smaller default would throw theirs out.
    local cache_size
    cache_size=$(ccache --get-config max_size 2>/dev/null || echo 5G)
    chroot "$WINDOWS_ROOT" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 ${CI:+CI="$CI"} \
        ${SOURCE_DATE_EPOCH:+SOURCE_DATE_EPOCH="$SOURCE_DATE_EPOCH"} \
        CCACHE_DIR=/root/.cache/ccache CCACHE_MAXSIZE="$cache_size" \
        sh -c 'cd "$0" && exec "$@"' "$INSIDE" "$@"
}

# build_in_root PRESET [TARGET...]: what build does, in the root.
build_in_root() { in_root bash -ec 'source scripts/lib.sh; build "$@"' build "$@"; }

# on_desktop SCRIPT ARGUMENT...: goes on with the script inside the root, on a desktop of its own (scripts/windows/desktop).
on_desktop() {
    # WINEPREFIX would not tell: a developer may have set it for their own Wine.
    [ -z "${TARNVIK_DESKTOPS:-}" ] || return 0
    enter_own_mounts "$ROOT/$1" "${@:2}"
    set_up_root
    in_root scripts/windows/desktop "$@"
    exit
}
