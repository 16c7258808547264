#!/usr/bin/env bash
# Builds the extension for Visual Studio Code, build/vscode/shaderqx.vsix. Needs Node.js with npm, and the
# network the first time.
set -euo pipefail
cd "$(dirname "$0")/.."
for program in node npm; do
    command -v "$program" >/dev/null || {
        echo "$0: there is no $program: install Node.js with npm" >&2
        exit 1
    }
done
mkdir -p build/vscode
cp -rf editors/vscode/. build/vscode/source
cp docs/images/sqxview.png build/vscode/source/preview.png
cd build/vscode/source
npm install --no-audit --no-fund --loglevel=error
npm run --silent bundle
npm run --silent package -- --out ../shaderqx.vsix
