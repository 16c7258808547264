#!/usr/bin/env bash
# Each source file compiles by itself, so it includes all that it uses. In a unity build it could
# use the includes of files before it. The test takes as long as a full build: without
# SLC_TEST_ALONE=1 it is skipped with status 77.
# usage: run.sh CXX_COMPILER [TARGET...]
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
