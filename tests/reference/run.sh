#!/usr/bin/env bash
# The documents, editor files and names of generated C++ that are generated from the compiler's tables
# are up to date, and the editors recognize shaders and the compiler's reports.
# usage: run.sh PROGRAM_DIRECTORY
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
bin=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/runtime"
cp -r "$root/README.md" "$root/docs" "$root/editors" "$scratch"
cp -r "$root/runtime/shading" "$scratch/runtime"
"$bin/sqxreference" "$scratch"
for made in README.md docs editors runtime/shading; do
    diff -ru "$root/$made" "$scratch/$made" || {
        echo "Stale: cmake --build build/release --target reference rewrites them"
        exit 1
    }
done

cd "$scratch"
export SLC_CPP_COMMAND='cat $input_file > $cpp_result' SLC_CC_COMMAND=false
printf '# 1 "faulty.sl"\nsurface faulty()\n{\n    point q = P + P;\n    Ci = missing;\n}\n' >faulty.sl
"$bin/shaderqx" faulty.sl 2>messages && exit 1
# Reports of the preprocessor also have a column.
echo '#include "none.h"' >faulty2.sl
env -u SLC_CPP_COMMAND "$bin/shaderqx" faulty2.sl 2>>messages && exit 1
pattern=$(sed -n 's/.*"regexp": "\(.*\)",/\1/p' editors/vscode/package.json | sed 's/\\\\/\\/g; s/\\d/[0-9]/g; s/(\.+?)/(.+)/; s/(?:/(/')
[ "$(grep -cE "$pattern" messages)" = "$(grep -cE '^faulty.*(ERROR|WARNING)' messages)" ] || {
    echo "The problem matcher does not find: "
    cat messages
    exit 1
}
if command -v vim >/dev/null && vim --version | grep -q '+syntax'; then
    # By default Vim assigns this extension to another language.
    mkdir home
    cp -r editors/vim home/.vim
    printf 'filetype plugin on\nsyntax on\n' >home/.vimrc
    HOME=$scratch/home vim -u home/.vimrc -N -es faulty.sl \
        -c 'call writefile([&filetype, synIDattr(synID(2, 1, 1), "name")], "colors")' \
        -c 'qa!' </dev/null >/dev/null 2>&1 || true
    [ "$(xargs <colors)" = 'sl slShader' ] || {
        echo "Vim takes a shader and its first word for: "
        cat colors
        exit 1
    }
fi
if command -v vim >/dev/null && vim --version | grep -q '+quickfix'; then
    for source in faulty.sl faulty2.sl; do
        PATH=$bin:$PATH env -u SLC_CPP_COMMAND vim -u NONE -N -es --cmd 'set rtp^=editors/vim' "$source" \
            -c 'compiler shaderqx' -c 'silent make' \
            -c 'call writefile(map(filter(getqflist(), "v:val.valid"), "v:val.lnum . v:val.type"), "found")' \
            -c 'qa!' </dev/null >/dev/null 2>&1 || true
        [ "$(sort -u found | tr '\n' ' ')" = "$(sed -nE "s/^$source:([0-9]+):([0-9]+:)? (.).*/\1\3/p" messages | sort -u | tr '\n' ' ')" ] || {
            echo "Vim finds other reports:"
            cat found messages
            exit 1
        }
    done
fi
if command -v kate-syntax-highlighter >/dev/null; then
    syntax=home/.local/share/org.kde.syntax-highlighting/syntax
    mkdir -p "$syntax"
    cp editors/kate/sl.xml "$syntax"
    HOME=$scratch/home XDG_DATA_HOME='' kate-syntax-highlighter -t "Breeze Light" \
        faulty.sl >colors 2>&1 || true
    grep -q '<span[^>]*bold[^>]*>surface</span>' colors || {
        echo "Kate colors a shader so:"
        cat colors
        exit 1
    }
fi
