/* Splines through numbers, colors and points, listed or in an array, of any basis. */
#include "card.h"

surface splines(uniform float numbers[5] = {0, 1, 3, 2, 0};
                color tints[4] = {color(1, 0, 0), color(1, 0, 0), color(0, 0, 1), color(0, 1, 0)};
                point path[5] = {point(0, 0, 0), point(1, 0, 0), point(1, 2, 0), point(0, 2, 4),
                                 point(0, 0, 4)};
                string basis = "bspline"; output varying color shown = 0)
{
    CARD(12);
    SHOW(spline(t, numbers));
    SHOW(spline(t, tints));
    SHOW(color spline(t, path));
    SHOW(spline("linear", t, numbers));
    SHOW(spline("bezier", t, tints));
    SHOW(color spline(basis, t, path));
    SHOW(spline(t, 0, 1, 3, 2));
    SHOW(spline(t, tints[0], tints[1], Cs, tints[2], tints[3]));
    SHOW(color spline(t, path[0], path[1], P, path[3], path[4]));
    SHOW(spline("linear", t, 0, 1, 3, 2, 0));
    SHOW(spline("hermite", t, Cs, tints[1], tints[2], tints[3]));
    SHOW(color spline(basis, t, P, path[1], path[2], path[3]));

    Oi = 1;
    Ci = shown;
}
