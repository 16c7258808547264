#!/usr/bin/env bash
# Translates the shaders in examples/, in its folders and in tests/compile/shaders/ to C++ at each given
# optimization level, and compiles the C++. Any warning of the C++ compiler is a failure.
# usage: run.sh BIN_DIRECTORY COMPILER LEVEL...
#   BIN_DIRECTORY  where shaderqx was built
#   COMPILER       a C++ compiler
#   LEVEL          an optimization level, 0 to 3
set -uo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
bin=$(cd "$1" && pwd)
compiler=$2
shift 2
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE CPATH
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit 1
export top bin compiler levels="$*"

# Different levels often give the same text, which is compiled once.
compile() {
    local sum
    sum=$(sha256sum <"$1")
    [ ! -e "${sum%% *}" ] || return 0
    "$compiler" -O2 -fno-math-errno -Wall -Wextra -Werror -fPIC -shared -I"$top/runtime/shading" -o shader.so "$1" \
        && : >"${sum%% *}"
}

# Checks one source at all given levels, in a separate folder, since shaderqx writes the C++ into the
# working directory.
check() {
    local source=$top/$1 level failures=0
    mkdir -p "work/$1" && cd "work/$1" || return 1
    for level in $levels; do
        rm -f ./*.cpp
        if ! "$bin/shaderqx" --dso -c -w0 "-O$level" "-I$bin/../shadeops" "$source" >messages 2>&1; then
            cat messages
            echo "$source: not translated at -O$level"
            failures=1
        elif ! compile ./*.cpp; then
            echo "$source: not compiled at -O$level"
            failures=1
        fi
    done
    return "$failures"
}
export -f compile check

# xargs fails if any check does.
(cd "$top" && printf '%s\0' examples/*.sl examples/*/*.sl tests/compile/shaders/*.sl) \
    | xargs -0 -n 1 -P "$(nproc)" bash -c 'check "$1"' check
