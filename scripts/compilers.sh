#!/usr/bin/env bash
# Builds the programs with other compilers, C++ libraries and sizes of addresses, without a warning, and
# compiles and shades an example with each: the byte-code and the values are those of the release build.
# usage: compilers.sh [NAME...]    after a build of the release preset; all that are here by default
set -euo pipefail
cd "$(dirname "$0")/.."

# What cmake needs for each, and what a program of it is run with.
#   name             compiler     flags
compilers='
    g++              g++          
    clang++-14       clang++-14   
    clang++-22       clang++-22   
    clang++-libc++   clang++-22   -stdlib=libc++
    g++-m32          g++          -m32
'
[ -x build/release/bin/shaderqx ] || {
    echo "$0: build the release preset first" >&2
    exit 1
}
example=marble
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Prints the values of the example, compiled and shaded by the build in $1, with the compiler $2.
values() {
    local folder=$1
    mkdir -p "$scratch/files"
    # The compiler preprocesses the source itself.
    (cd "$scratch/files" && "$folder/bin/shaderqx" -w0 "$OLDPWD/examples/$example.sl" 2>/dev/null)
    # shellcheck disable=SC2086  # the words are a compiler and its flags
    ${*:2} -std=c++20 -O1 -ffp-contract=off tests/cross/values.cpp -o "$scratch/values" -Iruntime \
        -Iruntime/shading "$folder/runtime/host/libshaderqx_host.a" \
        "$folder/runtime/machine/libshaderqx_machine.a" "$folder/runtime/sqx/libshaderqx_sqx.a" -ldl
    "$scratch/values" "$scratch/files/$example.sqx"
    cksum <"$scratch/files/$example.sqx"
}

failures=0
values "$PWD/build/release" c++ >"$scratch/expected"
while read -r name compiler flags; do
    [ -n "$name" ] || continue
    [ $# = 0 ] || [[ " $* " == *" $name "* ]] || continue
    if ! printf '#include <cerrno>\nint main() {}\n' | $compiler $flags -std=c++20 -x c++ - -o "$scratch/empty" 2>/dev/null; then
        echo "$name: not here"
        continue
    fi
    [ "$flags" != -m32 ] || flags='-m32 -msse2 -mfpmath=sse'
    build=$PWD/build/compilers/$name
    # Libraries are those of this machine's own programs: what needs libpng is built where they fit.
    disabled=()
    [[ $name != *libc++ && $name != *m32 ]] || disabled=(-DCMAKE_DISABLE_FIND_PACKAGE_PNG=ON)
    if cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF "-DCMAKE_CXX_FLAGS=$flags -Werror" \
            -DCMAKE_C_COMPILER="$(sed 's/clang++/clang/; s/g++/gcc/' <<<"$compiler")" \
            -DCMAKE_C_FLAGS="$(grep -o -- '-m32' <<<"$flags" || true)" \
            -DCMAKE_CXX_COMPILER="$compiler" "${disabled[@]}" >"$scratch/log" 2>&1 &&
        cmake --build "$build" --parallel "$(nproc)" --target programs >"$scratch/log" 2>&1 &&
        values "$build" "$compiler $flags" >"$scratch/actual" 2>"$scratch/log" &&
        diff "$scratch/expected" "$scratch/actual" >"$scratch/log"; then
        echo "$name: builds, compiles and shades"
    else
        grep -E 'error|warning|^[<>]' "$scratch/log" | head -n 20
        echo "$name: failed"
        failures=$((failures + 1))
    fi
done <<<"$compilers"
[ "$failures" = 0 ]
