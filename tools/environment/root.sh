# shellcheck shell=bash
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

# The Debian 13 root in the cache folder: made once, entered for every command. Sourced by lib.sh.
# Its folder is named after all that it depends on and gets that name only when it is whole, so an
# interrupted start or a changed package list leads to a new one.
# shellcheck disable=SC2154  # lib.sh sets $cache_folder and $repository

# A script that needs other packages or another suite names a root of another kind before it calls
# environment_prepare, so that neither root is taken for an earlier state of the other. A new edition
# means a new root, with the packages that the suite then has.
suite=trixie
root_kind=debian
root_edition=

root_prepare() {
    prepare_entering
    local key
    key=$({ echo "$suite$root_edition"; package_names | sort; } | sha256sum | cut -c1-12)
    root=$cache_folder/$root_kind-$suite-$key
    exec 9>"$cache_folder/$root_kind.lock"
    flock -n 9 || { say "waiting for another start to make the environment"; flock 9; }
    [[ -d $root ]] || make_root 9>&-
    # Held, and inherited by every command, so that no other start removes the root in use.
    exec 8<"$root"
    flock -s 8
    remove_unused_roots
    exec 9>&-
}

# Sets $enter_with to what works here: bwrap needs namespaces, proot only ptrace.
prepare_entering() {
    enter_with=${VESPER_ENTER:-}
    if [[ -z $enter_with ]]; then
        install_packages bubblewrap
        if bwrap --bind / / --dev-bind /dev /dev --proc /proc true 2>/dev/null; then
            enter_with=bwrap
        else
            say "namespaces are not permitted here: proot, slower, stands in"
            enter_with=proot
        fi
    fi
    if [[ $enter_with == proot ]]; then
        install_packages proot
        # The leak sanitizer cannot trace a process that proot traces already.
        export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0
    fi
}

# The address of the Debian archive that this machine uses, so that none is written here.
machine_archive() {
    # shellcheck disable=SC2016  # the dollars are apt's
    apt-get indextargets --format '$(ORIGIN) $(LABEL) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' \
        | awk '$1 == "Debian" && $2 == "Debian" && $3 == "main" { print $4; exit }'
}

# How this machine reaches its archive: proxies, certificates, retries, checks of dates.
machine_apt_options() {
    apt-config dump Acquire | grep -E '^Acquire::(http|https|Check-|Retries|ForceIPv)' || true
}

# Sets $bare_root to a Debian 13 with nothing but its base, for packages to be installed in a copy of
# it, which takes root rights.
bare_root_prepare() {
    bare_root=$cache_folder/bare-$suite
    [[ ! -d $bare_root ]] || return 0
    install_packages mmdebstrap
    local archive partial=$bare_root.partial names=
    archive=$(machine_archive)
    [[ -n $archive ]] || stop "apt has no Debian archive configured to take Debian 13 from"
    [[ $archive != https:* ]] || names=ca-certificates
    say "making a bare Debian 13 in $bare_root (once)"
    remove_root "$partial"
    mkdir -p "$partial"
    machine_apt_options >"$partial.apt"
    run_mmdebstrap "$archive" "$names" "$partial" "$partial.apt"
    rm -f "$partial.apt"
    mv -- "$partial" "$bare_root"
}

make_root() {
    local needed=(mmdebstrap)
    ((EUID == 0)) || needed+=(uidmap) # an ordinary user's namespace needs more than one user in it
    install_packages "${needed[@]}"
    local archive
    archive=$(machine_archive)
    [[ -n $archive ]] || stop "apt has no Debian archive configured to take Debian $suite from"

    say "making a Debian $suite environment in $root (about two minutes, once)"
    local partial=$root.partial names
    remove_root "$partial"
    mkdir -p "$partial"
    machine_apt_options >"$partial.apt"
    names=$(package_names | paste -sd,)
    # An ordinary user gets the root as an archive and unpacks it, so that every file is the user's
    # own: mmdebstrap's other users could not even reach a folder in a closed home.
    if ((EUID == 0)); then
        run_mmdebstrap "$archive" "$names" "$partial" "$partial.apt"
    else
        run_mmdebstrap "$archive" "$names" - "$partial.apt" \
            | tar -x -C "$partial" --exclude='./dev/*' --no-same-owner
    fi
    # apt checks signatures as another user, who must be able to write here.
    chmod 1777 "$partial/tmp"
    rm -f "$partial.apt"
    mv -- "$partial" "$root"
}

run_mmdebstrap() {
    local archive=$1 names=$2 target=$3 options=$4
    # Not /tmp, which may be small: it lies in memory on many machines.
    # Nor the home, where dpkg would look for the settings of a user it cannot be.
    TMPDIR=/var/tmp HOME=/nonexistent mmdebstrap --quiet --variant=minbase --format="$( ((EUID == 0)) && echo directory || echo tar)" \
        --aptopt="$options" --aptopt='Apt::Install-Recommends "false"' \
        ${names:+--include="$names"} "$suite" "$target" "deb $archive $suite main" </dev/null
}

remove_root() {
    # One file system, in case something is still mounted below.
    [[ ! -e $1 ]] || rm -rf --one-file-system -- "$1"
}

# Roots of other package lists, and halves of them, go once nobody runs in them.
remove_unused_roots() {
    local other
    for other in "$cache_folder/$root_kind"-*-*; do
        [[ $other != "$root" && -d $other ]] || continue
        if flock -n -x "$other" true; then
            say "removing the environment of an earlier package list"
            remove_root "$other"
        fi
    done
}

root_run() {
    local variables command
    mapfile -d '' -t variables < <(passed_variables)
    case $enter_with in
    bwrap) bwrap_command ;;
    proot) proot_command ;;
    *) stop "VESPER_ENTER is '$enter_with': bwrap and proot are known" ;;
    esac
    env -i "${variables[@]}" "${command[@]}" "$@"
}

# What of the caller's variables means the same inside, NUL after each. A search path of the
# machine's own would lead a program to files that are not there, or to another system's libraries.
passed_variables() {
    printf '%s\0' PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "TZ=$(machine_time_zone)"
    env -0 | grep -zE '^(HOME|USER|LOGNAME|TERM|LANG|LANGUAGE|LC_[A-Z]+|DISPLAY|WAYLAND_DISPLAY|XAUTHORITY|DBUS_SESSION_BUS_ADDRESS|XDG_[A-Z_]+|CI|SOURCE_DATE_EPOCH|(VESPER|CCACHE|CTEST|CMAKE|QT|QML|QSG|ASAN|LSAN|UBSAN|WINE)[A-Z0-9_]*)=' \
        || true
}

machine_time_zone() {
    local file
    file=$(readlink -f /etc/localtime || true)
    [[ $file == */zoneinfo/* ]] || file=/zoneinfo/UTC
    echo "${TZ:-${file#*/zoneinfo/}}"
}

# Folders of the machine that have the same path inside, one to a line: the work tree, where its
# git data lie, the cache, the home (a clock started for real keeps its settings there) and the
# sockets and keys of the desktop session. /tmp holds the X server's sockets.
shared_folders() {
    local folder
    for folder in /tmp "$repository" "$(git_folder)" "$cache_folder" "${caller_home:-$HOME}" \
        "${XDG_RUNTIME_DIR:-}" "${XAUTHORITY:-}" /run/dbus "${VESPER_QT_WINDOWS:-}"; do
        if [[ -n $folder && $folder != / && -e $folder ]]; then
            echo "$folder"
        fi
    done
}

git_folder() {
    git -C "$repository" rev-parse --path-format=absolute --git-common-dir 2>/dev/null || true
}

# Files of the machine that the root cannot know, one to a line.
shared_files() {
    echo /etc/resolv.conf
    echo /etc/hosts
    if ((EUID != 0)); then
        printf '%s\n' /etc/passwd /etc/group # the caller's own name
    fi
}

bwrap_command() {
    local path
    command=(bwrap --die-with-parent --bind "$root" / --dev-bind /dev /dev --proc /proc --ro-bind /sys /sys)
    while read -r path; do
        command+=(--bind "$path" "$path")
    done < <(shared_folders)
    while read -r path; do
        command+=(--ro-bind-try "$(readlink -f "$path")" "$path")
    done < <(shared_files)
    command+=(--chdir "$PWD")
}

proot_command() {
    local path
    command=(proot -r "$root" -b /dev -b /proc -b /sys -w "$PWD")
    while read -r path; do
        command+=(-b "$path")
    done < <(shared_folders && shared_files)
}
