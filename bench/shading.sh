#!/usr/bin/env bash
# How fast built shaders are, beside hand-written loops over the same arithmetic that the same
# command compiles. An arithmetic shader may be at most 1.5 times slower.
# usage: shading.sh BIN_DIRECTORY [SECONDS [SHADER...]]
set -euo pipefail
bin=$(cd "$1" && pwd)
seconds=${2:-1}
shaders=("${@:3}")
[ ${#shaders[@]} -gt 0 ] || shaders=(constant matte checker_flat velvet_flat fog_flat)
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
# Preprocessing writes a temporary file next to the source, so do not use a tree that others read.
cp -r "$root/examples" .
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS

objects=()
for shader in "${shaders[@]}"; do
    "$bin/shaderqx" --dso "examples/$shader.sl" 2>messages || {
        cat messages
        exit 1
    }
    objects+=("$shader.sqx")
done
# The command that the compiler says it uses.
command=$(sed -n "s/.*SLC_CC_COMMAND.* Will use '\(.*\)' has command.*/\1/p" messages)
[ -n "$command" ] || {
    echo "$0: the compiler does not print its command"
    exit 1
}
output_dir=. output_file=loops.so cc_input_file=$root/bench/shading/loops.cpp \
    SLC_CC_INCLUDE="-I$root/bench" bash -c "$command"
"$bin/shading_speed" "$seconds" ./loops.so "${objects[@]}"
