#!/usr/bin/env bash
# Fills a folder with the preprocessed examples and shaders of the tests. The digit at the start of
# each file selects the optimization level and, from 4 on, the strict rules.
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
        # If the preprocessor refuses a source, the output until then is a seed.
        cc -E -w -undef -nostdinc -x c -DOMBRIUM -DIRIX "$source" 2>/dev/null || true
    } >"$folder/${name%.sl}.i"
    number=$((number + 1))
done
