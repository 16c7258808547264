#!/usr/bin/env bash
# How fast the machine runs byte-code, beside shared objects of the same shaders that the default
# command builds. A cell is the time of the machine divided by that of the shared object, with the
# baseline kernels and with the best ones that the processor has.
# usage: machine.sh BIN_DIRECTORY [SECONDS [SIDE...]]
set -euo pipefail
bin=$(cd "$1" && pwd)
seconds=${2:-0.5}
sides=("${@:3}")
[ ${#sides[@]} -gt 0 ] || sides=(1 4 16 64 256)
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS

sources=("$root"/bench/machine/*.sl)
for name in ${SHADERS:-matte velvet_flat checker_flat fog_flat marble brick mandelbrot wood smoke}; do
    sources+=("$root/examples/$name.sl")
done
names=()
for source in "${sources[@]}"; do
    name=$(basename "$source" .sl)
    "$bin/shaderqx" "$source" 2>messages || { cat messages; exit 1; }
    mv "$name.sqx" "$name.bc"
    "$bin/shaderqx" --dso "$source" 2>messages || { cat messages; exit 1; }
    mv "$name.sqx" "$name.so"
    names+=("$name")
done
"$bin/machine_speed" "$seconds" "${sides[@]}" -- "${names[@]}"
