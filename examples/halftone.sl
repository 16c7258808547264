/* Printer's dots: a lit surface, converted to ink on paper by a screen over the raster. */
#include "include/shading.h"

surface halftone(float Ka = 1; float Kd = 1; float pitch = 8; float angle = 45;
                 color ink = 0; color paper = 1; string screen = "raster")
{
    normal Nf = faceforward(normalize(N), I);
    color lit = Cs * (Ka * ambient() + Kd * diffuse(Nf));
    point dot = rotate(transform(screen, P) / pitch, radians(angle), point(0, 0, 0),
                       point(0, 0, 1));
    float x = mod(xcomp(dot), 1) - 0.5;
    float y = mod(ycomp(dot), 1) - 0.5;

    /* A dot of this radius covers a part of its square that is equal to the darkness. */
    float radius = sqrt(clamp(1 - BRIGHTNESS(lit), 0, 1) / PI);

    Oi = 1;
    Ci = sqrt(x * x + y * y) < radius ? ink : paper;
}
