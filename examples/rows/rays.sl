/* Results of rays: from one point, between two points, and over the hemisphere. */
#include "card.h"

surface rays(uniform float samples = 16; string around = "sky.env"; output varying color shown = 0)
{
    normal Nf = faceforward(normalize(N), I);
    vector R = reflect(normalize(I), Nf);
    vector open = Nf;
    vector bright = Nf;
    uniform vector axis = vector(0, 1, 0);
    float far = 0;
    float hidden = 0;
    color mirrored = trace(P, R, far);
    float dark = occlusion(P, Nf, samples, "angle", 1, "bias", 0.01, "maxdist", 10, "variance",
                           0.1, "axis", axis, "environmentdir", open);
    color bounced = indirectdiffuse(P, Nf, samples, "angle", 1, "bias", 0.01, "maxdist", 10,
                                    "variance", 0.1, "environmentmap", around, "axis", axis,
                                    "environmentdir", bright, "occlusion", hidden);

    CARD(14);
    SHOW(mirrored);
    SHOW(far);
    SHOW(trace(P, R));
    SHOW(float trace(P, -I));
    SHOW(transmission(P, point(0, 0, 0)));
    SHOW(isshadowray());
    SHOW(isindirectray());
    SHOW(raylevel());
    SHOW(dark);
    SHOW(color open);
    SHOW(bounced);
    SHOW(color bright);
    SHOW(hidden);
    SHOW(occlusion(P, Nf) + indirectdiffuse(P, Nf));

    Oi = 1;
    Ci = shown;
}
