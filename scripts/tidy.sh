#!/usr/bin/env bash
# Runs clang-tidy as .clang-tidy says over the files that are given, or over all sources. Ends with
# status 1 if it finds anything. Takes minutes for all, so no test runs it.
# usage: tidy.sh [FILE...]
set -euo pipefail
cd "$(dirname "$0")/.."

# One command for each source, which the batches of a common build do not give.
cmake -S . -B build/tidy -DSLC_BATCH_SOURCES=OFF -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
# The scanner and the parser are made by tools, and their headers are included.
cmake --build build/tidy --target slc_frontend >/dev/null

if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files 'src/*.cpp' 'runtime/*.cpp' 'tools/*.cpp')
else
    files=("$@")
fi
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy --quiet --warnings-as-errors='*' -p build/tidy \
        2> >(grep -vE '^[0-9]+ warnings? (generated|treated as error)' >&2 || true)
echo "${#files[@]} files are clean"
