#!/usr/bin/env bash
# Builds the programs of README.md and docs/embedding.md against the libraries of the build, and runs
# each with byte-code and with shared objects, which must print the same.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
export SLC_CC_OPTIONS=-O0

# The block of C++ in $1 that holds the text $2.
block() {
    awk -v text="$2" '
        /^```cpp$/ { inside = 1; block = ""; next }
        /^```$/ && inside { inside = 0; if (index(block, text)) { printf "%s", block; exit } next }
        inside { block = block $0 "\n" }' "$1"
}

compile_program() {
    c++ -std=c++20 -Wall -Wextra -Werror "$1.cpp" -o "$1" -I"$root/runtime" \
        $(find "$build/runtime/host" -name '*.a') $(find "$build/runtime/machine" -name '*.a') \
        $(find "$build/runtime/sqx" -name '*.a') -ldl
}

compile_shader() {
    "$build/bin/shaderqx" -d "$1" "$2" "$3" >messages 2>&1 || { cat messages; exit 1; }
}

expect() {
    [ "$1" = "$2" ] || { echo "$3: expected '$2', but got '$1'"; exit 1; }
}

mkdir code object
for source in "$root"/examples/{matte,spotlight}.sl; do
    compile_shader code --int "$source"
    compile_shader object --dso "$source"
done

block "$root/docs/embedding.md" '// patch.cpp' >patch.cpp
compile_program patch
expected=$(./patch code/matte.sqx code/spotlight.sqx)
expect "$expected" "$(sed -n '/^\$ .\/patch/{n;p;q}' "$root/docs/embedding.md")" 'docs/embedding.md'
for kinds in 'code object' 'object code' 'object object'; do
    set -- $kinds
    expect "$(./patch "$1/matte.sqx" "$2/spotlight.sqx")" "$expected" "docs/embedding.md, $kinds"
done

# The example of the README leaves out what stands around it.
{
    echo '#include <iostream>'
    block "$root/README.md" '#include "host/QxHost.h"' | sed '/^#include/!d'
    echo 'int main() {'
    block "$root/README.md" '#include "host/QxHost.h"' | sed '/^#include/d'
    echo 'for (const QxRGBColor& c : colors) std::cout << c.r << " " << c.g << " " << c.b << "\n"; }'
} >readme.cpp
compile_program readme
cat >plastic.sl <<'SHADER'
surface plastic(float Kd = 1; color specularcolor = 1)
{
    normal n = faceforward(normalize(N), I);
    Oi = Os;
    Ci = Os * (Cs * (ambient() + Kd * diffuse(n)) + specularcolor * specular(n, -normalize(I), 0.1));
}
SHADER
compile_shader . --int plastic.sl
expected=$(./readme)
compile_shader . --dso plastic.sl
expect "$(./readme)" "$expected" README.md
expect "$(./readme | sort -u | wc -l | xargs -I{} test {} -gt 100 && echo varied)" varied README.md
