"""Checks the output of `sqxdump --json` against the schema in docs/listing.md.

usage: check.py < LISTING        one object per line; prints the name of each shader
"""

import json
import sys

FLAG = (bool, type(None))
TEXT = (str, type(None))
NUMBER = (int, float, str)

SHADER = {
    "version": (int,), "file": (str,), "kind": (str,), "name": TEXT, "type": TEXT,
    "parameters": (list,), "usesLights": FLAG, "tracesRays": FLAG, "modifiesP": FLAG,
    "predefined": (list,), "shadeopLibraries": (list, type(None)), "fault": (dict, type(None)),
}
PARAMETER = {
    "name": (str,), "class": TEXT, "detail": (str,), "type": (str,), "arrayLength": (int, type(None)),
    "space": TEXT, "output": FLAG, "default": (list, int, float, str, type(None)), "defaultIs": (str,),
}
PREDEFINED = {"name": (str,), "read": FLAG, "written": FLAG}
FAULT = {"line": (int,), "message": (str,)}
WIDTHS = {"float": 1, "string": 1, "color": 3, "point": 3, "vector": 3, "normal": 3, "matrix": 16}


def check_members(thing, schema):
    assert list(thing) == list(schema), list(thing)
    for name, types in schema.items():
        assert isinstance(thing[name], types), (name, thing[name])


def check_element(element, kind):
    if WIDTHS[kind] == 1:
        assert isinstance(element, str if kind == "string" else NUMBER), element
    else:
        assert len(element) == WIDTHS[kind] and all(isinstance(n, NUMBER) for n in element), element


def check_parameter(parameter):
    check_members(parameter, PARAMETER)
    assert parameter["class"] == {True: "output", False: "input", None: None}[parameter["output"]]
    assert parameter["detail"] in ("uniform", "varying")
    value, length = parameter["default"], parameter["arrayLength"]
    assert (value is not None) == (parameter["defaultIs"] in ("known", "zeroOrPerPoint"))
    if value is None:
        assert parameter["defaultIs"] in ("perPoint", "unknown")
    elif length is None:
        check_element(value, parameter["type"])
    else:
        assert len(value) == length
        for element in value:
            check_element(element, parameter["type"])


def check_shader(shader):
    check_members(shader, SHADER)
    assert shader["version"] == 1 and shader["kind"] in ("byte-code", "shared object")
    assert shader["type"] in ("surface", "light", "displacement", "volume", "imager", None)
    for parameter in shader["parameters"]:
        check_parameter(parameter)
    for variable in shader["predefined"]:
        check_members(variable, PREDEFINED)
    if shader["fault"]:
        check_members(shader["fault"], FAULT)


for line in sys.stdin.buffer:
    parsed = json.loads(line.decode("utf-8"))
    check_shader(parsed)
    print(parsed["name"])
