#!/usr/bin/env bash
# Installs the Debian packages in FOLDER, uses them as a user would, and checks that removing them leaves
# none of their files. It changes the system that it runs in, so scripts/bare.sh runs it in a new Debian.
# usage: debian.sh FOLDER    as root
set -euo pipefail
packages=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

fail() {
    echo "$*"
    exit 1
}

apt-get install -y -qq --no-install-recommends "$packages"/*.deb g++ pkgconf >log 2>&1 || {
    cat log
    fail 'The packages cannot be installed'
}
dpkg --verify shaderqx shaderqx-dev
cp /usr/share/shaderqx/examples/matte.sl .
shaderqx matte.sl 2>/dev/null
sqxdump --params matte.sqx | grep -q 'Kd'
sqxshade --size 8x8 /usr/share/shaderqx/examples/marble.sl
[ -s marble.png ] || fail 'sqxshade writes no picture'
mkdir built
shaderqx --dso -d built matte.sl 2>/dev/null
cat >host.cpp <<'PROGRAM'
#include <cstdio>
#include "host/QxHost.h"
int main(int, char** argv)
{
    QxHostScene scene;
    scene.AddAmbientLight({0.5F, 0.5F, 0.5F});
    QxShaderInstance matte(QxShader::Open(argv[1]), scene.Spaces());
    QxHostGrid grid(2, 2);
    matte.Run(grid, scene);
    std::printf("%g\n", grid.Values<QxRGBColor>("Ci")[3].g);
}
PROGRAM
# shellcheck disable=SC2046  # the flags are words
c++ -std=c++20 host.cpp -o host $(pkg-config --cflags --libs shaderqx)
for shader in matte.sqx built/matte.sqx; do
    [ "$(./host "$shader")" = 0.5 ] || fail "$shader gives other values"
done
dpkg -r shaderqx-dev shaderqx >/dev/null
left=$(find /usr /etc /var/lib -path /usr/share/doc -prune -o -name '*shaderqx*' -print -o -name 'sqx*' -print |
    grep -v /var/lib/dpkg || true)
[ -z "$left" ] || fail "Not removed: $left"
echo "The packages install, work and are removed"
