/*
 * Two components of a color in each space, the first increasing to the right, the second upward:
 * red and green in "rgb"; hue and value in "hsv"; hue and lightness in "hsl"; x and y of "xyY"; the
 * two signals of "YIQ" from -0.5 to 0.5.
 */
#include "strip.h"

imager spacestrip()
{
    STRIP(5);

    if (tile == 0)
        Ci = color(x, y, 0);
    else if (tile == 1)
        Ci = color "hsv" (x, 1, y);
    else if (tile == 2)
        Ci = color "hsl" (x, 1, y);
    else if (tile == 3)
        Ci = color "xyY" (0.8 * x, 0.02 + 0.9 * y, 0.4);
    else
        Ci = color "YIQ" (0.5, x - 0.5, y - 0.5);
    Ci = mix(Ci, 1, border);
}
