#!/usr/bin/env bash
# Fills a folder with sources for the preprocessor: short cases of its tests, and short headers and
# shaders of the examples and the golden tests.
# usage: preprocess_corpus.sh FOLDER
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$top"
rm -f "$folder"/*
find tests/preprocessor/cases examples tests/golden \( -name '*.sl' -o -name '*.h' \) -size -8k \
    | sort | while read -r source; do
    cp "$source" "$folder/${source//\//_}"
done
# Every six lines of the cases for macros become a file too, so that some inputs are small.
grep -v '^ *//' tests/preprocessor/cases/macros.sl | split -l 6 - "$folder/macros_"
