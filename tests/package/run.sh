#!/usr/bin/env bash
# Makes the packages of the build, unpacks them into a scratch root, and uses what is there as
# another project would: programs from another folder, the CMake package, and pkg-config.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_INCLUDE CMAKE_GENERATOR
cd "$scratch"

quietly() {
    "$@" >log 2>&1 || {
        cat log
        echo "Failed: $*"
        exit 1
    }
}

generators=TGZ
command -v dpkg-deb >/dev/null && command -v dpkg-shlibdeps >/dev/null && generators='TGZ;DEB'
quietly cpack --config "$build/CPackConfig.cmake" -G "$generators" -B packages
mkdir 'a root'
if [ -n "$(find packages -name '*.deb')" ]; then
    quietly dpkg-deb -x packages/*.deb 'a root'
    prefix="$scratch/a root/usr"
    dpkg-deb -f packages/*.deb Depends | grep -q 'libc6' || { echo 'The package needs no libc6'; exit 1; }
else
    quietly tar -xzf packages/*.tar.gz -C 'a root' --strip-components 1
    prefix="$scratch/a root"
fi
[ -n "$(find packages -name '*.tar.gz')" ] || { echo 'There is no archive'; exit 1; }

# The programs, from a folder of their own, on an installed example.
mkdir elsewhere
(cd elsewhere && PATH=$prefix/bin:$PATH && quietly shaderqx "$prefix/share/shaderqx/examples/matte.sl" &&
    quietly sqxdump matte.sqx)

# The CMake package, in a project that knows nothing else; with ninja and with make, as far as they
# are here.
cp -r "$here/project" project
expected='0.25 0.25 0.25'
try_generator() {
    quietly cmake -S project -B "built $1" -G "$2" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
    quietly cmake --build "built $1"
    [ -s "built $1/shaders/chalk.sqx" ] && [ -s "built $1/shaders/tinted.sqx" ]
    [ "$(cat "built $1/folder.txt")" = "$scratch/built $1/shaders" ]
    [ "$("built $1/host" "built $1/built/chalk.sqx")" = "$expected" ]
    # A header touched: the shaders are made anew; nothing touched: nothing is.
    sleep 0.01
    touch 'project/in clude/gain.h'
    quietly cmake --build "built $1"
    grep -q 'Compiling shader' log || { echo "$2 does not follow the header"; exit 1; }
    quietly cmake --build "built $1"
    ! grep -q 'Compiling shader' log || { echo "$2 compiles without need"; exit 1; }
}
command -v ninja >/dev/null && try_generator ninja Ninja
command -v make >/dev/null && try_generator make 'Unix Makefiles'

if command -v pkg-config >/dev/null; then
    export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
    # pkg-config escapes the blanks of the path for the shell.
    quietly eval "c++ -std=c++20 project/host.cpp -o host $(pkg-config --cflags --libs shaderqx)"
    "$prefix/bin/shaderqx" --dso '-Iproject/in clude' project/chalk.sl >log 2>&1 ||
        (cd project && quietly "$prefix/bin/sqxmake" --dso '-Iin clude' -o .. chalk.sl)
    [ "$(./host ./chalk.sqx)" = "$expected" ]
fi
