#!/usr/bin/env bash
# Fills a folder with the examples and the shaders of the tests, preprocessed: each at one
# optimization level, given by the digit before it.
# usage: compile_corpus.sh FOLDER
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$top"
rm -f "$folder"/*

number=0
for source in examples/*.sl examples/*/*.sl tests/golden/*.sl tests/compile/shaders/*.sl \
    tests/semantics/ordinary/*.sl; do
    name=${source//\//_}
    {
        printf '%d' $((number % 8))
        # A source that the preprocessor refuses is a seed too, as far as it comes.
        cc -E -w -undef -nostdinc -x c -DOMBRIUM -DIRIX "$source" 2>/dev/null || true
    } >"$folder/${name%.sl}.i"
    number=$((number + 1))
done
