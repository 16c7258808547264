#!/usr/bin/env bash
# Runs clang-tidy with the configuration in .clang-tidy, and ends with status 1 if it finds anything. A
# header is checked with the sources that include it. A source is skipped if it was clean and since then
# neither it, nor a file that it includes, nor .clang-tidy has changed.
# usage: tidy.sh            checks the files that differ from the branch main, or on main from the commit before
#                           the last one
#        tidy.sh FILE...    checks these files
#        tidy.sh --all      checks the whole tree, which takes an hour the first time
# environment: SLC_TIDY_JOBS  number of files checked at a time; one per processor by default
#              SLC_TIDY_MOST  maximum number of files to check
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/tidy
clean=$build/clean

# Prints the sources that are checked: not the fakes of tests, the programs of the tests host and package, and
# the fuzz targets, which are compiled differently.
sources() {
    git ls-files --cached --others --exclude-standard \
        'src/*.cpp' 'runtime/*.cpp' 'tools/*.cpp' 'tests/*.cpp' 'bench/*.cpp' |
        grep -vE '^tests/(host/fakes|host/life|package|fuzz)/'
}

changed() {
    local base
    base=$(git merge-base HEAD main 2>/dev/null || true)
    if [ -z "$base" ] || [ "$base" = "$(git rev-parse HEAD)" ]; then
        base=$(git rev-parse --verify -q HEAD~1 || git rev-parse HEAD)
    fi
    git diff --name-only --diff-filter=d "$base"
    git ls-files --others --exclude-standard
}

# Prints the sources among the files $@, and the sources that include a header among these files by name.
sources_of() {
    local file name
    for file in "$@"; do
        name=${file#src/}
        name=${name#runtime/}
        name=${name#shading/}
        name=${name#tools/}
        name=${name#tests/}
        case $file in
            *.cpp) echo "$file" ;;
            *.h) grep -lF "#include \"$name\"" $(sources) || true ;;
        esac
    done | sort -u | grep -xFf <(sources) || true
}

# Prints a hash of all that the result for the source $1 depends on: the configuration, and the text of the
# source with all included files.
state_of() {
    local preprocess
    preprocess=$(grep -F -B1 "\"file\": \"$PWD/$1\"" "$build/compile_commands.json" |
        sed -nE 's/^ *"command": "(.*)",$/\1/p' |
        sed -E 's/\\(["\\])/\1/g; s/ -o [^ ]+//; s/ -c / -E -P /')
    { cat .clang-tidy && bash -c "$preprocess"; } | sha256sum | cut -d' ' -f1
}

check() {
    local state
    state=$(state_of "$1")
    [ ! -e "$clean/$state" ] || return 0
    clang-tidy --quiet --warnings-as-errors='*' -p "$build" "$1" \
        2> >(grep -vE '^[0-9]+ warnings? (generated|treated as error)' >&2 || true) || return 1
    : >"$clean/$state"
}

if [ "${1-}" = --check ]; then
    check "$2"
    exit
fi

# Each source gets its own compile command; in a unity build, batches of sources share one.
cmake -S . -B "$build" -DSLC_BATCH_SOURCES=OFF -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_C_COMPILER_LAUNCHER= -DCMAKE_CXX_COMPILER_LAUNCHER= >/dev/null
# Headers of the scanner and the parser are generated, and sources include them.
cmake --build "$build" --target slc_grammar >/dev/null
mkdir -p "$clean"

case ${1-} in
    --all) mapfile -t files < <(sources) ;;
    '') mapfile -t files < <(mapfile -t names < <(changed) && sources_of "${names[@]}") ;;
    *) mapfile -t files < <(sources_of "$@") ;;
esac
files=("${files[@]:0:${SLC_TIDY_MOST:-${#files[@]}}}")
[ ${#files[@]} -gt 0 ] || { echo "There is nothing to look at"; exit 0; }
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "${SLC_TIDY_JOBS:-$(nproc)}" "$0" --check
echo "${#files[@]} files are clean"
