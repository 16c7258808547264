/* Functions of numbers, applied to t. */
#include "card.h"

surface numbers(output varying float shown = 0)
{
    float x = t;

    CARD(30);
    SHOW(radians(360 * x));
    SHOW(degrees(PI * x));
    SHOW(sin(PI * x));
    SHOW(asin(x));
    SHOW(cos(2 * PI * x));
    SHOW(acos(x));
    SHOW(tan(PI * x / 2));
    SHOW(atan(2 * x));
    SHOW(atan(x, -x));
    SHOW(pow(x, 3));
    SHOW(exp(2 * x));
    SHOW(sqrt(x / 2));
    SHOW(inversesqrt(x / 2));
    SHOW(log(2 * x));
    SHOW(log(x, 2));
    SHOW(mod(-3 * x, 2));
    SHOW(abs(x - 1));
    SHOW(sign(x - 1));
    SHOW(min(x, 0.75));
    SHOW(max(x, 0.75));
    SHOW(min(2 * x, 0.75, x, 3));
    SHOW(max(2 * x, 0.75, 3, x));
    SHOW(clamp(3 * x, 0, 1));
    SHOW(floor(5 * x));
    SHOW(ceil(5 * x));
    SHOW(round(5.5 * x));
    SHOW(step(0.6, x));
    SHOW(smoothstep(0, 2, x));
    SHOW(mix(2, 4, x));
    SHOW(mod(x, -0.3));

    Oi = 1;
    Ci = shown;
}
