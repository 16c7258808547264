#!/usr/bin/env bash
# Prints the elapsed time of compiling a shader of 40 lines, with a preprocess command that only copies,
# divided by the time of /bin/true run through the shell. The goal is a ratio of at most 3.
# usage: own_time.sh BIN_DIRECTORY [RUNS]
set -euo pipefail
bin=$(cd "$1" && pwd)
runs=${2:-300}
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export SLC_CPP_COMMAND='cp $input_file $cpp_result' SLC_CC_COMMAND=false

"$bench/straight_line.sh" 36 >straight_line.sl
read -r reference _ < <("$bin/measure" "$runs" sh -c /bin/true)
read -r own _ < <("$bin/measure" "$runs" "$bin/shaderqx" straight_line.sl)
awk -v lines="$(wc -l <straight_line.sl)" -v own="$own" -v reference="$reference" 'BEGIN {
    printf "%d-line shader: %.2f ms, sh -c /bin/true: %.2f ms, ratio %.2f (at most 3)\n",
           lines, own * 1000, reference * 1000, own / reference
}'
