#!/usr/bin/env bash
# Builds for another architecture and runs the result in an emulator. Compiled shaders, and the values that
# they compute, must be the same as on this machine, bit by bit, and a part of the tests must pass.
# usage: cross.sh aarch64    builds the release preset first, if it has not been built
# environment: SLC_AGREE_TESTS, SLC_AGREE_RANDOM  select the shaders for which byte-code and shared objects
#              are compared, see tests/host/AgreementTest.cpp; by default fewer than there, since an emulator
#              is slow
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

architecture=${1:-}
[ "$architecture" = aarch64 ] || {
    echo "usage: $0 aarch64" >&2
    exit 2
}
triple=$architecture-linux-gnu
native=build/release
build=build/$architecture
work=$PWD/$build/cross

install_missing "
    command  $triple-g++                                 g++-$triple
    command  qemu-$architecture                          qemu-user
    file     /usr/src/googletest/CMakeLists.txt          googletest
"
[ -x "$native/bin/shaderqx" ] || build_preset release

emulator="qemu-$architecture;-L;/usr/$triple"
configure() {
    cmake -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_SYSTEM_NAME=Linux \
        -DCMAKE_SYSTEM_PROCESSOR="$architecture" -DCMAKE_C_COMPILER="$triple-gcc" \
        -DCMAKE_CXX_COMPILER="$triple-g++" -DCMAKE_CROSSCOMPILING_EMULATOR="$emulator" \
        -DCMAKE_FIND_ROOT_PATH="/usr/$triple;$work/needs" -DCMAKE_FIND_ROOT_PATH_MODE_PROGRAM=NEVER \
        -DCMAKE_FIND_ROOT_PATH_MODE_LIBRARY=ONLY -DCMAKE_FIND_ROOT_PATH_MODE_INCLUDE=ONLY \
        -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=ONLY "$@"
}
if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# Debian has GoogleTest for the other architecture only as source.
if [ ! -d "$work/needs" ]; then
    configure -S /usr/src/googletest -B "$work/googletest" -DCMAKE_INSTALL_PREFIX="$work/needs"
    cmake --build "$work/googletest" --parallel "$(nproc)" --target install
fi
tested='backends machine runtime host'
configure -S . -B "$build"
# shellcheck disable=SC2086  # several targets
cmake --build "$build" --parallel "$(nproc)" --target shaderqx sqxdump sqxmake \
    test_backends test_product_machine test_runtime test_host test_run

# Both builds of shaderqx must write the same files, each with its built-in preprocessor.
unset SLC_CPP_COMMAND
export SLC_CC_COMMAND=false
emulated=(${emulator//;/ })
rm -rf "$work/files"
for side in native other; do
    program=("$PWD/$native/bin/shaderqx")
    [ "$side" = native ] || program=("${emulated[@]}" "$PWD/$build/bin/shaderqx")
    for level in 0 1 2 3; do
        for kind in --int '--dso -c'; do
            folder=$work/files/$side/$level${kind%% *}
            mkdir -p "$folder"
            cp -r examples/*.sl examples/include examples/rows "$folder"
            for source in "$folder"/*.sl "$folder"/rows/*.sl; do
                # shellcheck disable=SC2086  # the words of the kind are options
                (cd "$folder" && "${program[@]}" -w0 -O$level $kind "${source#"$folder/"}") 2>"$work/messages" || {
                    cat "$work/messages" >&2
                    exit 1
                }
            done
        done
    done
done
diff -r "$work/files/native" "$work/files/other"
echo "Both compilers write the same $(find "$work/files/native" -name '*.sqx' | wc -l) files of byte-code"

# Both machines must compute the same values.
for side in native other; do
    compiler=c++
    tree=$native
    run=()
    [ "$side" = native ] || { compiler=$triple-g++ tree=$build run=("${emulated[@]}"); }
    "$compiler" -std=c++20 -O1 -ffp-contract=off tests/cross/values.cpp -o "$work/values.$side" \
        -Iruntime -Iruntime/shading "$tree/runtime/host/libshaderqx_host.a" \
        "$tree/runtime/machine/libshaderqx_machine.a" "$tree/runtime/sqx/libshaderqx_sqx.a" -ldl
    "${run[@]}" "$work/values.$side" "$work"/files/native/2--int/*.sqx >"$work/values.$side.txt"
done
diff "$work/values.native.txt" "$work/values.other.txt" >"$work/values.diff" || {
    echo "Other values: see $work/values.diff"
    exit 1
}
echo "Both machines compute the same $(grep -oE ' [0-9a-f]{8}\b' "$work/values.native.txt" | wc -l) values"

# Runs the tests, which build shared objects with the cross compiler. Preprocess commands run this machine's
# sqxcpp, since a shell cannot start the one for the other architecture.
mkdir -p "$work/path"
rm -f "$work/path/c++"
printf '#!/bin/sh\nexec %s "$@"\n' "${CMAKE_CXX_COMPILER_LAUNCHER:-} $(command -v "$triple-g++")" >"$work/path/c++"
chmod +x "$work/path/c++"
ln -sf "$PWD/$native/bin/sqxcpp" "$work/path/sqxcpp"
unset SLC_CC_COMMAND
export SLC_AGREE_TESTS=${SLC_AGREE_TESTS:-Light.*} SLC_AGREE_RANDOM=${SLC_AGREE_RANDOM:-4}
PATH=$work/path:$PATH ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)" \
    --timeout 3600 -R "^(${tested// /|}|product_machine|run)\."
echo "The tests of ${tested// /, } and run pass there too"
