# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# What the tests of the installer and of the archive share: a fresh Wine that knows no Qt. Sourced,
# with $tools set to the developer scripts, on a desktop.
# shellcheck disable=SC2154,SC2034  # the caller sets $tools; wine-lib.sh sets $wine and $wineserver

here=$tools/windows
# shellcheck source=tools/windows/wine-lib.sh
source "$tools/windows/wine-lib.sh"
# shellcheck source=tools/desktop/user-lib.sh
source "$tools/desktop/user-lib.sh"

export WINEPREFIX=$work/wine
unset WINEPATH QT_PLUGIN_PATH QML_IMPORT_PATH VESPER_WINE_SESSION

clean_up() {
    "$wineserver" -k 2>/dev/null || true
    wait
    rm -rf -- "$work"
}

start_wine() {
    wine_environment
    trap clean_up EXIT
    "$wine" wineboot -i </dev/null >/dev/null 2>&1
    "$wineserver" -w
    "$wineserver" -p
    drive=$WINEPREFIX/drive_c
    profile=$drive/users/$(id -un)
    roaming=$profile/AppData/Roaming
    settings=$roaming/marrowby.example/Vesper
}

# write_settings JSON_MEMBERS
write_settings() {
    mkdir -p "$settings"
    echo "{\"AutoCheckUpdate\": false, \"Geometry\": {\"Left\": 300, \"Top\": 200, \"Width\": 240, \"Height\": 240}$1}" \
        >"$settings/config.json"
}

# start_clock FOLDER: the program in it, as a child.
start_clock() {
    (cd "$1" && exec "$wine" "$(windows_path "$1/Vesper.exe")" >"$work/clock.log" 2>&1) &
    wait_for 60 window Vesper || failed "no clock"
    expect "the clock takes nothing from elsewhere" "" "$(foreign_libraries "$1")"
}

# The path that Windows has for a file of this Wine.
windows_path() {
    local path=${1#"$drive"/}
    printf 'C:\\%s' "${path//\//\\}"
}

# What the running clock has loaded that is neither its own folder's nor Wine's.
foreign_libraries() {
    awk '$6 ~ /^\// { sub(/^([^ ]+ +){5}/, ""); print }' "/proc/$(clock_process)/maps" \
        | grep -iE '\.(dll|exe)$' | sort -u | grep -vF -e "$1/" -e /wine/ -e "$drive/windows/" || true
}
