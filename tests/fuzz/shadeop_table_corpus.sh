#!/usr/bin/env bash
# Fills a folder with images of libraries, each with one of the declarations in the tests and
# examples, and the names of two functions.
# usage: shadeop_table_corpus.sh FOLDER
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$top"
rm -f "$folder"/*

# Two bytes of the number $1, the low one first.
place() {
    # shellcheck disable=SC2059  # the format is what is made here
    printf "$(printf '\\x%02x\\x%02x' $(($1 % 256)) $(($1 / 256)))"
}

number=0
grep -rhoE '"(float|color|point|vector|normal|string|void) [^"]*\("?[^"]*"' --include='*.c' \
    --include='*Test.cpp' examples/shadeops tests/shadeops tests/symbols | tr -d '"' | sort -u \
    | while read -r declaration; do
        length=${#declaration}
        {
            printf '\x02'
            place 0; place $((length + 1)); place $((length + 7))
            place 0; place 65535; place $((length + 1))
            printf '%s\0start\0stop\0' "$declaration"
        } >"$folder/$number"
        number=$((number + 1))
    done
