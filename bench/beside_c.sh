#!/usr/bin/env bash
# Prints the processor time of a compile divided by that of `cc -fsyntax-only` for the same program in C,
# both with their child processes. shaderqx compiles with a preprocess command that only copies, and with
# its own preprocessor. The commands alternate, so that a busy machine slows all of them alike.
# usage: beside_c.sh BIN_DIRECTORY [ROUNDS [LINES...]]
set -euo pipefail
bin=$(cd "$1" && pwd)
rounds=${2:-20}
lines=("${@:3}")
[ ${#lines[@]} -gt 0 ] || lines=(30 300 2500)
bench=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
unset SLC_CPP_COMMAND
TIMEFORMAT='%U %S'
# shellcheck disable=SC2016 # the compiler replaces the words
copy='cat $input_file > $cpp_result'

to_c() {  # translates the shader of body.sh on standard input to a C function
    cat <<'C'
struct color { float r, g, b; };
static struct color scaled(struct color c, float k) { c.r *= k; c.g *= k; c.b *= k; return c; }
static struct color raised(struct color c, float k) { c.r += k; c.g += k; c.b += k; return c; }
void body(float Kd, float s, float t, struct color Cs, struct color Os, struct color *Ci, struct color *Oi)
C
    sed -e '/^# 1/d' -e '/^surface/d' -e 's/color c0/struct color c0/' \
        -e 's/c0 \*= \(.*\);/c0 = scaled(c0, \1);/' -e 's/c0 += \(.*\);/c0 = raised(c0, \1);/' \
        -e 's/Ci = c0 \* f2;/*Ci = scaled(c0, f2);/' -e 's/Oi = Os;/*Oi = Os;/'
}
run() {  # runs COMMAND... ten times
    for _ in 1 2 3 4 5 6 7 8 9 10; do "$@" >/dev/null 2>&1 || exit 1; done
}
seconds() { { time run "$@"; } 2>&1 | awk '{ print $1 + $2 }'; }

printf '%6s  %-12s %-12s\n' lines 'with a copy' 'own'
for count in "${lines[@]}"; do
    "$bench/body.sh" "$count" >body.sl
    to_c <body.sl >body.c
    : >times
    for ((round = 0; round < rounds; round++)); do
        echo "$(seconds cc -fsyntax-only body.c)" \
             "$(export SLC_CPP_COMMAND=$copy && seconds "$bin/shaderqx" body.sl)" \
             "$(seconds "$bin/shaderqx" body.sl)" >>times
    done
    awk -v lines="$count" '{ c += $1; copy += $2; own += $3 } END {
        printf "%6d  %-12.2f %-12.2f\n", lines, copy / c, own / c
    }' times
done
