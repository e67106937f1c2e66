# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Timed stages with a summary, and the steps that several scripts share. Sourced after
# environment/lib.sh by scripts that stop at the first failure (set -e).
# shellcheck disable=SC2154  # environment/lib.sh sets $repository

timings=()
stage_name=
stage_begin=0

minutes_since() {
    awk -v seconds=$((SECONDS - $1)) 'BEGIN { printf "%.1f min", seconds / 60 }'
}

# stage NAME COMMAND ARGS...: runs one step of the script. Not in a condition, where bash would
# ignore failures inside COMMAND; a failure ends the script, and its EXIT trap says where.
stage() {
    stage_name=$1 stage_begin=$SECONDS
    shift
    printf '\n== %s\n' "$stage_name"
    "$@"
    end_stage
}

end_stage() {
    timings+=("$(printf '%-14s %10s' "$stage_name" "$(minutes_since "$stage_begin")")")
    stage_name=
}

# For the EXIT trap: the minutes of each stage, and how it ended.
print_summary() {
    local code=$? failed=$stage_name
    [[ -z $failed ]] || end_stage
    printf '\n== summary of %s\n' "$(basename "$0")"
    printf '%s\n' "${timings[@]}"
    printf '%-14s %10s\n' total "$(minutes_since 0)"
    # A signal can end the script in the middle of a stage with no failure before it.
    if ((code != 0)) || [[ -n $failed ]]; then
        echo "FAILED${failed:+ in $failed}"
    else
        echo "passed"
    fi
}

configure_and_build() {
    local preset=$1
    shift
    environment_run cmake --preset "$preset" "$@"
    environment_run cmake --build --preset "$preset"
}
