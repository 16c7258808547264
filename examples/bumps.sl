/* Pits as in orange peel: only the normal changes, so the outline stays smooth. */
#include "include/shading.h"

displacement bumps(float Km = 0.02; float frequency = 20)
{
    float pits = SNOISE(frequency * transform("shader", P));
    point Pbump = P - Km * max(pits, 0) * normalize(N);

    N = calculatenormal(Pbump);
}
