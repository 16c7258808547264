#!/usr/bin/env bash
# Measures time and memory of compiling straight-line shaders, by default each ten times as long as the
# previous one. The goals: ten times the length takes at most 12 times as long, and a statement takes at
# most 3 KiB at -O0. The script does not check them.
#
# The output is the C++ file, which is not compiled: at -O0 the largest shader has more variables
# than byte-code can number.
# usage: growth.sh BIN_DIRECTORY [LEVEL [STATEMENTS...]]
set -euo pipefail
bin=$(cd "$1" && pwd)
level=${2:--O0}
sizes=("${@:3}")
[ ${#sizes[@]} -gt 0 ] || sizes=(1000 10000 100000)
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export SLC_CPP_COMMAND='cp $input_file $cpp_result' SLC_CC_COMMAND=false

"$bench/straight_line.sh" 10 >straight_line.sl
read -r _ empty < <("$bin/measure" 3 "$bin/shaderqx" --dso -c "$level" straight_line.sl)
echo "statements   seconds   times   KiB a statement   ($level)"
before=0
for statements in "${sizes[@]}"; do
    "$bench/straight_line.sh" "$statements" >straight_line.sl
    read -r seconds memory < <("$bin/measure" 3 "$bin/shaderqx" --dso -c "$level" straight_line.sl)
    awk -v n="$statements" -v now="$seconds" -v before="$before" -v kib="$((memory - empty))" 'BEGIN {
        printf "%10d %9.3f %7s %17.2f\n", n, now, before ? sprintf("%.1f", now / before) : "-", kib / n
    }'
    before=$seconds
done
