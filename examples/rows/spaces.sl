/*
 * Transforms from one space to another: by constant names, by names in a parameter, and by
 * matrices; for points, vectors and normals.
 */
#include "card.h"

surface spaces(string to = "world"; output varying point shown = 0)
{
    matrix frame = matrix "object" 1;

    CARD(19);
    SHOW(transform("shader", P));
    SHOW(transform("camera", "world", P));
    SHOW(transform(to, P));
    SHOW(transform(to, "shader", P));
    SHOW(transform(frame, P));
    SHOW(transform("shader", frame, P));
    SHOW(transform("current", "current", P));
    SHOW(point vtransform("shader", I));
    SHOW(point vtransform("camera", to, I));
    SHOW(point vtransform(frame, I));
    SHOW(point vtransform("shader", frame, I));
    SHOW(point ntransform("shader", N));
    SHOW(point ntransform("camera", "world", N));
    SHOW(point ntransform(frame, N));
    SHOW(point ntransform("shader", frame, N));
    SHOW(point "object" (1, 2, 3));
    SHOW(point vector "object" (1, t, 3));
    SHOW(point normal "object" (1, 2, 3));
    SHOW(transform("world", point "world" (t, 2, 3)));

    Oi = 1;
    Ci = color shown;
}
