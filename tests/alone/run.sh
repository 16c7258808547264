#!/usr/bin/env bash
# Compiles each source file by itself, to find files that lack an include. In a unity build such a file
# can use the includes of files before it. The test takes as long as a full build, so it is skipped, with
# status 77, unless SLC_TEST_ALONE is 1.
# usage: run.sh CXX_COMPILER [TARGET...]
#   TARGET  a target of CMake; all targets of a normal build if none is given
set -euo pipefail
[ "${SLC_TEST_ALONE:-0}" = 1 ] || { echo "SLC_TEST_ALONE is not 1"; exit 77; }
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake -S "$root" -B "$scratch" -DCMAKE_CXX_COMPILER="$1" -DCMAKE_BUILD_TYPE=Debug \
    -DSLC_BATCH_SOURCES=OFF >"$scratch/log" 2>&1 || {
    cat "$scratch/log"
    exit 1
}
shift
cmake --build "$scratch" --parallel 2 ${1:+--target "$@"} >"$scratch/log" 2>&1 || {
    grep -A5 'error' "$scratch/log" || tail -n 30 "$scratch/log"
    exit 1
}
