# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# Timed stages with a summary, and the steps that several scripts share. Sourced after
# environment/lib.sh by scripts that stop at the first failure (set -e).
# shellcheck disable=SC2154  # environment/lib.sh sets $repository

timings=()
failed_stages=()
stage_name=
stage_begin=0

minutes_since() {
    awk -v seconds=$((SECONDS - $1)) 'BEGIN { printf "%.1f min", seconds / 60 }'
}

# stage NAME COMMAND ARGS...: runs one step of the script. Not in a condition, where bash would
# ignore failures inside COMMAND; a failure ends the script, and its EXIT trap says where.
stage() {
    begin_stage "$1"
    "${@:2}"
    end_stage
}

# try_stage NAME COMMAND ARGS...: the same, but after a failure the script goes on; NAME is then one of
# failed_stages. Whoever calls this fails at the end if there are any.
try_stage() {
    begin_stage "$1"
    local code
    set +e # a process of its own that stops at its first failure, again not in a condition
    (
        set -e
        "${@:2}"
    )
    code=$?
    set -e
    ((code == 0)) || failed_stages+=("$1")
    end_stage
}

begin_stage() {
    stage_name=$1 stage_begin=$SECONDS
    printf '\n== %s\n' "$stage_name"
}

end_stage() {
    timings+=("$(printf '%-14s %10s' "$stage_name" "$(minutes_since "$stage_begin")")")
    stage_name=
}

# For the EXIT trap: the minutes of each stage, and how it ended.
print_summary() {
    local code=$? failed=("${failed_stages[@]}")
    if [[ -n $stage_name ]]; then
        failed+=("$stage_name")
        end_stage
    fi
    printf '\n== summary of %s\n' "$(basename "$0")"
    printf '%s\n' "${timings[@]}"
    printf '%-14s %10s\n' total "$(minutes_since 0)"
    # A signal can end the script in the middle of a stage with no failure before it.
    if ((code != 0 || ${#failed[@]} > 0)); then
        echo "FAILED${failed:+ in ${failed[*]}}"
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
