# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Where the project is built and run. Sourced by the scripts of the repository; they call
#   environment_prepare           makes everything ready, once
#   environment_run COMMAND...    runs a command there, in the caller's folder
#   windows_qt_prepare [DIR]      finds Qt for Windows and exports VESPER_QT_WINDOWS
# The machine itself serves when its packages give a new enough Qt. Otherwise a Debian 13 root in
# the cache folder does (root.sh).
#
#   VESPER_ENVIRONMENT=machine|root   overrules the choice
#   VESPER_ENTER=bwrap|proot          overrules how the root is entered

repository=$(dirname "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")")
cache_folder=${XDG_CACHE_HOME:-$HOME/.cache}/vesper
minimum_qt=6.8

# shellcheck source=tools/environment/root.sh
source "$repository/tools/environment/root.sh"

say() {
    echo "-- $*"
}

stop() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# The names in packages.txt, one to a line.
package_names() {
    sed -e 's/#.*//' -e 's/[[:space:]]*$//' -e '/^$/d' "$repository/tools/environment/packages.txt"
}

missing_packages() {
    local name
    for name in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || echo "$name"
    done
}

# Runs a command as root, when that needs no password.
as_root() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo -n "$@"
    fi
}

can_be_root() {
    ((EUID == 0)) || sudo -n true 2>/dev/null
}

# Installs what is missing of the named packages, or says which they are and stops.
install_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    if ! can_be_root; then
        stop "these packages are missing; install them and start again:
    apt-get install --no-install-recommends ${missing[*]}"
    fi
    say "installing ${#missing[@]} packages: ${missing[*]}"
    as_root apt-get -qq update
    without_services as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 install "${missing[@]}" >/dev/null
    if [[ " ${missing[*]} " == *" nginx "* ]] && command -v systemctl >/dev/null; then
        as_root systemctl disable --quiet nginx # nor after the next start of the machine
    fi
}

# Runs a command that installs packages, and lets none of them start a server.
without_services() {
    local policy=/usr/sbin/policy-rc.d
    if [[ -e $policy ]]; then
        "$@"
        return
    fi
    printf '#!/bin/sh\nexit 101\n' | as_root tee "$policy" >/dev/null
    as_root chmod 755 "$policy"
    local result=0
    "$@" || result=$?
    as_root rm -f "$policy"
    return "$result"
}

# The version of Qt that is installed or would be; nothing where there is none.
machine_qt_version() {
    local version
    version=$(dpkg-query -W -f '${Version}' qt6-base-dev 2>/dev/null) || version=
    [[ -n $version ]] || version=$(LC_ALL=C apt-cache policy qt6-base-dev | sed -n 's/^ *Candidate: //p')
    [[ $version == "(none)" ]] || echo "$version"
}

machine_has_qt() {
    local version
    version=$(machine_qt_version)
    if [[ -z $version ]] && can_be_root; then
        as_root apt-get -qq update # a fresh container knows no packages yet
        version=$(machine_qt_version)
    fi
    [[ -n $version ]] && dpkg --compare-versions "$version" ge "$minimum_qt"
}

# Sets $environment to "machine" or "root".
choose_environment() {
    if ! command -v dpkg-query apt-cache >/dev/null; then
        stop "this needs Debian 12 or newer, or a system made from it"
    fi
    environment=${VESPER_ENVIRONMENT:-}
    if [[ -z $environment ]]; then
        if machine_has_qt; then environment=machine; else environment=root; fi
    fi
}

environment_prepare() {
    choose_environment
    mkdir -p "$cache_folder"
    case $environment in
    machine)
        local names
        mapfile -t names < <(package_names)
        install_packages "${names[@]}"
        say "building with this machine's own packages"
        ;;
    root)
        root_prepare
        say "building in Debian $suite at $root, entered with $enter_with"
        ;;
    *) stop "VESPER_ENVIRONMENT is '$environment': machine and root are known" ;;
    esac
    export CCACHE_DIR=${CCACHE_DIR:-$cache_folder/ccache}
    export CCACHE_BASEDIR=$repository CCACHE_NOHASHDIR=1 # what one clone has compiled serves another
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
}

environment_run() {
    if [[ $environment == machine ]]; then
        "$@"
    else
        root_run "$@"
    fi
}

# Prints the folder of Qt for Windows: the given one, the caller's, the one in the cache, or that of
# the archive beside the repository, unpacked into the cache. Fails where there is none.
find_windows_qt() {
    local found=${1:-${VESPER_QT_WINDOWS:-}}
    [[ -n $found ]] || found=$(cached_windows_qt)
    if [[ -z $found ]]; then
        unpack_windows_qt || return 1
        found=$(cached_windows_qt)
    fi
    [[ -f $found/mingw-w64.toolchain.cmake ]] || return 1
    readlink -f "$found"
}

cached_windows_qt() {
    find "$cache_folder" -maxdepth 1 -type d -name 'qt-*-mingw-w64' | sort -V | tail -n 1
}

unpack_windows_qt() {
    local archive
    archive=$(find "$repository/../shared/qt-windows" -name 'qt-*.tar.xz' 2>/dev/null | sort -V | tail -n 1)
    [[ -n $archive ]] || return 1
    say "unpacking $(basename "$archive")" >&2
    local partial=$cache_folder/qt-windows.partial
    (
        flock 9
        [[ -z $(cached_windows_qt) ]] || exit 0 # another start was faster
        rm -rf -- "$partial"
        mkdir -p "$partial"
        environment_run tar -xJ -C "$partial" <"$archive"
        # A folder with its final name is a whole one.
        mv -- "$partial"/qt-*-mingw-w64 "$cache_folder/"
        rmdir "$partial"
    ) 9>"$cache_folder/qt-windows.lock"
}

# shellcheck disable=SC2120  # the folder is optional
windows_qt_prepare() {
    VESPER_QT_WINDOWS=$(find_windows_qt "${1:-}") || return 1
    export VESPER_QT_WINDOWS
}
