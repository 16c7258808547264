/*
 * Smoke lit by the scene: the ray is divided into steps, each of which absorbs some of the light
 * from beyond it and scatters light from the lamps toward the eye. Steps that are no longer visible
 * are skipped.
 */
#include "include/shading.h"

volume smoke(float opacity = 0.5; float scatter = 1; float stepsize = 0.2;
             uniform float frequency = 1; uniform float octaves = 4; uniform float contrast = 1;
             uniform float moststeps = 100; color tint = 1)
{
    vector In = normalize(I);
    point start = P - I;
    float end = length(I);
    float size = max(stepsize, end / moststeps);
    float done = size / 2;
    color light = 0;
    color through = 1;

    while (done < end) {
        point Pstep = start + done * In;
        point Pshader = frequency * transform("shader", Pstep);
        float density = clamp(1 + contrast * fractalsum(Pshader, octaves, 2, 0.5), 0, 1);

        if (density > 0.01) {
            float stays = exp(-opacity * density * size);
            color lamps = 0;

            illuminance (Pstep) {
                lamps += Cl;
            }
            light += through * (1 - stays) * scatter * tint * lamps;
            through *= stays;
            if (comp(through, 0) < 0.01)
                break;
        }
        done += size;
    }
    Ci = light + through * Ci;
    Oi = 1 - through * (1 - Oi);
}
