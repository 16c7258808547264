/*
 * Paint that comes off where the displacement below it is raised, and rust under it. Values of
 * the other shaders of the object and of the scene are queried by name; without an answer the
 * shader's own values are used.
 */
#include "include/shading.h"

surface weathered(float Ka = 1; float Kd = 0.8; float Ks = 0.4; float roughness = 0.2;
                  float worn = 0.5; color paint = color(0.2, 0.4, 0.3);
                  color rust = color(0.4, 0.15, 0.05))
{
    varying float raised = 0;
    uniform float age = 0;
    uniform float shutter[2] = {0, 0};
    color stain = rust;

    if (displacement("raised", raised) == 0)
        raised = SNOISE(4 * transform("shader", P));
    if (attribute("user:age", age) == 0)
        age = 1;
    if (option("Shutter", shutter) == 1)
        age += shutter[0];

    float bare = smoothstep(1 - worn * age, 1.1 - worn * age, raised);
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);

    Oi = Os;
    Ci = Os * (mix(paint, stain, bare) * (Ka * ambient() + Kd * diffuse(Nf)) +
               (1 - bare) * Ks * specular(Nf, V, roughness));
}
