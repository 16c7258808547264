#!/usr/bin/env bash
# The manual pages are well formed, and each tells of the options that its program knows.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
build=$(cd "$1" && pwd)
failures=0
for page in "$build"/manual/*.1; do
    name=$(basename "$page" .1)
    [ -x "$build/bin/$name" ] || {
        echo "There is no program $name"
        failures=1
    }
    if command -v mandoc >/dev/null; then
        mandoc -T lint "$page" || failures=1
    fi
    # Each word that begins with a dash in the program's own help stands in the page.
    plain=$(sed 's/\\-/-/g; s/\\f[BIR]//g' "$page")
    for word in $("$build/bin/$name" --help | grep -oE "^ +'?--?[][A-Za-z0-9+-]+" | tr -d "' "); do
        word=${word/\[dont-\]/}
        grep -qF -- "$word" <<<"$plain" || {
            echo "$page does not tell of $word"
            failures=1
        }
    done
done
bash -n "$build/manual/shaderqx.bash" || failures=1
# shellcheck disable=SC2034  # read by the completion
complete_line() {
    bash -c 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
             compopt() { :; }; "_${COMP_WORDS[0]}"; echo "${COMPREPLY[@]}"' - \
        "$build/manual/shaderqx.bash" "$@"
}
[ "$(complete_line shaderqx --keep)" = '--keep-cpp-file --keep-c++-file' ] || failures=1
[ "$failures" = 0 ]
