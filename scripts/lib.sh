# SPDX-License-Identifier: MIT
# What the scripts share. Sourced by them; changes to the repository's root.

unset CDPATH # it would lead to another folder of the name, perhaps to another checkout
cd "$(dirname "${BASH_SOURCE[0]}")/.."
ROOT=$PWD
# What is made carries rights and times: not those of whoever makes it, but everybody's, and that of its sources.
umask 022
# What is only run must not find that time: fontconfig enters it in its cache of newer folders of fonts, then takes
# the cache for outdated, and each program reads all fonts anew: half of its start under Wine, where scripts run, too.
if [ -z "${SOURCE_DATE_EPOCH:-}" ] && [ -z "${TARNVIK_DESKTOPS:-}" ] &&
    SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null); then
    export SOURCE_DATE_EPOCH
fi

# Packages by purpose.
BUILD_PACKAGES=(g++ cmake ninja-build ccache qt6-base-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    qt6-translations-l10n)
DESKTOP_PACKAGES=(xvfb openbox trayer xdotool x11-utils imagemagick fonts-dejavu-core)
WAYLAND_PACKAGES=(sway waybar wtype grim qt6-wayland dbus jq fonts-dejavu-core)
TEST_PACKAGES=("${DESKTOP_PACKAGES[@]}" "${WAYLAND_PACKAGES[@]}" at-spi2-core)
CHECK_PACKAGES=(clang-format clang-tidy python3 reuse)
GUIDE_PACKAGES=(pandoc weasyprint fonts-open-sans poppler-utils python3 python3-pypdf)
PACKAGE_PACKAGES=(dpkg-dev file lintian desktop-file-utils appstream)

# What a user and the tour need: the program, the stand-in recorder and their files.
PROGRAM_TARGETS=(TarnvikControl TarnvikAlign TarnvikRecord translations MakeDemonstration)

say() { printf '== %s\n' "$*"; }
die() { printf 'error: %s\n' "$*" >&2; exit 1; }

# install_packages NAME...: installs what is missing, as root or through sudo.
install_packages() {
    command -v dpkg-query >/dev/null || {
        say "not a Debian system: the packages ${*} are taken as installed"
        return
    }
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "missing packages: ${missing[*]}; install them, or sudo, as root"
        as_root=(sudo)
    fi
    say "installing ${missing[*]} (some minutes the first time)"
    # Scripts that run beside each other: apt itself would not wait for the other one.
    flock --close /var/lib/dpkg "${as_root[@]}" sh -ec 'unset SOURCE_DATE_EPOCH
        apt-get -qq update
        DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends "$@" >/dev/null' \
        install "${missing[@]}"
}

# debian_mirror: prints the first Debian mirror that this machine's apt uses.
debian_mirror() {
    local from
    from=$(awk '/^URIs:/ { print $2; exit }' /etc/apt/sources.list.d/debian.sources 2>/dev/null || true)
    [ -n "$from" ] || from=$(grep -hom 1 '^deb .*' /etc/apt/sources.list 2>/dev/null | grep -o '[a-z+]*:/[^ ]*' || true)
    [ -n "$from" ] || die "no Debian mirror in /etc/apt/sources.list.d/debian.sources or /etc/apt/sources.list"
    echo "$from"
}

# share_network FOLDER: lets the Debian that is unpacked in the folder reach the network as this machine does (proxies,
# names, certificates). Of apt's settings it takes no others: their programs may be missing there.
share_network() {
    apt-config dump Acquire >"$1/etc/apt/apt.conf.d/90network"
    cp -L /etc/resolv.conf "$1/etc/resolv.conf"
    [ ! -e /etc/ssl/certs/ca-certificates.crt ] || install -D -t "$1/etc/ssl/certs" /etc/ssl/certs/ca-certificates.crt
}

# build PRESET [TARGET...]: configures and builds the targets, or everything if none is named; warnings are errors where
# CI is set. Scripts that build the same at the same time wait for each other.
build() {
    local preset=$1 lock
    shift
    mkdir -p build
    exec {lock}>"build/$preset.lock"
    flock "$lock"
    say "building ($preset)"
    cmake --preset "$preset" -DCMAKE_COMPILE_WARNING_AS_ERROR="${CI:+ON}"
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
    exec {lock}>&-
}

# make_demonstration FOLDER: a station's configuration, records and alignment files below the folder, unless they are
# there. The folder's .config is the XDG_CONFIG_HOME for the program. Needs a build (release).
make_demonstration() {
    [ -e "$1/.complete" ] && return
    say "making demonstration data in $1"
    build/release/tools/MakeDemonstration "$1/.config/Quillane GmbH/TarnvikRecord" "$1/Records" "$1/Import"
    touch "$1/.complete"
}
