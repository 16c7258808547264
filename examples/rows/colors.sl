/* Functions of colors, and colors in other spaces than RGB. */
#include "card.h"

surface colors(color other = color(0.25, 0.75, 0.5); string space = "hsv";
               output varying color shown = 0)
{
    color changed = Cs;

    setcomp(changed, 1, comp(Cs, 0) / 2);

    CARD(11);
    SHOW(changed);
    SHOW(mix(Cs, other, t));
    SHOW(mix(Cs, other, 0.25));
    SHOW(clamp(Cs, color(0.1, 0.1, 0.1), other));
    SHOW(min(Cs, other));
    SHOW(max(Cs, other, color(0.3, 0.3, 0.3)));
    SHOW(ctransform("hsv", Cs));
    SHOW(ctransform("hsv", "rgb", color(0, t, 1)));
    SHOW(ctransform(space, Cs));
    SHOW(color "hsl" (0, 1, t));
    SHOW(color "rgb" Cs);

    Oi = 1;
    Ci = shown;
}
