#!/usr/bin/env bash
# clang-tidy finds nothing in a few of the sources that changed last, or with SLC_TEST_TIDY=1 in the
# whole tree. The test is skipped with status 77 without clang-tidy or without a Git history.
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
