/* filterstep across an edge, with the filters box, triangle, gaussian and catmull-rom. */
#include "strip.h"

imager filterstrip(uniform float width = 0.3)
{
    STRIP(4);
    uniform string filters[4] = {"box", "triangle", "gaussian", "catmull-rom"};
    uniform float i;

    Ci = mix(color 0.97, color 0.8, border);
    for (i = 0; i < 4; i += 1)
        if (tile == i) {
            float here = filterstep(0.5, x - width / 2, x + width / 2, "filter", filters[i]);
            float next = filterstep(0.5, x + pixel - width / 2, x + pixel + width / 2, "filter",
                                    filters[i]);
            if (y < 0.2)
                Ci = here;
            CURVE(0.3 + 0.6 * here, 0.3 + 0.6 * next, color(0.7, 0.2, 0.1))
        }
}
