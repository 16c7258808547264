#!/usr/bin/env bash
# Without an optional library CMake can configure the tree, and lists what is not built.
# usage: run.sh CXX_COMPILER
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset CMAKE_GENERATOR
command -v make >/dev/null || export CMAKE_GENERATOR=Ninja

left_out() {
    cmake -S "$root" -B "$scratch/build" -DCMAKE_CXX_COMPILER="$1" "${@:2}" >"$scratch/log" 2>&1 || {
        cat "$scratch/log"
        exit 1
    }
    sed -n '/^-- Not built here:/,/^--/{ s/^  //p; }' "$scratch/log" | grep -vE '^(the renderer|Debian packages)'
}
expect() {
    [ "$1" = "$2" ] || {
        diff <(echo "$2") <(echo "$1")
        exit 1
    }
}

expect "$(left_out "$1" -DCMAKE_DISABLE_FIND_PACKAGE_PNG=ON -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON)" \
    'sqxshade, which shades pictures: libpng is missing
sqxview, which shows shaders in a browser: libpng is missing
tests: GoogleTest with GoogleMock is missing'
expect "$(left_out "$1" -DCMAKE_DISABLE_FIND_PACKAGE_PNG=OFF -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON |
    grep sqxview)" 'sqxview, which shows shaders in a browser: pkg-config, which finds cpp-httplib, is missing'
# pkg-config finds no library in the scratch folder. A new build folder is needed, since CMake caches
# results.
rm -rf "$scratch/build"
expect "$(PKG_CONFIG_LIBDIR=$scratch left_out "$1" | grep sqxview)" \
    'sqxview, which shows shaders in a browser: cpp-httplib is missing'
expect "$(left_out "$1" -DCMAKE_DISABLE_FIND_PACKAGE_nlohmann_json=ON |
    grep nlohmann)" 'sqxdump --json: nlohmann-json is missing
sqxview, which shows shaders in a browser: nlohmann-json is missing
sqxls, the language server for editors: nlohmann-json is missing'
# The programs that need no optional library still have targets.
expect "$(cmake --build "$scratch/build" --target help | grep -cE '\b(shaderqx|sqxdump|sqxmake|bench)\b')" 4
