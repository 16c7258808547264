#!/usr/bin/env bash
# Lists all examples, one of them cut at every section and one as a shared object, as JSON, which
# must be what the schema tells; what one shader's object holds is compared in full.
# usage: run.sh BUILD_DIRECTORY PYTHON
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd)
python=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
unset SLC_CPP_COMMAND SLC_CC_COMMAND SLC_CC_INCLUDE
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
    "$python" "$here/check.py" <"$1" >names || fail "$1 is not as the schema tells"
}

# Preprocessing writes a temporary file next to the source, so do not use a tree that others read.
cp -r "$here/../../examples" .
for source in examples/*.sl; do
    compile "$source"
done
"$build/bin/sqxdump" --json ./*.sqx >examples.json || fail 'The examples are not listed'
check examples.json
[ "$(wc -l <names)" = "$(find . -name '*.sqx' | wc -l)" ] || fail 'Not one object for each example'

# Cut at every line of a file that has all sections.
printf '%s\n' 'surface told(float a = 1/0; varying color tint[2] = {color (0, 1, 1), noise(s)};' \
    '             output varying point p = point "world" (0, 0, 0); string text = "\"\\\n'$'\xFF\xC3\xA9\xC0\xAF\xE0\x80\x80\xED\xA0\x80\xF0\x80\x80\x80\xF4\x90\x80\x80''";)' \
    '{ p = P; Ci = diffuse(faceforward(N, I)) * tint[0] + tint[1] + a; P += N; printf(text); }' >told.sl
compile told.sl
lines=$(wc -l <told.sqx)
for ((line = 1; line < lines; ++line)); do
    head -n "$line" told.sqx >cut.sqx
    "$build/bin/sqxdump" --json cut.sqx >>cut.json 2>reports &&
        fail "Cut behind line $line the file passes for whole"
    grep -q 'line' reports || fail "Cut behind line $line no line is told"
done
check cut.json

cat >expected <<'JSON'
{"version":1,"file":"-","kind":"byte-code","name":null,"type":"surface","parameters":[
{"name":"a","class":"input","detail":"uniform","type":"float","arrayLength":null,"space":null,"output":false,"default":"inf","defaultIs":"known"},
{"name":"tint","class":"input","detail":"varying","type":"color","arrayLength":2,"space":"rgb","output":false,"default":null,"defaultIs":"perPoint"},
{"name":"p","class":"output","detail":"varying","type":"point","arrayLength":null,"space":"world","output":true,"default":[0,0,0],"defaultIs":"known"},
{"name":"text","class":"input","detail":"uniform","type":"string","arrayLength":null,"space":null,"output":false,"default":"\"\\\u000a�é����������������","defaultIs":"known"}],
"usesLights":true,"tracesRays":false,"modifiesP":true,"predefined":[
{"name":"Ci","read":false,"written":true},{"name":"Oi","read":false,"written":true},
{"name":"s","read":true,"written":false},{"name":"P","read":true,"written":true},
{"name":"N","read":true,"written":false},{"name":"I","read":true,"written":false},
{"name":"Ng","read":true,"written":false},{"name":"L","read":true,"written":false},
{"name":"Cl","read":true,"written":false}],"shadeopLibraries":[],"fault":null}
JSON
"$build/bin/sqxdump" --json - <told.sqx | diff <(tr -d '\n' <expected; echo) - || fail 'told.sqx is told otherwise'

# A shared object lists the same facts, except those that it does not contain.
mkdir object
compile --dso -d object told.sl
"$build/bin/sqxdump" --json object/told.sqx >object.json || fail 'The shared object is not listed'
"$build/bin/sqxdump" --json - <object/told.sqx >>object.json || fail 'A shared object cannot come from standard input'
check object.json
"$python" - <<'PYTHON' || fail 'The shared object tells something else'
import json
named, piped = map(json.loads, open("object.json", encoding="utf-8"))
assert named["name"] == "told" and piped["name"] is None
assert named["parameters"] == piped["parameters"]
whole = json.loads(open("expected", encoding="utf-8").read())
for object, code in zip(named["parameters"], whole["parameters"]):
    if code["defaultIs"] == "perPoint" or code["default"] == [0, 0, 0]:
        code["defaultIs"] = object["defaultIs"] = "zeroOrPerPoint"
        code["default"] = object["default"]
    assert object == code, object
assert {v["name"] for v in named["predefined"]} == {v["name"] for v in whole["predefined"]}
for fact in ("usesLights", "tracesRays", "modifiesP", "shadeopLibraries"):
    assert named[fact] == whole[fact], fact
PYTHON
[ "$failures" = 0 ]
