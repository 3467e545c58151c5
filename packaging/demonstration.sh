# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# The settings of the demonstration that ./run opens: the simulated programmer as the tool, and
# files that are not the user's own. Sourced, never run.

# The path $1 as one word of a shell's command line. Left bare where it can be: the field that
# shows it is easier to read so.
shell_word() {
    local LC_ALL=C quote="'\\''"
    case "$1" in
    '' | *[!A-Za-z0-9/._+:@=-]*) printf "'%s'" "${1//\'/$quote}" ;;
    *) printf '%s' "$1" ;;
    esac
}

# The text $1 as a value of a settings file: quoted, since commas and semicolons would split it.
settings_value() {
    local text=$1
    text=${text//\\/\\\\}
    text=${text//\"/\\\"}
    text=${text//$'\n'/\\n}
    printf '"%s"' "$text"
}

# True for a path that the tool's command line can carry. The program puts the paths of its files
# between double quotes there, where the shell still reads these four characters.
survives_double_quotes() {
    case "$1" in
    *[\$\`\"\\]*) return 1 ;;
    esac
}

# Prints the folder for the files that the program shares with the tool, and creates it:
# $1/workspace, or a folder of this user's among the temporary files where that path would not
# survive.
make_workspace() {
    local folder=$1/workspace
    if ! survives_double_quotes "$folder"; then
        local temporary=${TMPDIR:-/tmp} key
        survives_double_quotes "$temporary" || temporary=/tmp
        key=$(printf '%s' "$1" | cksum)
        folder=$temporary/velm-demonstration-$(id -u)-${key%% *}
        printf '%s\n' "The tool's command line cannot carry the path of this folder; the" \
            "demonstration keeps its images in $folder." | paste -sd ' ' >&2
        mkdir -m 700 -- "$folder" 2>/dev/null || true
        # Anybody can have put something of that name there first.
        if [ -L "$folder" ] || [ ! -d "$folder" ] || [ ! -O "$folder" ]; then
            folder=$(mktemp -d -- "$temporary/velm-demonstration-XXXXXXXX") || return
        fi
    fi
    mkdir -p -- "$folder" && printf '%s' "$folder"
}

# The settings that hold paths of this clone: its simulated programmer $1 and the workspace $2.
demonstration_paths() {
    printf 'miniproLocation=%s\n' "$(settings_value "$(shell_word "$1")")"
    printf 'temp_output_file=%s\n' "$(settings_value "$2/temp.bin")"
    printf 'temp_read_from_chip_file=%s\n' "$(settings_value "$2/temp_read.bin")"
    printf 'temp_search_results_file=%s\n' "$(settings_value "$2/temp_sr.bin")"
    printf 'temp_logic_chip_test_results_file=%s\n' "$(settings_value "$2/temp_logtest.bin")"
}

# What the program remembers of the simulated programmer $1, so that it does not ask whether that
# is the user's own tool.
demonstration_memory() {
    printf 'trustedTool=%s\n' "$(settings_value "$(shell_word "$1")")"
}

# Puts the lines $2 into the file $1, in place of the older lines of these keys.
replace_lines() {
    [ -s "$1" ] || printf '[General]\n' >"$1"
    PATHS=$2 awk '
        /^(miniproLocation|temp_[a-z_]+_file|trustedTool)=/ { next }
        { print }
        /^\[General\]/ { print ENVIRON["PATHS"]; written = 1 }
        END { if (!written) printf "[General]\n%s\n", ENVIRON["PATHS"] }
    ' "$1" >"$1.new" && mv -f -- "$1.new" "$1"
}

# write_demonstration_settings FOLDER SIMULATOR
# Makes FOLDER ready for a start: FOLDER/velm.conf, FOLDER/state.conf, FOLDER/bench for the
# simulated chips, and the workspace. What the user changed in an earlier start is kept, but for the
# paths of a clone that has moved since.
write_demonstration_settings() {
    local folder=$1 workspace paths
    local settings=$folder/velm.conf memory=$folder/state.conf written_for=$folder/written-for
    mkdir -p -- "$folder/bench" || return
    workspace=$(make_workspace "$folder") || return
    paths=$(demonstration_paths "$2" "$workspace")
    if [ ! -s "$settings" ]; then
        printf '[General]\ndevice=W27C512@DIP28\n%s\n' "$paths" >"$settings"
    elif [ "$(cat -- "$written_for" 2>/dev/null)" != "$paths" ]; then
        replace_lines "$settings" "$paths" || return
    elif grep -qs '^trustedTool=' -- "$memory"; then
        return 0
    fi
    replace_lines "$memory" "$(demonstration_memory "$2")" || return
    printf '%s\n' "$paths" >"$written_for"
}
