#!/usr/bin/env bash
# Measures the time of compiling forms of code that can lead to quadratic time in a compiler. Prints for
# each level the time for COUNT, and that time divided by the time for half of COUNT, which should be
# little more than 2.
# usage: shapes_growth.sh BIN_DIRECTORY [SHAPE COUNT]...
set -euo pipefail
bin=$(cd "$1" && pwd)
shift
[ $# -gt 0 ] || set -- nested 800 consecutive 800 else-if 800 choice 200 and 400 calls 1000 \
    unused 1600 switch 1600 doubling 16384 together 8000 loops 600 dead-loop 4000 dead-if 4000 \
    inverted 4000
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export SLC_CPP_COMMAND='cp $input_file $cpp_result' SLC_CC_COMMAND=false

seconds() {  # LEVEL SHAPE COUNT
    "$bench/shapes.sh" "$2" "$3" >shapes.sl
    "$bin/measure" 5 "$bin/shaderqx" --dso -c "$1" shapes.sl | cut -d' ' -f1
}
echo "shape          count  -O0 seconds   times  -O2 seconds   times  -O3 seconds   times"
for (( ; $# > 1; )); do
    printf '%-12s %7d' "$1" "$2"
    for level in -O0 -O2 -O3; do
        half=$(seconds "$level" "$1" $(($2 / 2)))
        all=$(seconds "$level" "$1" "$2")
        awk -v half="$half" -v all="$all" 'BEGIN { printf " %12.3f %7.1f", all, all / half }'
    done
    echo
    shift 2
done
