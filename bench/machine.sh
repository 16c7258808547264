#!/usr/bin/env bash
# Compares the machine, which runs byte-code, with shared objects of the same shaders, built by the
# default command. Prints the tables about the machine of docs/measurements.md. A cell of the first one is
# the time of the machine divided by that of the shared object, with the baseline kernels and with the best
# kernels for the processor.
# usage: machine.sh BIN_DIRECTORY [SECONDS [SIDE...]]
#   SECONDS  time to spend on each value
#   SIDE     length of a grid in points
# environment: SHADERS  names of the shaders to measure, instead of those listed below
set -euo pipefail
bin=$(cd "$1" && pwd)
seconds=${2:-0.5}
sides=("${@:3}")
[ ${#sides[@]} -gt 0 ] || sides=(1 4 16 64 256)
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
# A compile that fails may leave a file next to the source, so it must not run in a tree that others read.
cp -r "$root/examples" "$root/bench/machine" .
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS
# The tables compare with objects for the baseline processor, unless the environment says otherwise.
export SLC_CC_PROCESSOR=${SLC_CC_PROCESSOR-}

declare -A kinds=(
    [arithmetic]='arithmetic of numbers' [branches]='varying conditions'
    [colors]='arithmetic of colors' [matte]='lights' [velvet_flat]='lights, `pow`'
    [checker_flat]='lights, `mod`' [metal]='lights, highlights' [fog_flat]='`pow`'
    [marble]='noise' [wood]='noise' [smoke]='volume: noise, loop' [brick]='neighbours'
    [ripple]='displacement: `sin`, neighbours' [mandelbrot]='varying loop'
    [cells]='noise, loop' [spotlight]='light' [grading]='imager: colors')
order=(arithmetic branches colors matte velvet_flat checker_flat metal fog_flat marble wood smoke
       brick ripple mandelbrot cells spotlight grading)
read -ra names <<<"${SHADERS:-${order[*]}}"

# Compiles the source $1 of the shader $2 to byte-code, $2.bc, and to a shared object, $2.so.
build() {
    "$bin/shaderqx" "$1" 2>messages && mv "$2.sqx" "$2.bc" &&
        "$bin/shaderqx" --dso "$1" 2>messages && mv "$2.sqx" "$2.so" || { cat messages; exit 1; }
}
rows=()
for name in "${names[@]}"; do
    source=examples/$name.sl
    [ -e "$source" ] || source=machine/$name.sl
    build "$source" "$name"
    rows+=("$name=${kinds[$name]:-}")
done
"$bin/machine_grids" "$seconds" "${sides[@]}" -- "${rows[@]}"

echo
largest=planet
[ -e $largest.bc ] || build examples/$largest.sl $largest
"$bin/machine_load" "$seconds" "${names[@]}" $largest

echo
"$bin/machine_threads" "$seconds" "${names[0]}" "${names[-1]}"

# From the source to a picture, through byte-code and through a shared object.
echo
matte=examples/matte.sl
size=256x256
fast=$("$bin/measure" 3 "$bin/sqxshade" --size $size -o picture.png "$matte")
[ -s picture.png ]
slow=$("$bin/measure" 1 "$bin/sqxshade" --dso --size $size -o object.png "$matte")
[ -s object.png ]
echo "| \`matte.sl\` to a picture of $size | seconds |"
echo '|---|---|'
echo "| byte-code | ${fast% *} |"
echo "| shared object | ${slow% *} |"
awk -v fast="${fast% *}" -v slow="${slow% *}" \
    'BEGIN { printf "| the first divided by the second | %.3f |\n", fast / slow }'
