#!/usr/bin/env bash
# Installs the build, moves the installed tree, and builds a shared object with it: shaderqx must find
# the headers for generated C++ in that tree. sqxdump and sqxshade must run there, the host library and
# its headers must be installed, and a shadeop library must compile with the installed header.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE

cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/moved"
cp "$root/examples/constant.sl" "$scratch"
cd "$scratch"
moved/bin/shaderqx --dso constant.sl 2>messages || {
    cat messages
    exit 1
}
grep -q -- "-I$scratch/moved/include/shaderqx " messages || {
    echo "The installed header is not the one in use:"
    cat messages
    exit 1
}
moved/bin/shaderqx constant.sl 2>/dev/null
moved/bin/sqxdump --params constant.sqx

if [ -x "$build/bin/sqxshade" ]; then
    moved/bin/sqxshade --size 8x8 constant.sl
    [ -s constant.png ]
fi

[ -f moved/lib*/libshaderqx_host.a ] || [ -f moved/lib/*/libshaderqx_host.a ] || {
    echo "The host library is not installed"
    exit 1
}
echo '#include "host/QxHost.h"' >host.cpp
c++ -std=c++20 -Wall -Werror -Imoved/include/shaderqx -fsyntax-only host.cpp

cp "$root/examples/shadeops/woven.sl" .
cc -shared -fPIC -Imoved/include/shaderqx -o patterns.so "$root/examples/shadeops/patterns.c"
moved/bin/shaderqx woven.sl 2>messages || {
    cat messages
    exit 1
}
