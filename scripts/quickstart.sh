#!/usr/bin/env bash
# Installs what is missing, builds the programs, compiles the shaders in examples/ and in the folders directly
# below it, and shades those of examples/ itself into one picture, if sqxshade is built.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

# Announces a long step if the output is a terminal.
announce() {
    [ ! -t 1 ] || printf '\n== %s\n' "$*"
}

install_missing "$needs"
announce "Building the programs in build/release; the first time takes some minutes"
build_preset release programs

# Compiles one example; messages are shown only if this fails. Options that an example needs are in a
# comment in its first line. The working directory is build/examples, since generated C++ stays there.
compile_example() {
    local messages options
    options=$(sed -n '1s|^// options: ||p' "$1")
    # shellcheck disable=SC2086 # the words are separate options
    if ! messages=$(cd build/examples && ../release/bin/shaderqx -I../release/shadeops \
                     $options "../../$1" 2>&1); then
        echo "$messages" >&2
        echo "$1: not compiled" >&2
        return 1
    fi
    echo "$1"
}

announce "Compiling the examples into build/examples"
mkdir -p build/examples
for source in examples/*.sl examples/*/*.sl; do
    compile_example "$source"
done
if [ -x build/release/bin/sqxshade ]; then
    announce "Shading them"
    shaders=()
    for source in examples/*.sl; do
        shaders+=("build/examples/$(basename "$source" .sl).sqx")
    done
    build/release/bin/sqxshade --sheet --size 160x160 --samples 2 \
        -o build/examples/contact-sheet.png "${shaders[@]}"
    echo "Their pictures are in build/examples/contact-sheet.png"
fi
echo "The compiled shaders are in build/examples, the compiler is build/release/bin/shaderqx"
if [ -t 1 ]; then
    announce "What next"
    cat <<'NEXT'
  build/release/bin/sqxview examples/marble.sl        shows a shader in the browser while you change it
  build/release/bin/sqxshade examples/marble.sl       shades one into marble.png
  sudo cmake --install build/release                  installs the programs for all users
  ./scripts/test.sh                                   runs all tests
  docs/language.md, docs/built-ins.md                 explain how to write shaders
NEXT
fi
