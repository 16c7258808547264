#!/usr/bin/env bash
# Runs a target of the preset `fuzz` on seeds from the tree and on what libFuzzer makes of them.
# usage: run.sh TARGET [LIBFUZZER_OPTION...]
#   TARGET            compile, for example
#   LIBFUZZER_OPTION  -runs=1000000, -max_total_time=600, ...
# Inputs that reach new code stay in build/fuzz/TARGET.found for the next run; one that ends the
# process is left in the working directory.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$here/../../build/fuzz
target=$1
shift
mkdir -p "$build/$target.found"
"$here/${target}_corpus.sh" "$build/$target.corpus"
# Choosing seeds by the rarity of what they reach takes more than half of the time of small inputs.
exec "$build/tests/fuzz/fuzz_$target" -entropic=0 -rss_limit_mb=4096 -max_len=12000 -timeout=60 \
    "$@" "$build/$target.found" "$build/$target.corpus"
