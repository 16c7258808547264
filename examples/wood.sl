/*
 * Turned wood: growth rings around the z axis of the shader's space, with pores along the grain.
 */
#include "include/shading.h"

surface wood(float Ka = 1; float Kd = 0.75; float Ks = 0.3; float roughness = 0.15;
             float rings = 10; float wobble = 0.2; float grain = 0.4;
             color lightwood = color(0.7, 0.45, 0.25); color darkwood = color(0.3, 0.2, 0.1))
{
    point Pwood = transform("shader", P);
    point Pwarped = Pwood + wobble * (vector noise(Pwood) - vector(0.5, 0.5, 0.5));
    float x = xcomp(Pwarped);
    float y = ycomp(Pwarped);
    float ring = mod(rings * sqrt(x * x + y * y), 1);

    /* A ring darkens slowly over the summer and ends at once in winter. */
    float late = smoothstep(0.25, 0.75, ring) - smoothstep(0.85, 1, ring);
    float pores = noise(xcomp(Pwood) * 200, ycomp(Pwood) * 200);
    float dark = late + grain * (1 - late) * step(0.75, pores);

    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    color ground = mix(lightwood, darkwood, dark);

    Oi = Os;
    Ci = Os * (ground * (Ka * ambient() + Kd * diffuse(Nf)) +
               (1 - 0.5 * dark) * Ks * specular(Nf, V, roughness));
}
