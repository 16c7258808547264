#!/usr/bin/env bash
# Prints a preprocessed shader of about $1 instructions at -O0: arithmetic, varying conditions with and
# without `else`, a uniform condition, conditional expressions, loops, one of them with `break`, and calls of
# two functions. Later statements read the results of each statement.
awk -v count="$1" 'BEGIN {
    print "# 1 \"mixed.sl\""
    print "float bent(float a, b)"
    print "{"
    print "    float c = a * b + 0.5, d = a - c;"
    print "    if (c > 0.25) { d += c * 0.5; c = d * a; }"
    print "    return mix(c, d, b) + sin(d);"
    print "}"
    print "void turned(vector v; float a; output vector w)"
    print "{"
    print "    vector across = v ^ vector(0, a, 1);"
    print "    w = normalize(across) * (a < 0.5 ? a : 1 - a);"
    print "}"
    print "surface mixed(float Kd = 0.5; color tint = color(0.2, 0.4, 0.8))"
    print "{"
    print "    float f0 = s, f1 = t, f2 = Kd;"
    print "    color c0 = Cs, c1 = tint;"
    print "    vector v0 = vector(N), v1 = I;"
    # Ten statements become about 310 instructions at -O0.
    for (i = 0; i < count / 31; ++i) {
        step = i % 10
        k = (i % 13) / 8
        if (step == 0) print "    f0 = f1 * f2 + " k " - v0 . v1;"
        else if (step == 1) print "    if (f0 > " k ") { c0 = mix(c0, c1, f0); f1 += 0.5; }"
        else if (step == 2) print "    v0 = v1 + f0 * v0 / 4;"
        else if (step == 3) print "    f1 = bent(f0, f2) * 0.5;"
        else if (step == 4) print "    if (f1 < f2 && f0 > 0) c1 = c0 * f1; else { c1 += tint; f2 = f1 * 0.5; }"
        else if (step == 5) print "    { float i; for (i = 0; i < 3; i += 1) { f2 = f2 * f1 + i; if (f2 > 1) break; } }"
        else if (step == 6) print "    turned(v0, f1, v1);"
        else if (step == 7) print "    { uniform float j; for (j = 0; j < 4; j += 1) c1 = c1 * 0.5 + c0 * j * Kd; }"
        else if (step == 8) print "    f2 = f0 > f1 ? f0 - f1 : f1 * 0.5;"
        else print "    if (Kd > " k ") f0 = clamp(f0 + f2, 0, 1); else c0 = c0 * tint;"
    }
    print "    Ci = c0 + c1 * f0;"
    print "    Oi = Os;"
    print "}"
}'
