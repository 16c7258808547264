/* Noise of one to four dimensions as numbers, points and colors: smooth, in cells, and periodic. */
#include "card.h"

surface noises(float frequency = 4; uniform float period = 3; uniform point box = point(3, 2, 4);
               output varying color shown = 0)
{
    float x = frequency * s;
    float y = frequency * t;
    point p = frequency * P;

    CARD(39);
    SHOW(float noise(x));
    SHOW(float noise(x, y));
    SHOW(float noise(p));
    SHOW(float noise(p, time));
    SHOW(color noise(x));
    SHOW(color noise(x, y));
    SHOW(color noise(p));
    SHOW(color noise(p, time));
    SHOW(color point noise(x));
    SHOW(color point noise(x, y));
    SHOW(color point noise(p));
    SHOW(color point noise(p, time));
    SHOW(float cellnoise(x));
    SHOW(float cellnoise(x, y));
    SHOW(float cellnoise(p));
    SHOW(float cellnoise(p, time));
    SHOW(color cellnoise(x));
    SHOW(color cellnoise(x, y));
    SHOW(color cellnoise(p));
    SHOW(color cellnoise(p, time));
    SHOW(color point cellnoise(x));
    SHOW(color point cellnoise(x, y));
    SHOW(color point cellnoise(p));
    SHOW(color point cellnoise(p, time));
    SHOW(float pnoise(x, period));
    SHOW(float pnoise(x, y, period, period));
    SHOW(float pnoise(p, box));
    SHOW(float pnoise(p, time, box, period));
    SHOW(color pnoise(x, period));
    SHOW(color pnoise(x, y, period, period));
    SHOW(color pnoise(p, box));
    SHOW(color pnoise(p, time, box, period));
    SHOW(color point pnoise(x, period));
    SHOW(color point pnoise(x, y, period, period));
    SHOW(color point pnoise(p, box));
    SHOW(color point pnoise(p, time, box, period));
    SHOW(float random());
    SHOW(color random());
    SHOW(color point random());

    Oi = 1;
    Ci = shown;
}
