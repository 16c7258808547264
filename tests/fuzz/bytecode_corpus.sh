#!/usr/bin/env bash
# Fills a folder with the byte-code of examples and of shaders of the tests, each at one optimization
# level. The shaders that were written for this target are compiled at two levels.
# usage: bytecode_corpus.sh FOLDER
#   FOLDER  a folder in the build whose compiler is used
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
compiler=$folder
until [ -x "$compiler/bin/shaderqx" ]; do
    compiler=$(dirname "$compiler")
    [ "$compiler" != / ] || {
        echo "There is no bin/shaderqx above $folder"
        exit 1
    }
done
rm -rf "${folder:?}"/*

cd "$top"

number=0
for source in examples/*.sl examples/rows/*.sl tests/compile/shaders/*.sl \
    tests/fuzz/bytecode/*.sl tests/fuzz/bytecode/*.sl; do
    level=$((number % 4))
    number=$((number + 1))
    mkdir "$folder/out"
    # Some sources need shadeop libraries, and do not compile here.
    "$compiler/bin/shaderqx" -O$level -w0 -d "$folder/out" "$source" >/dev/null 2>&1 || true
    for compiled in "$folder"/out/*.sqx; do
        # A mutation of a large file rarely changes a place that is executed.
        [ ! -s "$compiled" ] || [ "$(wc -c <"$compiled")" -gt 24000 ] ||
            mv "$compiled" "$folder/$number-$(basename "$compiled")"
    done
    rm -r "$folder/out"
done
