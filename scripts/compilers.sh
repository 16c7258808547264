#!/usr/bin/env bash
# Builds the programs with other compilers, C++ libraries and address sizes, without warnings, and
# compiles and shades an example with each: byte-code and values must be those of the release build.
# usage: compilers.sh [--install] [NAME...]    after a build of the release preset
#   NAME       a row of the table below; all rows by default
#   --install  installs what is missing for a row with apt-get; since only one version of libc++ can be
#              installed, it replaces another version. Rows that then lack something are reported and skipped.
# environment: SLC_COMPILERS_JOBS  number of parallel compiles; one per processor by default
#              SLC_COMPILERS_TYPE  Release by default; Debug takes a third of the time, but without the warnings
#                                  that g++ prints only when it optimizes
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

# g++ and clang++ 14 are those of Debian 12, whose newest clang++ is 22. Debian 12 has libc++ 22 only as a
# static library.
# -m32 does not need g++-multilib, since the kernel headers are the same for both sizes. libc6-dev-i386 replaces
# compilers for other architectures, which cross.sh installs again. The libc++ of clang++ 14 is left out,
# since std::from_chars of libc++ cannot read floating-point numbers before version 20.
#   name                compiler     packages                                              flags
compilers='
    g++                 g++          g++
    clang++-14          clang++-14   clang-14
    clang++-22          clang++-22   clang-22
    clang++-22-libc++   clang++-22   clang-22,libc++-22-dev,libc++abi-22-dev    -stdlib=libc++
    g++-m32             g++          lib32stdc++-12-dev,libc6-dev-i386          -m32 -msse2 -mfpmath=sse -idirafter /usr/include/x86_64-linux-gnu
'
install=0
[ "${1-}" != --install ] || { install=1; shift; }
[ -x build/release/bin/shaderqx ] || {
    echo "$0: build the release preset first" >&2
    exit 1
}
if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
example=marble
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Prints the values of the example, compiled and shaded by the build in $1, and the checksum of its byte-code.
# The program that prints the values is built with the compiler and the flags $2...
values() {
    local folder=$1
    mkdir -p "$scratch/files"
    (cd "$scratch/files" && "$folder/bin/shaderqx" -w0 "$OLDPWD/examples/$example.sl" 2>/dev/null)
    # shellcheck disable=SC2086  # the words are a compiler and its flags
    ${*:2} -std=c++20 -O1 -ffp-contract=off tests/cross/values.cpp -o "$scratch/values" -Iruntime \
        -Iruntime/shading "$folder/runtime/host/libshaderqx_host.a" \
        "$folder/runtime/machine/libshaderqx_machine.a" "$folder/runtime/sqx/libshaderqx_sqx.a" -ldl
    "$scratch/values" "$scratch/files/$example.sqx"
    cksum <"$scratch/files/$example.sqx"
}

# True if the compiler $1 with the flags $2... finds the kernel headers, and a C++ library that it can link.
is_here() {
    printf '#include <cerrno>\n#include <string>\nint main() { return std::hash<std::string>()("") == 0 && errno != 0; }\n' |
        "$@" -std=c++20 -x c++ - -o "$scratch/empty" 2>/dev/null
}

# Prints the flags for linking programs that are compiled with the flags $1: libc++ is linked statically.
link_flags() {
    [[ $1 != *libc++* ]] || echo -static-libstdc++
}

# Builds row $1 with the compiler $2 and the flags $3... and compares the values of the example. If any of
# this fails, the log contains the reason.
try() {
    local name=$1 compiler=$2 flags=${*:3} build=$PWD/build/compilers/$1 disabled=() link
    link=$(link_flags "$flags")
    # The installed libraries are built for this machine's own programs: cpp-httplib with GCC's standard library,
    # and libpng for one address size.
    [[ $name != *libc++ ]] || disabled=(-DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON)
    [[ $name != *m32 ]] || disabled=(-DCMAKE_DISABLE_FIND_PACKAGE_PNG=ON)
    cmake -S . -B "$build" -DCMAKE_BUILD_TYPE="${SLC_COMPILERS_TYPE:-Release}" -DBUILD_TESTING=OFF "-DCMAKE_CXX_FLAGS=$flags -Werror" \
        -DCMAKE_C_COMPILER="$(sed 's/clang++/clang/; s/g++/gcc/' <<<"$compiler")" \
        -DCMAKE_C_FLAGS="$(grep -o -- '-m32' <<<"$flags" || true)" \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_EXE_LINKER_FLAGS="$link" "${disabled[@]}" >"$scratch/log" 2>&1 &&
        cmake --build "$build" --parallel "${SLC_COMPILERS_JOBS:-$(nproc)}" --target programs \
            -- "${keep_going[@]}" >"$scratch/log" 2>&1 &&
        values "$build" "$compiler $flags $link" >"$scratch/actual" 2>"$scratch/log" &&
        diff "$scratch/expected" "$scratch/actual" >"$scratch/log"
}

# Shows the warnings of all files, not only of the first; make and ninja have different options for that.
keep_going=(-k)
if command -v ninja >/dev/null; then
    export CMAKE_GENERATOR=Ninja
    keep_going=(-k 0)
fi
passed=0
missing=0
failed=0
values "$PWD/build/release" c++ >"$scratch/expected"
while read -r name compiler packages flags; do
    [ -n "$name" ] || continue
    [ $# = 0 ] || [[ " $* " == *" $name "* ]] || continue
    # shellcheck disable=SC2086  # the flags are words, and so are the packages
    if ! is_here $compiler $flags $(link_flags "$flags") && [ "$install" = 1 ]; then
        install_packages ${packages//,/ } </dev/null >"$scratch/log" 2>&1 || cat "$scratch/log"
    fi
    if ! is_here $compiler $flags $(link_flags "$flags"); then
        echo "$name: not here; install ${packages//,/ }"
        missing=$((missing + 1))
    elif try "$name" "$compiler" $flags </dev/null; then
        echo "$name: builds, compiles and shades"
        passed=$((passed + 1))
    else
        grep -E 'error|warning|^[<>]' "$scratch/log" | head -n 20
        echo "$name: failed"
        failed=$((failed + 1))
    fi
done <<<"$compilers"
echo "$passed passed, $failed failed, $missing not here"
[ "$failed" = 0 ] && [ $((passed + missing)) -gt 0 ]
