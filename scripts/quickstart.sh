#!/usr/bin/env bash
# Builds the compiler from a clean clone and compiles every example with it.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

install_missing
build_preset release

# Compiles one example; its messages are shown only if it fails. A comment in its first line tells
# the options that it needs, if any. The program leaves generated C++ in the working directory.
compile_example() {
    local messages options
    options=$(sed -n '1s|^// options: ||p' "$1")
    # shellcheck disable=SC2086  # the words are options of their own
    if ! messages=$(cd build/examples && ../release/bin/shaderqx -I../release/shadeops \
                     $options "../../$1" 2>&1); then
        echo "$messages" >&2
        echo "$1: not compiled" >&2
        return 1
    fi
    echo "$1"
}

mkdir -p build/examples
for source in examples/*.sl examples/*/*.sl; do
    compile_example "$source"
done
echo "The compiled shaders are in build/examples, the compiler is build/release/bin/shaderqx"
