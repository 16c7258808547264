#!/usr/bin/env bash
# Makes the packages of the build, unpacks them into a scratch root, and uses them as another project
# would: the programs from another folder, the CMake package, and pkg-config.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE CMAKE_GENERATOR
# shellcheck source=tests/embedding/programs.sh
. "$here/../embedding/programs.sh"
cd "$scratch"

fail() {
    echo "$*"
    exit 1
}
quietly() {
    "$@" >log 2>&1 || {
        cat log
        fail "Failed: $*"
    }
}
expect() {
    [ "$1" = "$2" ] || fail "$3: expected '$2', but got '$1'"
}

quietly cpack --config "$build/CPackConfig.cmake" -B packages
mkdir 'a root'
quietly tar -xzf packages/*.tar.gz -C 'a root' --strip-components 1
prefix="$scratch/a root"
[ -x "$prefix/bin/shaderqx" ] || fail 'The archive has no bin/shaderqx'
if [ -n "$(find packages -name '*.deb')" ]; then
    for package in packages/*.deb; do
        quietly dpkg-deb -x "$package" 'a root'
    done
    prefix="$scratch/a root/usr"
    dpkg-deb -f packages/shaderqx_*.deb Depends | grep -q 'libc6' || fail 'The package needs no libc6'
    # The package of the programs has no files for building with the libraries, and the development package
    # has no programs.
    dpkg-deb -c packages/shaderqx_*.deb | grep -E '\.a$|cmake/|pkgconfig|host/' && fail 'Not for users of programs'
    dpkg-deb -c packages/shaderqx-dev_*.deb | grep -E '/bin/|/man/' && fail 'Not for builders of programs'
    if command -v lintian >/dev/null; then
        lintian --allow-root --fail-on error packages/*.deb >log 2>&1 || { cat log; fail 'lintian finds errors'; }
    fi
fi

# Each program has its manual page and its completion in bash, editor files and examples are installed,
# and the links in the installed documents lead to installed files.
share="$prefix/share"
for program in "$prefix"/bin/*; do
    name=$(basename "$program")
    [ -n "$(find "$share/man/man1" -name "$name.1*")" ] || fail "$name has no manual page"
    [ -s "$share/bash-completion/completions/$name" ] || fail "$name has no completion"
done
for file in editors examples/matte.sl examples/shadeops/patterns.c; do
    [ -e "$share/shaderqx/$file" ] || fail "$file is not in the package"
done
pages="$share/doc/shaderqx"
for page in "$pages"/*.md "$pages"/docs/*.md; do
    for target in $(grep -oE '\]\([^)#: ]+' "$page" | sed 's/^](//'); do
        [ -e "$(dirname "$page")/$target" ] || fail "$page leads to $target, which is not there"
    done
done

# The programs compile installed examples from another folder.
mkdir elsewhere
(
    cd elsewhere
    PATH=$prefix/bin:$PATH
    quietly shaderqx "$share/shaderqx/examples/matte.sl"
    quietly shaderqx "$share/shaderqx/examples/spotlight.sl"
    quietly sqxdump --json matte.sqx spotlight.sqx
)

# A project that uses only the CMake package builds the programs of the installed documents, with
# ninja and with make if they are installed.
cp -r "$here/project" project
patch_program "$pages/docs/embedding.md" >project/patch.cpp
readme_program "$pages/README.md" >project/readme.cpp
expected='0.25 0.25 0.25'
patch_prints=$(patch_output "$pages/docs/embedding.md")
try_patch() {
    expect "$("$1" elsewhere/matte.sqx elsewhere/spotlight.sqx)" "$patch_prints" "$1"
}
rebuilds() {
    quietly cmake --build "$1"
    expect "$(sed -n "s|.*Compiling shader .*/||p" log | sort -u | xargs)" "$2" "$3"
}
try_generator() {
    local tree="built $1"
    quietly cmake -S project -B "$tree" -G "$2" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
    quietly cmake --build "$tree"
    [ -s "$tree/shaders/chalk.sqx" ] && [ -s "$tree/shaders/tinted.sqx" ]
    expect "$(cat "$tree/folder.txt")" "$scratch/$tree/shaders" "$2, folder of the shaders"
    expect "$("$tree/host" "$tree/built/chalk.sqx")" "$expected" "$2, a shader of the build"
    try_patch "$tree/patch"
    [ -x "$tree/readme" ]

    rebuilds "$tree" '' "$2, without a change"
    sleep 0.01
    touch 'project/in clude/gain.h'
    rebuilds "$tree" 'chalk.sl two words.sl' "$2, after a change of a header"
    rebuilds "$tree" '' "$2, again without a change"
    sleep 0.01
    sed -i 's/1 - /2 - /' project/twist.c
    rebuilds "$tree" twisted.sl "$2, after a change of a shadeop library"
    expect "$("$prefix/bin/sqxdump" --load -I "$tree/shade ops" --param amount "$tree/twisted/twisted.sqx" |
        awk '/amount/ { print $NF }')" 1.75 "$2, a value by a shadeop"
    sed -i 's/2 - /1 - /' project/twist.c
}
command -v ninja >/dev/null && try_generator ninja Ninja
command -v make >/dev/null && try_generator make 'Unix Makefiles'

# A project of shaders alone enables no language. The default generator of CMake is make.
command -v make >/dev/null || export CMAKE_GENERATOR=Ninja
mkdir shaders
cp "$share/shaderqx/examples/matte.sl" shaders
echo 'cmake_minimum_required(VERSION 3.25)
project(shaders NONE)
find_package(shaderqx REQUIRED)
shaderqx_add_shaders(shaders matte.sl)' >shaders/CMakeLists.txt
quietly cmake -S shaders -B 'built shaders' -DCMAKE_PREFIX_PATH="$prefix"
quietly cmake --build 'built shaders'
[ -s 'built shaders/shaders/matte.sqx' ] || fail 'A project of shaders alone builds none'

if command -v pkg-config >/dev/null; then
    PKG_CONFIG_PATH="$(dirname "$(find "$prefix" -name shaderqx.pc)")"
    export PKG_CONFIG_PATH
    for program in host patch; do
        # pkg-config escapes the blanks of the path for the shell.
        quietly eval "c++ -std=c++20 project/$program.cpp -o $program $(pkg-config --cflags --libs shaderqx)"
    done
    try_patch ./patch
    quietly "$prefix/bin/sqxmake" --dso '-Iproject/in clude' -o objects project/chalk.sl
    expect "$(./host objects/chalk.sqx)" "$expected" pkg-config
fi
