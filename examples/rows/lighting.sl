/* The ways in which a surface reflects light. */
#include "card.h"

surface lighting(float roughness = 0.25; uniform float size = 4; output varying color shown = 0)
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    color mine = 0;
    color whole = 0;

    illuminance (P, Nf, PI / 2) {
        mine += Cl * specularbrdf(L, Nf, V, roughness);
    }
    illuminance (P) {
        whole += Cl * Ol;
    }

    CARD(7);
    SHOW(ambient());
    SHOW(diffuse(Nf));
    SHOW(specular(Nf, V, roughness));
    SHOW(specularstd(Nf, V, roughness));
    SHOW(phong(Nf, V, size));
    SHOW(mine);
    SHOW(whole);

    Oi = 1;
    Ci = shown;
}
