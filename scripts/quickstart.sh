#!/usr/bin/env bash
# Builds the compiler from a clean clone and compiles every example with it.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

install_missing
build_preset release

# Compiles one example, with the options behind it; its messages are shown only if it fails.
compile_example() {
    local messages
    if ! messages=$(build/release/bin/shaderqx -d build/examples "${@:2}" "$1" 2>&1); then
        echo "$messages" >&2
        echo "$1: not compiled" >&2
        return 1
    fi
    echo "$1"
}

mkdir -p build/examples
for source in examples/*.sl; do
    compile_example "$source"
done
compile_example examples/shadeops/woven.sl -Ibuild/release/shadeops
echo "The compiled shaders are in build/examples, the compiler is build/release/bin/shaderqx"
