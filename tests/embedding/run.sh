#!/usr/bin/env bash
# Builds the programs of README.md and docs/embedding.md against the libraries of the build, and runs
# each with byte-code and with shared objects. It must print the same with both. If there is pkg-config,
# tests/readme/run.sh also runs the commands of docs/embedding.md and docs/compiling.md with an installed
# tree.
# usage: run.sh BUILD_DIRECTORY
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
unset SLC_CC_PROCESSOR
export SLC_CC_OPTIONS=-O0

# shellcheck source=tests/embedding/programs.sh
. "$root/tests/embedding/programs.sh"

compile_program() {
    c++ -std=c++20 -Wall -Wextra -Werror "$1.cpp" -o "$1" -I"$root/runtime" -I"$root/runtime/shading" \
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
for source in "$root"/examples/{blockerlight,matte,spotlight}.sl; do
    compile_shader code --int "$source"
    compile_shader object --dso "$source"
done

patch_program "$root/docs/embedding.md" >patch.cpp
compile_program patch
expected=$(./patch code/matte.sqx code/spotlight.sqx)
for kinds in 'code object' 'object code' 'object object'; do
    set -- $kinds
    expect "$(./patch "$1/matte.sqx" "$2/spotlight.sqx")" "$expected" "docs/embedding.md, $kinds"
done

block "$root/docs/embedding.md" '// parameters.cpp' >parameters.cpp
compile_program parameters
expected=$(./parameters code/blockerlight.sqx)
expect "$(./parameters object/blockerlight.sqx)" "$expected" "docs/embedding.md, parameters"

# The example of a grid in the caller's memory, with the code that the page omits.
{
    echo '#include <cstdio>'
    echo '#include <vector>'
    echo '#include "host/QxHost.h"'
    echo 'int main(int, char** argv) { try {'
    echo 'const unsigned int columns = 3, rows = 2; const QxVector3 eye = {0, 0, 0};'
    echo 'std::vector<QxVector3> P(columns * rows, QxVector3{0, 0, 1}); std::vector<QxRGBColor> Ci(columns * rows), Oi(Ci);'
    echo 'std::vector<QxRGBColor> white(columns * rows, QxRGBColor{1, 1, 1});'
    echo 'QxHostScene scene; QxShaderInstance surface(QxShader::Open(argv[1]), scene.Spaces());'
    block "$root/docs/embedding.md" 'QxHostPoints points' |
        sed 's/^surface.Run/points.variables.Cs = points.variables.Os = white.data(); &/'
    echo 'std::printf("%g\n", Ci[5].g); } catch (const QxHostError& e) { std::puts(e.what()); } }'
} >points.cpp
compile_program points
for kind in code object; do
    compile_shader $kind $([ $kind = code ] && echo --int || echo --dso) "$root/examples/constant.sl"
    expect "$(./points $kind/constant.sqx)" 1 "docs/embedding.md, points, $kind"
done

# The example of a scene that traces rays. Here each ray hits something.
{
    echo '#include <cstdio>'
    echo '#include "host/QxHost.h"'
    echo 'struct Hit {}; static void Fill(QxHostGrid&, const Hit&) {}'
    echo 'static bool Intersect(const QxVector3&, const QxVector3&, Hit&, float& distance) { distance = 1; return true; }'
    block "$root/docs/embedding.md" 'class Mirrors'
    echo 'int main(int, char** argv) { Mirrors scene; QxShaderInstance mirror(QxShader::Open(argv[1]), scene.Spaces());'
    echo 'scene.surface = &mirror; QxHostGrid grid(2, 2); mirror.Run(grid, scene);'
    echo 'std::printf("%g\n", grid.Values<QxRGBColor>("Ci")[3].g); }'
} >mirrors.cpp
compile_program mirrors
echo 'surface mirror() { Ci = 1 + 0.5 * trace(P, N); Oi = 1; }' >mirror.sl
for kind in code object; do
    compile_shader $kind $([ $kind = code ] && echo --int || echo --dso) mirror.sl
    expect "$(./mirrors $kind/mirror.sqx)" 1.875 "docs/embedding.md, mirrors, $kind"
done

readme_program "$root/README.md" >readme.cpp
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

if command -v pkg-config >/dev/null; then
    cmake --install "$build" --prefix "$scratch/installed" >/dev/null
    for page in docs/embedding.md docs/compiling.md; do
        PATH="$scratch/installed/bin:$PATH" \
            PKG_CONFIG_PATH=$(dirname "$(find "$scratch/installed" -name shaderqx.pc)") \
            "$root/tests/readme/run.sh" "$build" $page
    done
fi
