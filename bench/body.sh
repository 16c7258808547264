#!/usr/bin/env bash
# Prints a preprocessed shader of about $1 lines, which alternate between varying conditions and
# varying loops, all in one body. No statement is dead, since later ones read its result.
awk -v count="$1" 'BEGIN {
    print "# 1 \"body.sl\""
    print "surface body(float Kd = 0.5)"
    print "{"
    print "    float f0 = s, f1 = t, f2 = Kd, i;"
    print "    color c0 = Cs;"
    for (line = 8; line + 5 <= count; line += 5) {
        k = (line % 13) / 8
        if (line % 2) {
            print "    if (f0 > " k ") {"
            print "        f1 = f1 * f2 + " k ";"
            print "        c0 *= f1;"
            print "    } else"
            print "        f2 = f0 * 0.5;"
        } else {
            print "    for (i = 0; i < f1; i += 1) {"
            print "        f0 = f0 * 0.5 + i;"
            print "        f2 = f2 - f0 * " k ";"
            print "        c0 += f2;"
            print "    }"
        }
    }
    print "    Ci = c0 * f2;"
    print "    Oi = Os;"
    print "}"
}'
