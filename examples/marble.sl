/* Veined stone: a wave bent by turbulence picks its color from a spline. */
#include "include/shading.h"

surface marble(float Ka = 0.8; float Kd = 0.7; float Ks = 0.4; float roughness = 0.1;
               float frequency = 2; float twist = 3; uniform float octaves = 6)
{
    point Pmarble = frequency * transform("shader", P);
    float bend = twist * turbulence(Pmarble, octaves, 2, 0.5);
    float vein = 0.5 + 0.5 * sin(PI * (xcomp(Pmarble) + bend));
    color stone = spline(vein,
                         color(0.25, 0.2, 0.2), color(0.25, 0.2, 0.2),
                         color(0.6, 0.55, 0.5), color(0.8, 0.75, 0.7),
                         color(0.9, 0.9, 0.85), color(0.95, 0.95, 0.95),
                         color(0.95, 0.95, 0.95));

    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);

    Oi = Os;
    Ci = Os * (stone * (Ka * ambient() + Kd * diffuse(Nf)) + Ks * specular(Nf, V, roughness));
}
