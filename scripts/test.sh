#!/usr/bin/env bash
# Builds the compiler, compiles the examples, and runs every test: of the release build, then of
# the sanitizer build if that leaves time for it. The last line says how many passed and failed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

# The sanitizer build takes about twice as long as the release build, so it starts only if the
# release build and its tests took less than a third of the time (seconds) that a run may take.
time_limit=${SLC_TEST_TIME_LIMIT:-1200}
passed=0
failed=0

# Runs the tests of the preset $1 and adds to the counts.
run_tests() {
    local log="build/$1/ctest.log" summary
    ctest --test-dir "build/$1" --output-on-failure --no-tests=error --parallel "$(nproc)" \
        --timeout 600 2>&1 | tee "$log" || true
    summary=$(sed -nE 's/.* ([0-9]+) tests failed out of ([0-9]+)$/\1 \2/p' "$log" | tail -1)
    if [ -z "$summary" ]; then
        echo "$0: the tests of build/$1 did not run to their end" >&2
        return 1
    fi
    failed=$((failed + ${summary% *}))
    passed=$((passed + ${summary#* } - ${summary% *}))
}

# Installs what is missing and builds the release preset.
scripts/quickstart.sh
run_tests release
if [ $((SECONDS * 3)) -lt "$time_limit" ]; then
    build_preset asan
    run_tests asan
else
    echo "Sanitizer build left out: $SECONDS of $time_limit seconds are used"
fi
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
