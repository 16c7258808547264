/* Noise in tiles: a number, a color, a sum of octaves, two periods of pnoise, and cellnoise. */
#include "strip.h"

imager noisestrip(float frequency = 6)
{
    STRIP(5);
    float along = frequency * x;
    float up = frequency * y;
    float size;

    if (tile == 0) {
        Ci = float noise(along, up);
    } else if (tile == 1) {
        Ci = color noise(along, up);
    } else if (tile == 2) {
        Ci = 0;
        for (size = 1; size < 64; size *= 2)
            Ci += abs(2 * float noise(along * size / 2, up * size / 2) - 1) / size;
    } else if (tile == 3) {
        Ci = float pnoise(along, up, 3, 3);
    } else {
        Ci = color cellnoise(along, up);
    }
    Ci = mix(Ci, 1, border);
}
