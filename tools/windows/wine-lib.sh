# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# What with-wine and run-under-wine share. Sourced, with $here set to this folder.
# shellcheck disable=SC2154,SC2034  # the caller sets $here, and uses what is set here

repository=$(dirname "$(dirname "$here")")

fail() {
    echo "$(basename "$0"): $*" >&2
    exit 125
}

# Debian's wine64 package puts its programs on no path.
wine_program() {
    local name
    for name in "$@"; do
        if command -v "$name" 2>/dev/null || command -v "/usr/lib/wine/$name" 2>/dev/null; then
            return
        fi
    done
    fail "Wine is missing; start this inside the build environment"
}

wine_environment() {
    wine=$(wine_program wine64 wine)
    wineserver=$(wine_program wineserver64 wineserver)
    export WINEPREFIX=${WINEPREFIX:-$repository/build/windows/wine}
    export WINEDEBUG=${WINEDEBUG:--all}
    # Keeps Wine from asking to download its .NET and HTML engines, and from writing menu entries
    # into the home of whoever runs the tests.
    export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"
    # Wine turns file names and arguments into Unicode by the locale's character set.
    export LC_ALL=${LC_ALL:-C.UTF-8}
}

# Lets a Windows program find Qt's libraries, plug-ins and modules where they are.
qt_environment() {
    local qt=${VESPER_QT_WINDOWS:-}
    [[ -n $qt && -d $qt/bin ]] || fail "VESPER_QT_WINDOWS names no Qt for Windows: '$qt'"
    export WINEPATH="Z:${qt//\//\\}\\bin"
    export QT_PLUGIN_PATH="Z:$qt/plugins" QML_IMPORT_PATH="Z:$qt/qml"
}
