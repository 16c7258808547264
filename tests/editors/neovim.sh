#!/usr/bin/env bash
# Starts Neovim without a window on a shader with an error, with the configuration in docs/editors.md,
# and checks the answers of the language server: errors, hover, definition, completion and rename. The
# test is skipped with status 77 if there is no Neovim, or unless SLC_TEST_EDITOR is 1.
# usage: neovim.sh BIN_DIRECTORY
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
bin=$(cd "$1" && pwd)
if [ "${SLC_TEST_EDITOR:-0}" != 1 ]; then
    echo 'Skipped: SLC_TEST_EDITOR=1 asks for the test in an editor'
    exit 77
fi
if ! command -v nvim >/dev/null; then
    echo 'Skipped: there is no nvim; the package neovim has it'
    exit 77
fi
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export PATH="$bin:$PATH" XDG_CONFIG_HOME="$scratch" XDG_DATA_HOME="$scratch" \
    XDG_STATE_HOME="$scratch" XDG_CACHE_HOME="$scratch"
mkdir "$scratch/nvim" "$scratch/shaders"
# The configuration consists of the lines that docs/editors.md asks users to add to theirs.
sed -n '/^```lua$/,/^```$/{ /^```/d; p; }' "$here/../../docs/editors.md" >"$scratch/nvim/init.lua"
cat >"$scratch/shaders/gain.h" <<'SL'
float gain(float amount)
{
    return 2 * amount;
}
SL
cat >"$scratch/shaders/lit.sl" <<'SL'
#include "gain.h"
surface lit(float Kd = 0.5)
{
    float edge = gain(Kd);
    Ci = edge * Cs * nothing;
    Oi = Os;
}
SL
cd "$scratch/shaders"
timeout 60 nvim --headless -i NONE lit.sl -c "luafile $here/neovim.lua" >"$scratch/log" 2>&1 || {
    cat "$scratch/log"
    exit 1
}
cat "$scratch/log"
