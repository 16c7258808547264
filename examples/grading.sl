/*
 * Color grading: lift, gamma and gain for each channel, a curve for the brightness, then
 * saturation. Colors keep their opacity.
 */
#include "include/shading.h"

imager grading(color lift = 0; color gamma = 1; color gain = 1; float saturation = 1;
               uniform float curve[7] = {0, 0, 0.25, 0.5, 0.75, 1, 1})
{
    color graded = Ci * gain + lift * (1 - Ci);
    uniform float i;

    void bend(output color c; uniform float channel)
    {
        extern uniform color gamma;

        setcomp(c, channel, pow(max(comp(c, channel), 0), 1 / comp(gamma, channel)));
    }

    for (i = 0; i < 3; i += 1)
        bend(graded, i);

    float before = BRIGHTNESS(graded);
    float after = spline(clamp(before, 0, 1), curve);

    if (before > 0)
        graded *= after / before;
    Ci = mix(color(after, after, after), graded, saturation);
}
