#!/usr/bin/env bash
# sqxdump lists examples and truncated files as JSON, which must follow the schema. The JSON of a shared
# object must equal that of the byte-code of the same shader. The test also checks which values --params
# shows, and that sqxdump loads shared objects and shadeop libraries only with --load.
# usage: run.sh BUILD_DIRECTORY PYTHON
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
python=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_PROCESSOR SLC_CC_INCLUDE
export SLC_CC_OPTIONS=-O0
cd "$scratch"

failures=0
fail() {
    echo "$*"
    failures=$((failures + 1))
}
compile() {
    "$build/bin/shaderqx" "$@" >messages 2>&1 || { cat messages; exit 1; }
}
check() {
    "$python" "$here/check.py" <"$1" >names || fail "$1 does not follow the schema"
}

examples=$here/../../examples
for source in "$examples"/*.sl; do
    compile "$source"
done
"$build/bin/sqxdump" --json ./*.sqx >examples.json || fail 'The examples are not listed'
check examples.json
[ "$(wc -l <names)" = "$(find . -name '*.sqx' | wc -l)" ] || fail 'Not one object for each example'

# A byte-code file with all sections, truncated after each line.
printf '%s\n' 'surface whole(float a = 1/0; varying color tint[2] = {color (0, 1, 1), noise(s)};' \
    '             output varying point p = point "world" (0, 0, 0); string text = "\"\\\n'$'\xFF\xC3\xA9\xC0\xAF\xE0\x80\x80\xED\xA0\x80\xF0\x80\x80\x80\xF4\x90\x80\x80''";)' \
    '{ p = P; Ci = diffuse(faceforward(N, I)) * tint[0] + tint[1] + a; P += N; printf(text); }' >whole.sl
compile whole.sl
lines=$(wc -l <whole.sqx)
for ((line = 1; line < lines; ++line)); do
    head -n "$line" whole.sqx >cut.sqx
    "$build/bin/sqxdump" --json cut.sqx >>cut.json 2>reports &&
        fail "Cut after line $line the file is taken for a whole one"
    grep -q 'line' reports || fail "Cut after line $line no line is named"
done
check cut.json

cat >expected <<'JSON'
{"version":1,"file":"-","kind":"byte-code","name":null,"type":"surface","parameters":[
{"name":"a","class":"input","detail":"uniform","type":"float","arrayLength":null,"space":null,"output":false,"default":"inf","defaultIs":"known"},
{"name":"tint","class":"input","detail":"varying","type":"color","arrayLength":2,"space":"rgb","output":false,"default":null,"defaultIs":"perPoint"},
{"name":"p","class":"output","detail":"varying","type":"point","arrayLength":null,"space":"world","output":true,"default":[0,0,0],"defaultIs":"known"},
{"name":"text","class":"input","detail":"uniform","type":"string","arrayLength":null,"space":null,"output":false,"default":"\"\\\n�é����������������","defaultIs":"known"}],
"usesLights":true,"tracesRays":false,"modifiesP":true,"predefined":[
{"name":"Ci","read":false,"written":true},{"name":"Oi","read":false,"written":true},
{"name":"s","read":true,"written":false},{"name":"P","read":true,"written":true},
{"name":"N","read":true,"written":false},{"name":"I","read":true,"written":false},
{"name":"Ng","read":true,"written":false},{"name":"L","read":true,"written":false},
{"name":"Cl","read":true,"written":false}],"shadeopLibraries":[],"fault":null}
JSON
"$build/bin/sqxdump" --json - <whole.sqx | diff <(tr -d '\n' <expected; echo) - || fail 'whole.sqx is listed differently'

# A shared object contains the same facts about the shader as data, which are read without loading it.
mkdir object
compile --dso -d object whole.sl
as_object() {
    sed -e 's/"kind":"byte-code"/"kind":"shared object"/' -e "s/\"file\":\"-\"/\"file\":\"$1\"/" expected | tr -d '\n'
    echo
}
"$build/bin/sqxdump" --json - <object/whole.sqx | diff <(as_object -) - || fail 'The shared object is listed differently'

# So does the shared object of each example. Only this data is compiled, to save time.
facts_alone() {
    sed -n '/QxShaderFacts\[\] __/,$p' "$1" | c++ -x c++ -shared -fPIC -o "$2" -
}
mkdir code objects
for source in "$examples"/*.sl "$examples"/rows/*.sl; do
    name=$(basename "$source" .sl)
    compile -O0 -d code "$source"
    compile -O0 --dso -c "$source"
    facts_alone "$name.cpp" "objects/$name.sqx"
done
(cd code && "$build/bin/sqxdump" --json ./*.sqx) | sed 's/"kind":"byte-code"/"kind":"shared object"/' >code.json
(cd objects && "$build/bin/sqxdump" --json ./*.sqx) >objects.json || fail 'The shared objects are not listed'
diff code.json objects.json || fail 'Shared objects are listed differently from byte-code'

# The facts are made from byte-code, so a default value that only C++ can compute is unknown.
printf '%s\n' "surface wide(float a = pack(0.1, 0.2, 0.3, 0.4); float b = 2; varying float c = b + noise(s)) { Ci = a * b * c; Oi = 1; }" >wide.sl
compile --dso -c wide.sl
facts_alone wide.cpp wide.sqx
"$build/bin/sqxdump" --params wide.sqx | diff - <(cat <<'TEXT'
surface wide

  Parameter  Class  Detail   Type   Space  Default
  a          input  uniform  float         ?
  b          input  uniform  float         2
  c          input  varying  float         depends on the shading point

  uses lights        no
  traces rays        no
  modifies P         no
  reads              s
  writes             Ci Oi
  shadeop libraries  none
TEXT
) || fail 'wide.sqx is listed differently'

# Shared objects without these facts, such as those of an older compiler, are loaded only with --load.
printf '%s\n' '#include <cstdio>' 'struct Mark { Mark() { std::fclose(std::fopen("loaded", "w")); } } mark;' >mark.cpp
{ cat mark.cpp; sed '/QxShaderFacts\[\] __/,$d' whole.cpp; } >older.cpp
compile_object() {
    # shellcheck disable=SC2086
    c++ -std=c++20 -O0 -w -I"$here/../../runtime/shading" -shared -fPIC -o "$2" "$1"
}
compile_object mark.cpp mark.sqx
compile_object older.cpp older.sqx
for file in mark.sqx older.sqx; do
    "$build/bin/sqxdump" --params -I . "$file" >listing 2>reports && fail "$file is listed"
    grep -q -- "$file: This shared object does not say what it holds; '--load' loads it" reports ||
        { cat reports; fail "$file is refused otherwise"; }
done
[ ! -e loaded ] || fail 'A shared object was loaded'
"$build/bin/sqxdump" --params --load older.sqx >listing || fail 'An older shared object is not loaded'
[ -e loaded ] && grep -q 'or depends on the shading point' listing || fail 'An older shared object is listed differently'

# The library of a shadeop in a default value is loaded only with --load, too.
printf '%s\n' '#include <stdio.h>' '#include "QxShadeop.h"' \
    '__attribute__((constructor)) static void Mark(void) { fclose(fopen("called", "w")); }' \
    'QX_SHADEOP_TABLE(three) = {{"float three(float)", "", ""}, QX_SHADEOP_END};' \
    'QX_SHADEOP_EXPORT void three(void* data, int argc, void** argv) { *(float*)argv[0] = 3; }' >three.c
cc -w -I"$here/../../runtime/shading" -shared -fPIC -o three.so three.c
printf '%s\n' 'surface calls(float a = three(1); float b = 2) { Ci = a * b; Oi = 1; }' >calls.sl
compile -I. calls.sl
"$build/bin/sqxdump" --params -I . calls.sqx >listing 2>reports && fail 'The value of a shadeop is known'
[ ! -e called ] || fail 'The library of a shadeop was loaded'
grep -q "'--load' loads its library" reports || { cat reports; fail 'calls.sqx is refused otherwise'; }
grep -q 'b .* 2$' listing || fail 'The other value of calls.sqx is not known'
"$build/bin/sqxdump" --params --load -I . calls.sqx >listing || fail 'The library of a shadeop is not loaded'
grep -q 'a .* 3$' listing || fail 'The value of a shadeop is listed in another way'

# Truncated and changed shared objects are reported and do not crash sqxdump.
"$python" - <<'PYTHON'
data = open("wide.sqx", "rb").read()
for part in range(96):
    open(f"hostile.cut{part}.sqx", "wb").write(data[:max(4, len(data) * part // 96)])
start = data.index(b"1\n0\n0\n")
for place in range(start, data.index(b"\0", start) + 1):
    if data[place] not in b"\n ":
        for byte in (b"9", b"\0"):
            open(f"hostile.byte{place}{byte[0]}.sqx", "wb").write(data[:place] + byte + data[place + 1:])
PYTHON
status=0
timeout 120 "$build/bin/sqxdump" --params ./hostile.*.sqx >listing 2>reports || status=$?
[ "$status" = 1 ] || fail "Hostile files end with status $status"
grep -q 'hostile.cut9.sqx: It is no library of this machine, or cut short' reports || fail 'A file that is cut short is not refused'
grep -q 'hostile.byte.*: line 1, facts: Version 9 is not known' reports || fail 'An unknown version is not refused'
[ "$failures" = 0 ]
