#!/usr/bin/env bash
# Shows how well the optimizer works on each shader, by default on each example: instructions and parallel
# runs of its main code, and its varying locals, at -O0, -O1, -O2 and -O3. Smaller is better: each varying
# local takes memory for every shading point, and each parallel run is a loop over the points.
# usage: quality.sh BIN_DIRECTORY [SHADER...]
set -euo pipefail
bin=$(cd "$1" && pwd)
shift
[ $# -gt 0 ] || set -- "$(dirname "$0")"/../examples/*.sl
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

printf '%-18s %-24s %-20s %s\n' shader '    instructions' '   parallel runs' '  varying locals'
for shader in "$@"; do
    # A copy, since a preprocess command writes a file next to the source, which runs must not share.
    cp "$shader" "$scratch/shader.sl"
    for level in 0 1 2 3; do
        "$bin/shaderqx" -O$level "-I$(dirname "$shader")" -d "$scratch" "$scratch/shader.sl" >"$scratch/messages" 2>&1 ||
            { cat "$scratch/messages" >&2; exit 1; }
        "$bin/sqxdump" "$scratch"/*.sqx
        rm "$scratch"/*.sqx
    done | awk -v shader="$(basename "$shader" .sl)" '
        /shader$/ && !/^ / { ++level; section = "" }
        /^[^ ]/ { section = $0 }
        section == "locals" && $3 == "varying" { ++locals[level] }
        section == "main" && $1 ~ /^[0-9]+$/ { ++codes[level]; runs[level] += $2 == "BEGIN_PARALLEL" }
        END {
            printf "%-18s %6d%6d%6d%6d %5d%5d%5d%5d %5d%5d%5d%5d\n", shader,
                codes[1], codes[2], codes[3], codes[4], runs[1], runs[2], runs[3], runs[4],
                locals[1], locals[2], locals[3], locals[4]
        }'
done
