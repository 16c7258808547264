#!/usr/bin/env bash
# Runs golden cases, see README.md, and compares their results with the files of expected results.
# usage: run.sh [--update] BIN_DIRECTORY [CASE...]
#   BIN_DIRECTORY  where shaderqx and sqxdump were built
#   CASE           a name, without extension; all cases if none is given
#   --update       rewrites the expected files instead of comparing
set -euo pipefail
cases_dir=$(cd "$(dirname "$0")" && pwd)

update=false
if [ "${1:-}" = --update ]; then
    update=true
    shift
fi
PATH="$(cd "$1" && pwd):$PATH"
shift
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE CPATH
export LC_ALL=C

# A run prints a line for each default command that the environment does not replace. That of the C++
# compiler contains a path, which is not the same on all computers.
without_default_commands() {
    sed "/^shaderqx: WARNING: 'SLC_C[PC]*_COMMAND' environment variable/d"
}

# Runs the command of the case $1 in the working directory and writes its results to the files
# "messages", "status" and "dump" in the folder $2. No file is written for an empty output and for
# status 0.
run_case() {
    local command="shaderqx $1.sl" status=0 compiled
    [ ! -e "$cases_dir/$1.cmd" ] || command=$(cat "$cases_dir/$1.cmd")
    bash -c "set -o pipefail; $command" >"$2/all" 2>&1 </dev/null || status=$?
    without_default_commands <"$2/all" >"$2/messages"
    rm "$2/all"
    [ -s "$2/messages" ] || rm "$2/messages"
    [ "$status" = 0 ] || echo "$status" >"$2/status"
    find . -name '*.sqx' -type f | sort | while read -r compiled; do
        # A shared object has no byte-code to read.
        if head -c 4 "$compiled" | grep -q ELF; then
            continue
        fi
        sqxdump "$compiled" >>"$2/dump"
    done
}

# True if the results of the case $1 in the folder $2 are the expected ones. Prints the differences.
compare_outcome() {
    local kind expected same=true
    for kind in messages status dump; do
        expected="$cases_dir/$1.$kind"
        [ -e "$expected" ] || expected=/dev/null
        [ -e "$2/$kind" ] || : >"$2/$kind"
        diff -u --label "expected $kind" --label "actual $kind" "$expected" "$2/$kind" || same=false
    done
    $same
}

update_expected() {
    local kind
    for kind in messages status dump; do
        rm -f "$cases_dir/$1.$kind"
        [ ! -e "$2/$kind" ] || cp "$2/$kind" "$cases_dir/$1.$kind"
    done
}

# Runs the case $1 in a new folder with its source and the contents of $1.files, if they exist, and
# compares its results with the expected ones, or makes them the expected ones.
check_case() {
    local scratch
    scratch=$(mktemp -d)
    # shellcheck disable=SC2064  # expands now, since the variable is local
    trap "rm -rf '$scratch'" EXIT
    mkdir "$scratch/work" "$scratch/outcome"
    cd "$scratch/work"
    [ ! -e "$cases_dir/$1.sl" ] || cp "$cases_dir/$1.sl" .
    [ ! -d "$cases_dir/$1.files" ] || cp -r "$cases_dir/$1.files/." .
    run_case "$1" ../outcome
    if $update; then
        update_expected "$1" ../outcome
    else
        compare_outcome "$1" ../outcome
    fi
}

if [ $# = 0 ]; then
    mapfile -t all < <(cd "$cases_dir" && ls -- *.sl *.cmd | sed 's/\.[a-z]*$//' | sort -u)
    set -- "${all[@]}"
fi
failures=0
for name in "$@"; do
    (check_case "$name") || { echo "$name: not as expected"; failures=$((failures + 1)); }
done
[ "$failures" = 0 ]
