#!/usr/bin/env bash
# Runs the commands of a page in order, in a scratch folder with examples/, runtime/ and build/release at
# the same places as in the repository. Blocks marked "console" contain commands after "$ ", each followed
# by its output, which must be what the command prints. Blocks marked "sh" contain one command per line,
# which must succeed, see `works_on_the_tree` for exceptions. A block marked "sl" is a shader, which is
# written to a file with its name and must compile. A block of C or C++ whose first line is a comment with
# the name of a file is written to that file.
# usage: run.sh BUILD_DIRECTORY PAGE
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$1" && pwd)
page=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r "$root/examples" "$root/runtime" "$scratch"
mkdir "$scratch/build"
ln -s "$build" "$scratch/build/release"
cd "$scratch"
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE

failures=0
fail() {
    echo "$page: $1"
    failures=$((failures + 1))
}

# A run prints a line for each default command that the environment does not replace. That of the C++
# compiler contains a path, which is not the same on all computers.
without_default_commands() {
    sed "/^shaderqx: WARNING: 'SLC_C[PC]*_COMMAND' environment variable/d"
}

# True for commands that configure, build or test the repository, and for its scripts. They are not run,
# but a script must exist and be executable.
works_on_the_tree() {
    case $1 in
        ./scripts/*.sh* | scripts/*.sh* | tests/*.sh* | bench/*.sh*) return 0 ;;
        'cmake --preset '* | 'cmake --build '* | 'ctest '*) return 0 ;;
    esac
    return 1
}

run_command() {
    local script=${1%% *}
    if works_on_the_tree "$1"; then
        case $script in
            *.sh) [ -x "$root/$script" ] || fail "no such script: $1" ;;
        esac
    else
        bash -c "set -o pipefail; $1" >output 2>&1 </dev/null || {
            fail "failed: $1"
            cat output
        }
    fi
}

# Checks that the command $1 prints the text $2.
run_shown_command() {
    bash -c "$1" >output 2>&1 </dev/null || true
    without_default_commands <output >shown
    printf '%s' "$2" | diff -u --label "$page" --label actual - shown || fail "other output: $1"
}

# Writes the shader $1 to a file with its name, and compiles it.
take_shader() {
    local name
    name=$(sed -nE 's/^(surface|displacement|light|volume|imager) (\w+)\(.*/\2/p' <<<"$1")
    printf '%s' "$1" >"$name.sl"
    run_command "build/release/bin/shaderqx $name.sl"
}

# Writes the text $1 to the file that its first line names, if it names one.
take_source() {
    local name
    name=$(sed -nE '1s,^(//|/\*) ([a-z_]+\.(c|cpp))( \*/)?$,\2,p' <<<"$1")
    [ -z "$name" ] || printf '%s' "$1" >"$name"
}

block=none
command=
source=
expected=
ran=0
finish_shown_command() {
    [ -z "$command" ] || run_shown_command "$command" "$expected"
    command=
    expected=
}
while IFS= read -r line <&3; do
    case $block:$line in
        none:'```console') block=console ;;
        none:'```sh') block=sh ;;
        none:'```sl' | none:'```c' | none:'```cpp')
            block=${line#'```'}
            source=
            ;;
        none:'```'?*) block=other ;;
        *:'```')
            finish_shown_command
            case $block in
                sl) take_shader "$source" ;;
                c | cpp) take_source "$source" ;;
            esac
            block=none
            ;;
        console:'$ '*)
            finish_shown_command
            command=${line#'$ '}
            ran=$((ran + 1))
            ;;
        console:*) expected+=$line$'\n' ;;
        sh:?*)
            run_command "$line"
            ran=$((ran + 1))
            ;;
        sl:* | c:* | cpp:*) source+=$line$'\n' ;;
    esac
done 3<"$root/$page"
[ "$ran" -gt 0 ] || fail "no command found"
[ "$failures" = 0 ]
