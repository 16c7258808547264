#!/usr/bin/env bash
# Prints a preprocessed shader that repeats one form of code $2 times; $1 is one of
#   nested       nested conditions
#   consecutive  conditions one after the other
#   else-if      a chain of `else if`
#   choice       nested choices of a value (`? :`)
#   and          a chain of `&&`
#   calls        calls of a short function with a condition
#   unused       a sum, with a condition after each addition; the sum is not used
#   switch       conditions under a constant condition that is false
#   doubling     functions that each call the previous one twice; the first is called $2 times, rounded up to
#                a power of two
#   together     variables that are all live at the same time
#   loops        nested uniform loops
#   dead-loop    a chain of assignments across iterations of a loop; the result is not used
#   dead-if      a chain of assignments under conditions; the result is not used
#   inverted     the chain of dead-if in reverse order, in a loop
# All conditions are varying, except those of loops and those in `switch`.
awk -v shape="$1" -v count="$2" 'BEGIN {
    print "# 1 \"shapes.sl\""
    if (shape == "calls") {
        print "float shaped(float a, b)"
        print "{"
        print "    float c = a + b;"
        print "    float d = c * a;"
        print "    if (c > 0.5) {"
        print "        d += 1;"
        print "        c *= 2;"
        print "    }"
        print "    d = mix(c, d, 0.3);"
        print "    return sin(d) + c;"
        print "}"
    }
    if (shape == "doubling") {
        for (links = 1; 2 ^ links < count; ++links);
        print "float f0(float a) { return a + 1; }"
        for (i = 1; i <= links; ++i)
            print "float f" i "(float a) { return f" (i - 1) "(a) + f" (i - 1) "(a * 2); }"
    }
    print "surface shapes(float Kd = 0.5)"
    print "{"
    print "    float x = s, y = t, z = u;"
    print "    uniform float off = 0;"
    if (shape == "switch") print "    if (off == 1) {"
    if (shape == "doubling") print "    y = f" links "(x);"
    if (shape == "loops") for (i = 0; i < count; ++i) print "    uniform float i" i ";"
    if (shape == "together" || shape ~ /^dead|^inverted/)
        for (i = 0; i <= count; ++i) print "    float d" i " = s * " i ";"
    if (shape == "dead-loop" || shape == "inverted")
        print "    uniform float turn; for (turn = 0; turn < 3; turn += 1) {"
    for (i = 0; i < count; ++i) {
        if (shape == "nested") print "    if (x > " i "/" count ") { y = y + z * " i ";"
        else if (shape == "consecutive") print "    if (x > " i "/" count ") { y = y + z * " i "; }"
        else if (shape == "else-if") print "    " (i ? "else " : "") "if (x > " i "/" count ") y = z * " i ";"
        else if (shape == "choice") print (i ? "" : "    x = ") "(x > " i "/" count " ? y + " i " :"
        else if (shape == "and") print (i ? "    && " : "    if (") "x > " i "/" count
        else if (shape == "calls") print "    y = shaped(x, y);"
        else if (shape == "unused") print "    z += x * " i "; if (x > " i "/" count ") x = x * 0.5;"
        else if (shape == "switch") print "    if (Kd > " i "/" count ") x = x * 0.5; else x = x + 1;"
    }
    for (i = 0; i < count; ++i) {
        if (shape == "together") print "    y = y * s + d" i ";"
        else if (shape == "loops") print "    for (i" i " = 0; i" i " < 2; i" i " += 1)"
        else if (shape == "dead-loop") print "    d" i " = d" (i + 1) " + 1;"
        else if (shape == "dead-if") print "    if (x > " i "/" count ") d" (i + 1) " = d" i " + 1;"
        else if (shape == "inverted") print "    if (x > " i "/" count ") d" (count - i - 1) " = d" (count - i) " + 1;"
    }
    if (shape == "loops") print "    x += 1;"
    if (shape == "dead-loop" || shape == "inverted") print "    }"
    if (shape == "nested") while (i-- > 0) print "    }"
    if (shape == "choice") { print "z"; while (i-- > 0) printf ")"; print ";" }
    if (shape == "and") print "    ) y = z;"
    if (shape == "switch") print "    }"
    print "    Ci = x * Cs;"
    print "    Oi = y;"
    print "}"
}'
