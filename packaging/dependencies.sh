# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the scripts ./run, ./test and .ci/run share: the Debian packages that each needs, how the
# missing ones get installed, and the environment of a machine that has little of one.
# Sourced, never run.

# Enough to build the program and to open its window. The tool chain names its own packages:
# what comes as a "recommended" package is not installed.
build_packages=(
    cmake ninja-build g++
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev libdeflate-dev
)
window_packages=(libqt6svg6 fonts-dejavu-core)
# Windows without a display, for screenshots and for tests with real widgets.
virtual_display_packages=(xvfb xauth)
# shellcheck disable=SC2034 # the scripts that source this file use the lists
test_packages=("${build_packages[@]}" "${window_packages[@]}")
# The program used from outside, as assistive technology does. Without them those tests are
# skipped.
# shellcheck disable=SC2034
end_to_end_packages=(
    "${virtual_display_packages[@]}" dbus-daemon at-spi2-core python3 python3-pyatspi
)
# Other programs for Intel HEX and S-records. Without them the tests that compare with them are
# skipped.
# shellcheck disable=SC2034
oracle_packages=(srecord python3-intelhex binutils)
# shellcheck disable=SC2034
check_packages=(
    clang-format-14 clang-tidy-14 shellcheck desktop-file-utils appstream
    man-db dpkg-dev fakeroot file valgrind mold
)
# The compiler and the libraries that make fuzzers.
# shellcheck disable=SC2034
fuzz_packages=(clang-14 libclang-rt-14-dev)

say() {
    printf '%s\n' "$*"
}

complain() {
    printf '%s\n' "$*" >&2
}

# Prints those of the packages $@ that are not installed, one on a line.
missing_packages() {
    local installed package
    # dpkg-query fails when it does not know one of the names; what it does know still counts.
    # shellcheck disable=SC2016 # the ${…} are dpkg-query's
    installed=$(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "$@" \
        2>/dev/null || true)
    for package in "$@"; do
        grep -Fxq -- "$package installed" <<<"$installed" || printf '%s\n' "$package"
    done
}

# Runs a command as root: directly, or through sudo where sudo asks nothing or can ask.
# Status 100 means that neither is possible.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
        sudo "$@"
    else
        return 100
    fi
}

# The line for the user to type when the script may not install the packages $@ itself.
installing_line() {
    if command -v sudo >/dev/null; then
        say "sudo apt-get install --no-install-recommends $*"
    else
        say "su -c 'apt-get install --no-install-recommends $*'"
    fi
}

# Installs those of the packages $@ that are missing. Without any missing it costs one look into
# the package database: no network, no root.
install_missing() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        complain "No apt-get here: what this needs is installed already, or the build says what" \
            "is not."
        return 0
    fi
    local missing status=0
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0

    # The lists of a fresh machine are empty, and old ones name files that are gone. When they
    # cannot be fetched, the ones that are there may still do.
    as_root true || status=$?
    if [ "$status" -eq 0 ]; then
        say "Installing: ${missing[*]}"
        as_root apt-get update -q ||
            complain "The package lists could not be fetched; trying with those that are here."
        as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=120 \
            "${missing[@]}" && return 0
    fi
    complain "These packages are missing and could not be installed from here. Please type:"
    complain "    $(installing_line "${missing[@]}")"
    return 1
}

# A container or a service may leave out what every login has. The window starts the programmer
# tool through $SHELL, and the libraries look for their files under $HOME and read names of files
# by the locale.
complete_environment() {
    if [ -z "${HOME:-}" ]; then
        HOME=$(getent passwd "$(id -u)" | cut -d: -f6 || true)
        HOME=${HOME:-${TMPDIR:-/tmp}}
    fi
    # Where the environment has no SHELL, bash has taken it from the password database by now, but
    # keeps it to itself. The accounts of services have a "shell" there that runs nothing.
    case "${SHELL:-}" in
    '' | */nologin | */false) SHELL=/bin/sh ;;
    esac
    if [ -z "${LC_ALL:-}${LC_CTYPE:-}${LANG:-}" ]; then
        export LC_CTYPE=C.UTF-8
    fi
    export HOME SHELL
}

# Configures preset $2 of the sources in $1 into the build folder $3, with ccache where it is
# there and has a place to keep its files. Further arguments go to cmake.
configure_build() {
    local launcher='' source=$1 preset=$2 build=$3
    shift 3
    if command -v ccache >/dev/null && [ -w "${CCACHE_DIR:-$HOME}" ]; then
        launcher=ccache
        # Else it keeps nothing that was compiled with a precompiled header.
        CCACHE_SLOPPINESS=$(ccache --get-config sloppiness),pch_defines,time_macros
        export CCACHE_SLOPPINESS
    fi
    # Named even when empty: a build folder remembers the ccache of an earlier day.
    (cd -- "$source" &&
        cmake --preset "$preset" -B "$build" -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" "$@")
}
