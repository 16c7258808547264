/*
 * The same eight values in splines of each basis except "power": catmull-rom, bspline, linear,
 * bezier and hermite, which uses every other value as a slope. Dots are the values.
 */
#include "strip.h"

imager splinestrip()
{
    STRIP(5);
    uniform string bases[5] = {"catmull-rom", "bspline", "linear", "bezier", "hermite"};
    uniform float values[8] = {0.5, 0.2, 0.75, 0.85, 0.3, 0.4, 0.6, 0.2};
    uniform float i;
    uniform float j;

    Ci = mix(color 0.97, color 0.8, border);
    for (i = 0; i < 5; i += 1)
        if (tile == i) {
            float here = spline(bases[i], x, values);
            float next = spline(bases[i], x + pixel, values);
            CURVE(here, next, color(0.1, 0.3, 0.7))
            for (j = 0; j < 8; j += i == 4 ? 2 : 1) {
                uniform float place = i < 3 ? (j - 1) / 5 : j / 6;
                float away = distance(point(x, y, 0), point(place, values[j], 0)) / pixel;
                Ci = mix(color 0.1, Ci, smoothstep(2, 3.5, away));
            }
        }
}
