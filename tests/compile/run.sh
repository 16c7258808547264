#!/usr/bin/env bash
# Turns shaders into C++ at each optimization level and compiles that: any warning is a failure.
# usage: run.sh BIN_DIRECTORY COMPILER LEVEL...
#   BIN_DIRECTORY  where shaderqx was built
#   COMPILER       a C++ compiler
#   LEVEL          0 to 3
set -uo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
bin=$(cd "$1" && pwd)
compiler=$2
shift 2
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_INCLUDE CPATH
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
mkdir compiled
# The program puts a file of its own beside each source.
cp -r "$top/examples" "$top/tests/compile/shaders" .
failures=0

# Texts that differ only in a level often do not differ at all; each is compiled once.
compile() {
    local sum
    sum=$(sha256sum <"$1")
    [ ! -e "compiled/${sum%% *}" ] || return 0
    "$compiler" -O2 -fno-math-errno -Wall -Werror -fPIC -shared -I"$top/runtime" -o shader.so "$1" \
        && : >"compiled/${sum%% *}"
}

for source in examples/*.sl examples/*/*.sl shaders/*.sl; do
    for level in "$@"; do
        rm -f ./*.cpp
        if ! "$bin/shaderqx" --dso -c -w0 "-O$level" "-I$bin/../shadeops" "$source" >messages 2>&1; then
            cat messages
            echo "$source: not translated at -O$level"
            failures=$((failures + 1))
        elif ! compile ./*.cpp; then
            echo "$source: not compiled at -O$level"
            failures=$((failures + 1))
        fi
    done
done
[ "$failures" = 0 ]
