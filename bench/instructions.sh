#!/usr/bin/env bash
# Counts the instructions that the compiler executes, and compares their number, which does not depend on
# other processes, with the table in docs/measurements.md. The rows of the table define what is compiled:
# the options, and the number of lines of the shader that `bench/body.sh` prints, or 0 for an empty shader.
# Instructions of programs that the compiler starts are not counted.
# usage: instructions.sh BIN_DIRECTORY [LINES [OPTION...]]
#   LINES, OPTION  compile this instead, and compare with nothing
set -euo pipefail
if ! command -v valgrind >/dev/null; then
    echo "instructions.sh: valgrind is not here, nothing is counted" >&2
    exit 0
fi
bin=$(cd "$1" && pwd)
shift
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
# shellcheck disable=SC2016 # the compiler replaces the words
SLC_CPP_COMMAND='cat $input_file > $cpp_result'

count() {  # LINES OPTION...
    if [ "$1" = 0 ]; then echo 'surface empty() {}'; else "$bench/body.sh" "$1"; fi >shader.sl
    # The dynamic linker reads all variables of the environment, so others would change the count.
    env -i PATH="$PATH" SLC_CPP_COMMAND="$SLC_CPP_COMMAND" SLC_CC_COMMAND=false \
        valgrind --tool=cachegrind --cache-sim=no --cachegrind-out-file=/dev/null --log-file=log \
        "$bin/shaderqx" "${@:2}" shader.sl
    sed -n 's/,//g; s/.*I *refs: *//p' log
}
rows() {  # lines, options, millions
    sed -n '/^| Lines | Options |/,/^$/s/^| \([0-9,]*\) | \(-[^|]*\) | \([0-9.]*\) |.*/\1|\2|\3/p' \
        "$bench/../docs/measurements.md" | tr -d ,
}

printf '%6s  %-14s %10s %9s\n' lines options millions 'to table'
if [ $# -gt 0 ]; then echo "$1|${*:2}|"; else rows; fi | while IFS='|' read -r lines options before; do
    # shellcheck disable=SC2086 # several options
    now=$(count "$lines" $options)
    awk -v lines="$lines" -v options="$options" -v now="$now" -v before="$before" 'BEGIN {
        millions = now / 1000000
        printf "%6d  %-14s %10.2f %9s\n", lines, options, millions,
               before ? sprintf("%.2f", millions / before) : "-"
    }'
done
