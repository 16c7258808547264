#!/usr/bin/env bash
# Prints a preprocessed shader of $1 straight-line statements of mixed types and operations. No statement
# is dead, since later ones read its result.
awk -v count="$1" 'BEGIN {
    print "# 1 \"straight_line.sl\""
    print "surface straight_line(float Kd = 0.5; color tint = color(0.2, 0.4, 0.8))"
    print "{"
    print "    float f0 = s, f1 = t, f2 = Kd;"
    print "    color c0 = Cs, c1 = tint;"
    print "    vector v0 = vector(N), v1 = I;"
    for (i = 5; i < count; ++i) {
        step = i % 7
        if (step == 0) print "    f0 = f1 * f2 + " (i % 13) / 8 ";"
        else if (step == 1) print "    c0 = mix(c0, c1, f0) * 0.5;"
        else if (step == 2) print "    v0 = v1 + f0 * v0;"
        else if (step == 3) print "    f1 = v0 . v1 - f2;"
        else if (step == 4) print "    c1 += c0 * f1;"
        else if (step == 5) print "    f2 = sin(f0) / (1 + f1 * f1);"
        else print "    v1 = normalize(v0) * f1;"
    }
    print "    Ci = c0 + c1 * f0;"
    print "    Oi = Os;"
    print "}"
}'
