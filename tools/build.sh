#!/usr/bin/env bash
# Builds a preset: tools/build.sh PRESET [TARGET...], all targets when none is named. Says nothing
# when there is nothing to build, one line when there is, and what went wrong on failure. Speaks
# on standard error only: the output belongs to the command that is about to run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
exec </dev/null >&2

preset=$1
shift
folder=build/$preset

if [ ! -f "$folder/build.ninja" ]; then
    mkdir -p "$folder"
    if ! cmake --preset "$preset" >"$folder/configure.log" 2>&1; then
        cat "$folder/configure.log"
        exit 1
    fi
fi

# Makes one line of ninja's status lines, on a terminal one that counts on in place. What CMake
# says when it looks at its lists again is left out; what anything else says is passed on.
show_progress() {
    local line said='' line_end=''
    while IFS= read -r line; do
        case $line in
            *'] Re-checking globbed '* | '-- '* | 'ninja: no work to do.') ;;
            '['*/*'] '*)
                if [ -t 1 ]; then
                    printf '\rBuilding (%s) %s]' "$preset" "${line%%]*}"
                    line_end=$'\n'
                elif [ -z "$said" ]; then
                    echo "Building ($preset) ..."
                    said=yes
                fi
                ;;
            *)
                printf '%s%s\n' "$line_end" "$line"
                line_end=''
                ;;
        esac
    done
    printf '%s' "$line_end"
}

cd "$folder"
ninja -j "$(nproc)" "$@" 2>&1 | show_progress
