/*
 * A floor that shows nothing but the shadows on it, to be laid over a photograph: opaque where
 * light is blocked.
 */
#include "include/shading.h"

surface shadowcatcher(color shadowcolor = 0; float density = 1)
{
    normal Nf = faceforward(normalize(N), I);
    float lit = 0;
    float all = 0;

    illuminance (P, Nf, PI / 2) {
        float share = (normalize(L) . Nf) * BRIGHTNESS(Cl);

        all += share;
        lit += share * BRIGHTNESS(transmission(P, P + L));
    }

    Oi = all > 0 ? density * (1 - lit / all) : 0;
    Ci = shadowcolor * Oi;
}
