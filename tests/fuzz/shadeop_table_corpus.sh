#!/usr/bin/env bash
# Fills a folder with the shadeop libraries of the tests and examples, linked with each kind of hash
# table and of relocations.
# usage: shadeop_table_corpus.sh FOLDER
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$top"
rm -f "$folder"/*

for source in tests/symbols/shadeops/faulty.c tests/shadeops/probes.c examples/shadeops/patterns.c; do
    for style in sysv gnu; do
        cc -Os -shared -fPIC -nostdlib -Iruntime/shading -Wl,--hash-style=$style \
            -Wl,-z,max-page-size=16 -Wl,-s -o "$folder/$(basename "$source" .c).$style" "$source"
    done
done
cc -Os -shared -fPIC -nostdlib -Iruntime/shading -Wl,-z,pack-relative-relocs -Wl,-s \
    -o "$folder/packed" tests/shadeops/probes.c 2>/dev/null || rm -f "$folder/packed"
