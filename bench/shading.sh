#!/usr/bin/env bash
# Compares shared objects with hand-written loops for the same arithmetic, compiled by the same
# command. The goal is that a shader that only computes takes at most 1.5 times as long. The second table
# compares with loops over strips of points, which are as fast as vector instructions allow, and shows how
# much faster shaders could become. The third table compares byte-code with these loops.
# usage: shading.sh BIN_DIRECTORY [SECONDS [SHADER...]]
#   SECONDS  time to spend on each shader
#   SHADER   a shader of the first table
# environment: OPTIONS  more options of the C++ compiler, such as -march=native
set -euo pipefail
bin=$(cd "$1" && pwd)
seconds=${2:-1}
shaders=("${@:3}")
[ ${#shaders[@]} -gt 0 ] || shaders=(constant matte checker_flat velvet_flat fog_flat)
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
# A compile that fails may leave a file next to the source, so it must not run in a tree that others read.
cp -r "$root/examples" "$root/bench/machine" .
unset SLC_CPP_COMMAND SLC_CC_COMMAND
export SLC_CC_OPTIONS=${OPTIONS:-}

limits=(arithmetic matte mandelbrot)
# Prints the path of the source of the shader $1, or nothing if there is none.
source_of() {
    ls "examples/$1.sl" "machine/$1.sl" 2>/dev/null || true
}
for shader in "${shaders[@]}" "${limits[@]}"; do
    "$bin/shaderqx" --dso "$(source_of "$shader")" 2>messages || {
        cat messages
        exit 1
    }
done
# The default command, which the compiler prints.
command=$(sed -n "s/.*SLC_CC_COMMAND.* Will use '\(.*\)' has command.*/\1/p" messages)
[ -n "$command" ] || {
    echo "$0: the compiler does not print its command"
    exit 1
}
for loops in loops limits; do
    output_dir=. output_file=$loops.so cc_input_file=$root/bench/shading/$loops.cpp \
        SLC_CC_INCLUDE="-I$root/bench" bash -c "$command"
done
"$bin/shading_speed" "$seconds" ./loops.so "${shaders[@]/%/.sqx}"
echo
"$bin/shading_speed" "$seconds" ./limits.so "${limits[@]/%/.sqx}"
echo
mkdir bytecode
for shader in "${limits[@]}"; do
    source=$scratch/$(source_of "$shader")
    (cd bytecode && "$bin/shaderqx" -w0 "$source" 2>messages) || {
        cat bytecode/messages
        exit 1
    }
done
"$bin/shading_speed" "$seconds" ./limits.so bytecode/*.sqx
