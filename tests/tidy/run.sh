#!/usr/bin/env bash
# clang-tidy finds nothing: in a few of the sources that changed last, or with SLC_TEST_TIDY=1 in the
# whole tree. Skipped, with status 77, where there is no clang-tidy or no history to ask what changed.
# usage: run.sh
set -euo pipefail
cd "$(dirname "$0")/../.."
command -v clang-tidy >/dev/null || { echo "There is no clang-tidy"; exit 77; }
git rev-parse HEAD >/dev/null 2>&1 || { echo "There is no history of the sources"; exit 77; }
if [ "${SLC_TEST_TIDY:-0}" = 1 ]; then
    scripts/tidy.sh --all
else
    SLC_TIDY_MOST=6 scripts/tidy.sh
fi
