#!/usr/bin/env bash
# Each manual page describes the options of its program, and is well-formed if mandoc is there to check it.
# The completions for the shells have no errors and complete a few lines as expected.
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
    # `shaderqx --version` ends with status 1.
    ("$build/bin/$name" --version || true) | grep -q "^$name version [0-9]" || {
        echo "$name does not print its version"
        failures=1
    }
    if command -v mandoc >/dev/null; then
        mandoc -T lint "$page" || failures=1
    fi
    # Each option in the program's help is on the page.
    plain=$(sed 's/\\-/-/g; s/\\f[BIR]//g' "$page")
    for word in $("$build/bin/$name" --help | grep -oE "^ +'?--?[][A-Za-z0-9+-]+" | tr -d "' "); do
        word=${word/\[dont-\]/}
        grep -qF -- "$word" <<<"$plain" || {
            echo "$page does not describe $word"
            failures=1
        }
    done
done
for name in shaderqx sqxcpp sqxdump sqxmake sqxshade; do
    [ ! -x "$build/bin/$name" ] || [ -e "$build/manual/$name.1" ] || {
        echo "$name has no manual page"
        failures=1
    }
done
bash -n "$build/manual/shaderqx.bash" || failures=1
if command -v zsh >/dev/null; then
    zsh -n "$build/manual/_shaderqx" || failures=1
fi
# shellcheck disable=SC2034  # read by the completion
complete_line() {
    bash -c 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
             compopt() { :; }; "_${COMP_WORDS[0]}"; printf "%s\n" "${COMPREPLY[@]}"' - \
        "$build/manual/shaderqx.bash" "$@" | LC_ALL=C sort | xargs
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
touch "$scratch"/{matte.sl,matte.sqx,matte.txt}
mkdir "$scratch/maps"
cd "$scratch"
completes_to() {
    local expected=$1
    shift
    [ "$(complete_line "$@")" = "$expected" ] || {
        echo "'$*' is completed to '$(complete_line "$@")', not '$expected'"
        failures=1
    }
}
completes_to '--keep-c++-file --keep-cpp-file' shaderqx --keep
completes_to 'maps matte.sl' shaderqx ma
completes_to '--param --params' sqxdump --par
completes_to 'maps matte.sqx' sqxdump --params ma
completes_to maps sqxdump -I ma
completes_to maps sqxmake -o ma
# Similar lines in fish, if it is installed.
if command -v fish >/dev/null; then
    fish_completes() {
        fish -c "source $build/manual/${1%% *}.fish; complete -C '$1'" | cut -f1 | LC_ALL=C sort | xargs
    }
    [ "$(fish_completes 'shaderqx --keep')" = '--keep-c++-file --keep-cpp-file' ] &&
        [ "$(fish_completes 'sqxmake -o ma')" = maps/ ] &&
        [ "$(fish_completes 'shaderqx -O')" = '-O -O0 -O1 -O2 -O3' ] || {
        echo 'fish does not complete as bash does'
        failures=1
    }
fi
if [ -e "$build/manual/sqxshade.1" ]; then
    completes_to 'maps matte.sl matte.sqx' sqxshade --torus ma
    completes_to '--samples --sheet --size --sphere --square' sqxshade --s
fi
[ "$failures" = 0 ]
