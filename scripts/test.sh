#!/usr/bin/env bash
# Builds the programs, compiles the examples, and runs the tests of the release build and, if requested, of
# the sanitizer build and of a build for another architecture. The last line states how many tests passed and
# failed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/prepare.sh

# SLC_TEST_SANITIZERS=1 requests the sanitizer build, which takes longer than everything else.
sanitizers=${SLC_TEST_SANITIZERS:-0}
# SLC_TEST_BROWSER=1 requests the tests in a browser, which is large to install.
browser=${SLC_TEST_BROWSER:-0}
# SLC_TEST_EDITOR=1 requests the test in an editor, Neovim.
editor=${SLC_TEST_EDITOR:-0}
# SLC_TEST_RENDERER=1 installs Embree for examples/renderer, which is tested whenever Embree is installed.
renderer=${SLC_TEST_RENDERER:-0}
# SLC_TEST_ARM=1 requests a build for aarch64, which runs in an emulator and counts as one test.
arm=${SLC_TEST_ARM:-0}
passed=0
failed=0

# Runs the tests of the preset $1 and adds their results to the counts.
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

if [ "$browser" = 1 ]; then
    install_missing "$browser_needs" ||
        echo "$0: there is no browser and none could be installed; its tests are skipped" >&2
fi
if [ "$editor" = 1 ]; then
    install_missing "$editor_needs" ||
        echo "$0: there is no Neovim and it could not be installed; its test is skipped" >&2
fi
[ "$renderer" != 1 ] || install_missing "$renderer_needs"
# Installs what is missing and builds the programs; the tests are built afterwards.
scripts/quickstart.sh
install_missing "$test_needs"
build_preset release
run_tests release
if [ "$arm" = 1 ]; then
    if scripts/cross.sh aarch64; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
    fi
fi
if [ "$sanitizers" = 1 ]; then
    build_preset asan
    run_tests asan
fi
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
