#!/usr/bin/env bash
# Measures time and memory of compiling the shaders of mixed.sh at -O0, -O2 and -O3, by default each ten
# times as long as the previous one. The goals: ten times the length takes at most 15 times as long and 12
# times the memory, and the largest shader takes at most 60 times as long at -O2 as at -O0, and 2 GiB. The
# script does not check them.
#
# The output is the C++ file, which is not compiled: the largest shaders have more variables than
# byte-code can number.
# usage: optimizer_growth.sh BIN_DIRECTORY [INSTRUCTIONS...]
set -euo pipefail
bin=$(cd "$1" && pwd)
shift
[ $# -gt 0 ] || set -- 2000 20000 200000
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export SLC_CPP_COMMAND='cp $input_file $cpp_result' SLC_CC_COMMAND=false

echo "instructions  level   seconds   times      MiB   times   seconds to -O0"
declare -A before plain
for instructions in "$@"; do
    "$bench/mixed.sh" "$instructions" >mixed.sl
    for level in -O0 -O2 -O3; do
        now=$("$bin/measure" 7 "$bin/shaderqx" --dso -c "$level" mixed.sl)
        [ "$level" != -O0 ] || plain[$instructions]=$now
        echo "$instructions $level $now ${before[$level]:-0 0} ${plain[$instructions]}" | awk '{
            printf "%12d  %5s %9.3f %7s %8.1f %7s %16.1f\n", $1, $2, $3,
                   $5 ? sprintf("%.1f", $3 / $5) : "-", $4 / 1024,
                   $6 ? sprintf("%.1f", $4 / $6) : "-", $3 / $7
        }'
        before[$level]=$now
    done
done
