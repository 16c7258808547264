#!/usr/bin/env bash
# Compiles folders of shaders with sqxmake, and checks after each change which shaders are recompiled and
# what sqxmake prints.
# usage: run.sh PROGRAM_DIRECTORY
set -euo pipefail
bin=$(cd "$1" && pwd)
headers=$(cd "$(dirname "$0")/../../runtime/shading" && pwd)
examples=$(cd "$(dirname "$0")/../../examples" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_OPTIONS SLC_CC_PROCESSOR SLC_CC_INCLUDE NINJA
cd "$scratch"
library='my shaders'
output='com piled'

failures=0
fail() {
    echo "$*"
    cat messages
    failures=$((failures + 1))
}

# usage: make_is STATUS ARGUMENT...    runs sqxmake, which must end with STATUS
make_is() {
    local expected=$1 status=0
    shift
    "$bin/sqxmake" -o "$output" "$@" >messages 2>&1 || status=$?
    [ "$status" = "$expected" ] || fail "sqxmake $*: exit status $status, not $expected"
}

says() {
    grep -qF -- "$1" messages || fail "Not said: $1"
}

# Stores the times of all stamps, the files that sqxmake writes after each successful compile.
# `compiled_are` checks which shaders were compiled successfully since then, and calls `remember` again.
remember() {
    rm -rf seen
    mkdir seen
    for stamp in "$output"/.sqxmake/stamps/*-????????????????; do
        touch -r "$stamp" "seen/$(sed -n 2p "$stamp")"
    done
}
compiled_are() {
    local again=()
    for stamp in "$output"/.sqxmake/stamps/*-????????????????; do
        local name
        name=$(sed -n 2p "$stamp")
        [ -e "seen/$name" ] && [ ! "$stamp" -nt "seen/$name" ] || again+=("${name%.sqx}")
    done
    [ "${again[*]:-}" = "$1" ] || fail "Compiled again: '${again[*]:-}', not '$1'"
    remember
}

mkdir -p "$library/more" 'inc luded'
echo '#define WEIGHT 2' >'inc luded/weight.h'
for i in $(seq 10 58); do
    echo "surface plain$i() { Ci = $i * Cs; }" >"$library/plain$i.sl"
done
for name in 'first user' second_user; do
    printf '#include "weight.h"\nsurface %s() { Ci = WEIGHT * Cs; }\n' "${name// /_}" >"$library/more/$name.sl"
done
include=-Iinc\ luded

make_is 0 "$include" "$library"
says '51 compiled, 0 up to date'
[ "$(find "$output" -maxdepth 1 -name '*.sqx' | wc -l)" = 51 ] || fail 'Not all 51 shaders are there'
[ -z "$(find "$library" -name '*.i' -o -name '*.sqx')" ] || fail 'Something was left beside the sources'
remember

make_is 0 "$include" "$library"
compiled_are ''
[ "$(cat messages)" = '0 compiled, 51 up to date' ] || fail 'More or less was said'

sleep 0.01
touch 'inc luded/weight.h'
before=$(stat -c %y "$output/first_user.sqx")
make_is 0 "$include" "$library"
compiled_are 'first_user second_user'
[ "$(stat -c %y "$output/first_user.sqx")" = "$before" ] || fail 'An output that is as before got another time'

touch "$library/plain20.sl"
rm "$output/plain30.sqx"
make_is 0 "$include" "$library"
compiled_are 'plain20 plain30'

# With -k, the one source with an error is named and leaves no output, and the other changed source is
# compiled.
echo 'surface plain40() { Ci = noSuchName; }' >"$library/plain40.sl"
touch "$library/plain41.sl"
make_is 1 -k "$include" "$library"
says "$library/plain40.sl:1: ERROR"
says "Compilation of $library/plain40.sl aborted due to errors: 1 errors, 0 warnings."
says 'sqxmake: 1 compiled, 49 up to date, 1 refused:'
! grep -qE 'ninja|FAILED|--step' messages || fail 'Words of ninja are shown'
[ ! -e "$output/plain40.sqx" ] || fail 'The refused shader left an output'
compiled_are plain41
# While the file is unchanged, its reports are not repeated.
make_is 1 "$include" "$library"
[ "$(cat messages)" = "sqxmake: 0 compiled, 50 up to date, 1 refused:
  $library/plain40.sl (as before)" ] || fail 'A refusal is repeated'
touch "$library/plain40.sl"
make_is 1 -k "$include" "$library"
says "$library/plain40.sl:1: ERROR"
echo 'surface plain40() { Ci = 1; }' >"$library/plain40.sl"
make_is 0 "$include" "$library"
compiled_are plain40

# A refused source ends the build. If the header of a later source has changed too, the next build
# compiles that source.
echo '#define PART 1' >part.h
echo 'surface first() { Ci = 1; }' >first.sl
printf '#include "part.h"\nsurface second() { Ci = PART; }\n' >second.sl
make_is 0 -j1 first.sl second.sl
echo '#define PART 2' >part.h
echo 'surface first() { Ci = none; }' >first.sl
make_is 1 -j1 first.sl second.sl
says 'sqxmake: 0 compiled, 0 up to date, 1 not tried, 1 refused:'
echo 'surface first() { Ci = 1; }' >first.sl
make_is 0 -j1 first.sl second.sl
compiled_are 'first second'

make_is 0 -O0 "$include" "$library/plain10.sl" "$library/plain11.sl"
compiled_are 'plain10 plain11'
rm "$library/plain58.sl"
make_is 0 -O0 "$include" "$library/plain10.sl"
[ ! -e "$output/plain58.sqx" ] || fail 'The output of a source that is gone is still there'

# Advice does not need -w2, and each uninitialized variable is reported once.
echo 'surface advised() { int i = 0; Ci = i; }' >advised.sl
make_is 1 -w0 advised.sl
says "ADVICE: unexpected 'i': the language has no 'int'"
echo 'surface unset() { float a, b; if (s > 0.5) { a = 1; b = 1; } Ci = a + a + b + a + b; }' >unset.sl
make_is 0 -w2 unset.sl
says "Variable 'a' may not be initialized (and 2 times after this)"
says "Variable 'b' may not be initialized (and 1 time after this)"
[ "$(grep -c WARNING: messages)" = 2 ] || fail 'A variable is reported more than once'

# A user's preprocess command writes no dependencies; they are read from the line markers in its output.
# shellcheck disable=SC2016  # the variables are the command's
export SLC_CPP_COMMAND='cc -E -x c $cpp_options "$input_file" > "$cpp_result"'
make_is 0 -I"$scratch" "$library/plain10.sl"
printf '#include "weight.h"\nsurface own() { Ci = WEIGHT; }\n' >own.sl
cp 'inc luded/weight.h' weight.h
make_is 0 own.sl
remember
sleep 0.01
touch weight.h
make_is 0 own.sl
compiled_are own

# Ninja starts each step as one process, without a shell that waits for it.
if [ -r /proc/self/status ]; then
    export SLC_CPP_COMMAND='sed -n "s/^PPid:[[:space:]]*//p" /proc/$PPID/status >parent
        cat "/proc/$(cat parent)/comm" >waiting; cat "$input_file" >"$cpp_result"'
    make_is 0 "$library/plain11.sl"
    grep -q ninja waiting || fail "'$(cat waiting)' waits for a step"
fi
unset SLC_CPP_COMMAND

# A shader is recompiled if a new header is found before the included one, beside the including file or in
# a folder that is searched earlier. Other new headers do not matter.
mkdir -p front 'far off/deep'
echo '#include <deep/tone.h>' >'far off/tones.h'
echo '#define TONE 2' >'far off/deep/tone.h'
echo '#define TONE 2' >'far off/shade.h'
printf '#include "tones.h"\nsurface toned() { Ci = TONE; }\n' >toned.sl
printf '#include <shade.h>\nsurface shaded() { Ci = TONE; }\n' >shaded.sl
make_front() {
    make_is 0 -I. -Ifront '-Ifar off' toned.sl shaded.sl
}
make_front
remember
touch front/other.h tone.h
make_front
compiled_are ''
cp "$output/toned.sqx" toned.before
mkdir deep
echo '#define TONE 3' >deep/tone.h
make_front
compiled_are toned
! cmp -s "$output/toned.sqx" toned.before || fail 'A header in front was not taken'
cp 'far off/tones.h' front/tones.h
make_front
compiled_are toned
echo '#define TONE oops' >front/shade.h
make_is 1 -k -I. -Ifront '-Ifar off' toned.sl shaded.sl
[ ! -e "$output/shaded.sqx" ] || fail 'With a bad header in front a shader kept its output'

# A shadeop library whose function a shader calls, here in a default value, counts as one of its sources.
# Other libraries in the folder do not.
mkdir 'shade ops'
make_library() {
    echo "#include <QxShadeop.h>
QX_SHADEOP_TABLE($1) = {{\"float $1(float)\", \"\", \"\"}, $2 QX_SHADEOP_END};
QX_SHADEOP_EXPORT void $1(void* data, int argc, void** argv) { *(float*)argv[0] = *(float*)argv[1]; }" |
        cc -shared -fPIC -I"$headers" -x c - -o "shade ops/$1.so"
}
make_library twist ''
make_library other ''
echo 'surface twisted(float a = twist(1);) { Ci = a; }' >twisted.sl
echo 'surface untwisted() { Ci = 1; }' >untwisted.sl
make_is 0 '-Ishade ops' twisted.sl untwisted.sl
remember
make_is 0 '-Ishade ops' twisted.sl untwisted.sl
compiled_are ''
sleep 0.01
make_library other ''
make_is 0 '-Ishade ops' twisted.sl untwisted.sl
compiled_are ''
make_library twist '{"float twist(string)", "", ""},'
make_is 0 '-Ishade ops' twisted.sl untwisted.sl
compiled_are twisted
# The shader is also recompiled if a new library is searched before this one, because of its folder or its
# name.
mkdir first
mv 'shade ops' later
make_is 0 -Ifirst -Ilater twisted.sl untwisted.sl
remember
cp later/twist.so first/own.so
make_is 0 -Ifirst -Ilater twisted.sl untwisted.sl
compiled_are twisted
cp later/twist.so first/also.so
make_is 0 -Ifirst -Ilater twisted.sl untwisted.sl
compiled_are twisted
cp later/twist.so later/more.so
make_is 0 -Ifirst -Ilater twisted.sl untwisted.sl
compiled_are ''
mv later 'shade ops'
make_is 0 '-Ishade ops' twisted.sl untwisted.sl
remember
rm 'shade ops/twist.so' 'shade ops/more.so'
make_is 1 '-Ishade ops' twisted.sl untwisted.sl
says 'Undefined function'
[ ! -e "$output/twisted.sqx" ] || fail 'Without its library a shader kept its output'

# Headers and sources whose names must be escaped for ninja, or which ninja cannot read in a dependency
# file at all. A change of a header is noticed, and only its shader is compiled.
mkdir odd
odd_names=('a b' 'a#b' 'a$b' 'a:b' 'a%b' 'a\b' 'a\ b' 'a\#b' 'a\' "a'b" 'a*b' 'a;b' 'a|b' 'a&b' $'a\tb')
for i in "${!odd_names[@]}"; do
    echo '#define ODD 1' >"odd/${odd_names[i]}.h"
    printf '#include <%s.h>\nsurface odd%s() { Ci = ODD; }\n' "${odd_names[i]}" "$i" >"odd/${odd_names[i]}.sl"
done
make_is 0 -Iodd odd
make_is 0 -Iodd odd
says "0 compiled, ${#odd_names[@]} up to date"
for name in "${odd_names[@]}"; do
    sleep 0.01
    touch "odd/$name.h"
    make_is 0 -Iodd odd
    says "1 compiled, $((${#odd_names[@]} - 1)) up to date"
done
sed -i 's/surface odd/surface other/' "odd/a'b.sl"
make_is 0 -Iodd odd
sleep 0.01
touch "odd/a'b.h"
make_is 0 -Iodd odd
says '1 compiled'

# Rules for make: `make -q` fails if a header is newer than the target.
if command -v make >/dev/null; then
    rm odd/*[\;\|\*]*  # make has no escape for these characters
    for header in odd/*.h; do
        echo "#include <${header#odd/}>"
    done >every.sl
    target='a %:#$ \b'
    "$bin/sqxcpp" -M -MF rule -MQ "$target" -Iodd every.sl
    printf '\t:\n' >>rule
    touch "$target"
    make -q -f rule "$target" 2>messages || fail 'make reads another rule'
    for header in odd/*.h; do
        sleep 0.01
        touch "$header"
        ! make -q -f rule "$target" 2>messages || fail "make does not see $header"
        touch -d '1 hour ago' "$header"
    done
fi

# The dependency file of a single step, as another build reads it.
printf 'rule compile\n command = exec "%s" --state state -o . -Iodd --step $out $in\n depfile = $out.d\nbuild %s: compile step.sl\n' \
    "$bin/sqxmake" 'step$ a$:b' >build.ninja
printf '#include <a b.h>\n#include <a:b.h>\nsurface step() { Ci = ODD; }\n' >step.sl
ninja >messages
for header in 'a b' 'a:b'; do
    ninja | grep -q 'no work' || fail 'A step is not up to date'
    sleep 0.01
    touch "odd/$header.h"
    ! ninja -n | grep -q 'no work' || fail "A step does not depend on '$header'"
    ninja >messages
done

# Options reach the compiler unchanged.
mkdir "it's \$1"
echo '#define SEEN TEXT' >"it's \$1/seen.h"
odd_options=("-Iit's \$1" $'-DTEXT="\\"it\'s $HOME `x`\t\\\\ %"\n\n$n\r\n' -DEMPTY= $'-I\n')
printf '#include <seen.h>\nsurface seen() { printf(SEEN); }\n' >seen.sl
make_is 0 "${odd_options[@]}" seen.sl
# shellcheck disable=SC2016
grep -qaF -- "\"it's \$HOME \`x\`" "$output/seen.sqx" || fail 'A macro has another value'
make_is 0 "${odd_options[@]}" seen.sl
says '0 compiled, 1 up to date'
export SLC_CPP_COMMAND=$'eval "set -- $cpp_arguments"; printf "%s\\0" "$@" >arguments; echo "surface seen() { }" >"$cpp_result"\n: \r'
make_is 0 "${odd_options[@]}" seen.sl
printf '%s\0' "${odd_options[@]}" | cmp - arguments || fail 'The options are not those of the command'
unset SLC_CPP_COMMAND

# Folders of examples need only the options that their page names.
make_is 0 "$examples/rows"
make_is 0 --dso "$examples/dso"

# Two sources with one output are refused, unless --tree gives the outputs different folders.
mkdir -p tree/deep
echo '#define UNUSED surface plain99(
/* surface other( */ surface oak() { Ci = "}"; }' >tree/deep/double.sl
echo 'surface oak() { Ci = 2; }' >tree/double.sl
echo 'surface single() { Ci = 2; }' >tree/single.sl
make_is 1 tree
says "sqxmake: 2 sources make 'oak.sqx':"
says 'Nothing was built'
[ ! -e "$output/single.sqx" ] || fail 'Something was built though names are in conflict'
make_is 1 -k tree
says 'sqxmake: 1 compiled, 0 up to date, 2 left out'
sed -i 's/"}"/1/' tree/deep/double.sl
make_is 0 --tree tree
says '3 compiled, 0 up to date'
[ -s "$output/deep/oak.sqx" ] && [ -s "$output/oak.sqx" ] || fail 'The tree is not mirrored'
make_is 0 --tree tree
says '0 compiled, 3 up to date'
# A named file is mirrored with its folder below the working directory, however it is named.
mkdir -p ..tree
echo 'surface dotted() { Ci = 2; }' >..tree/dotted.sl
make_is 0 --tree ..tree/dotted.sl "$PWD/tree/single.sl" tree/deep/../single.sl
says '2 compiled, 0 up to date'
[ -s "$output/..tree/dotted.sqx" ] && [ -s "$output/tree/single.sqx" ] || fail 'A named file is not mirrored'
# If the preprocessor makes the name, the conflict is found after compiling.
echo '#define MY_NAME hidden
surface MY_NAME() { Ci = 1; }' >hidden1.sl
cp hidden1.sl hidden2.sl
make_is 1 -k hidden1.sl hidden2.sl
says "both make 'hidden.sqx'"
# A step of another build claims the output of a source that is gone, just before it would be removed.
echo 'surface claimed() { Ci = 1; }' >claimed.sl
make_is 0 claimed.sl own.sl
rm claimed.sl
exec {lock}>"$output/.sqxmake/owners.lock"
flock "$lock"
"$bin/sqxmake" -o "$output" own.sl >messages 2>&1 {lock}>&- &
sleep 0.5
printf '%s' "$PWD/own.sl" >"$output/.sqxmake/owners/claimed.sqx"
exec {lock}>&-
wait $! || fail 'sqxmake failed'
[ -e "$output/claimed.sqx" ] || fail 'An output that was claimed meanwhile is gone'
printf '#include "cycle.h"\n' >cycle.h
printf '#include "cycle.h"\nsurface cyclic() { Ci = 1; }\n' >cyclic.sl
make_is 1 cyclic.sl
says 'Problem during preprocessing.'
[ "$(wc -l <messages)" -lt 15 ] || fail 'The report of a cycle of includes is too long'
mkdir empty
make_is 1 empty
says "There are no shaders in 'empty'"
make_is 1 nowhere.sl
says "There is no file or folder 'nowhere.sl'"
NINJA=./no-ninja make_is 1 own.sl
says 'install ninja'
make_is 2 -E own.sl
says "Unknown option '-E'"
make_is 2
output=/proc/nothing make_is 1 own.sl
says "cannot be made"
[ "$failures" = 0 ]
