#!/usr/bin/env bash
# Runs a target of the preset `fuzz` on seeds from the tree and on mutations that libFuzzer makes.
# usage: run.sh TARGET [LIBFUZZER_OPTION...]
#   TARGET            for example compile
#   LIBFUZZER_OPTION  -runs=1000000, -max_total_time=600, ...
# Inputs that reach new code stay in build/fuzz/TARGET.found for the next run. An input that crashes the
# process stays in the working directory.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$here/../../build/fuzz
target=$1
shift
mkdir -p "$build/$target.found"
"$here/${target}_corpus.sh" "$build/$target.corpus"
# With small inputs, entropic scheduling takes more than half of the time.
exec "$build/tests/fuzz/fuzz_$target" -entropic=0 -rss_limit_mb=4096 -max_len=12000 -timeout=60 \
    "$@" "$build/$target.found" "$build/$target.corpus"
