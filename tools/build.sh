#!/usr/bin/env bash
# Builds a preset: tools/build.sh PRESET [TARGET...], all targets when none is named. Says one
# line when there is something to build, nothing when there is not, and everything on failure.
# Speaks on standard error only: the output belongs to the command that is about to run.
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

cd "$folder"
[[ $(ninja -n "$@") == *"no work to do"* ]] && exit 0
echo "Building ($preset) ..."
options=(-j "$(nproc)")
[ -t 1 ] || options+=(--quiet)
ninja "${options[@]}" "$@"
