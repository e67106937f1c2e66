# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# A user on a private desktop who looks and clicks, for scripts that start the program. Sourced.
# VESPER_PICTURES names a folder for pictures of what was seen.
# shellcheck disable=SC2034  # for the scripts that source it

work=$(mktemp -d "${TMPDIR:-/tmp}/vesper-user.XXXXXX")

failed() {
    echo "FAIL: $*" >&2
    exit 1
}

# expect WHAT WANTED GOT
expect() {
    [[ $2 == "$3" ]] || failed "$1: expected '$2', got '$3'"
    echo "PASS: $1"
}

# expect_sum FILE: its SHA-256 stands in the file beside it.
expect_sum() {
    expect "the sum of $(basename "$1")" "$(sha256sum "$1" | cut -d' ' -f1)" "$(cut -d' ' -f1 "$1.sha256")"
}

# expect_size FILE LARGEST_SIZE: in bytes
expect_size() {
    local size
    size=$(stat -c %s "$1")
    ((size <= $2)) || failed "$(basename "$1") has $size bytes, more than $2"
    echo "PASS: $(basename "$1") has $size bytes"
}

# wait_for SECONDS COMMAND ARGS...: until the command succeeds, or fails for good.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || return 1
        sleep 0.2
    done
}

# The visible window of that title; fails when there is none.
window() {
    local found errors=$work/search.log
    # A search breaks off when some window, whosoever it is, goes meanwhile. Then it tells nothing.
    until found=$(xdotool search --onlyvisible --name "^$1\$" 2>"$errors") || [[ ! -s $errors ]]; do
        sleep 0.1
    done
    head -n 1 <<<"$found" | grep .
}

no_window() {
    ! window "$1"
}

clock_process() {
    xdotool getwindowpid "$(window Vesper)"
}

# The clock that runs is another one than before.
restarted() {
    local now
    now=$(clock_process) && [[ $now != "$1" ]]
}

# As by the button in the frame, which the clock does not have.
close_window() {
    wmctrl -i -c "$(window "$1")"
}

quit_clock() {
    close_window Vesper
    wait_for 20 no_window Vesper || failed "the clock does not end"
}

place_of_clock() {
    xdotool getwindowgeometry --shell "$(window Vesper)" | awk -F= '/^[XY]=/ { print $2 }' | paste -sd' '
}

# is_at PLACE: whether the clock is there, as place_of_clock has it.
is_at() {
    [[ $(place_of_clock) == "$1" ]]
}

# choose_from_menu N TITLE: the Nth entry from the end of the clock's menu, which opens TITLE.
choose_from_menu() {
    local X Y WIDTH HEIGHT i
    eval "$(xdotool getwindowgeometry --shell "$(window Vesper)" | grep -E '^(X|Y|WIDTH|HEIGHT)=')"
    xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
    sleep 1 # the menu has no name by which it could be awaited
    for ((i = 0; i < $1; ++i)); do
        xdotool key Up
    done
    xdotool key Return
    wait_for 20 window "$2" || failed "no window '$2'"
}

# A window with texts and controls has many shades.
is_drawn() {
    (($(import -window "$1" -depth 8 png:- | identify -format %k -) > 100))
}

keep_picture() {
    [[ -z ${VESPER_PICTURES:-} ]] || import -window root "$VESPER_PICTURES/$1.png"
}

# Opens the settings as a user does, and sees that they are drawn.
use_settings() {
    choose_from_menu 3 "Vesper Settings"
    wait_for 20 is_drawn "$(window "Vesper Settings")" || failed "the settings window stays empty"
    keep_picture "$1"
    close_window "Vesper Settings"
    wait_for 20 no_window "Vesper Settings" || failed "the settings window does not close"
    echo "PASS: the settings window opens and is drawn"
}
