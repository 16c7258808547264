/*
 * A landscape by height and slope: sand, grass, rock and snow, in bands with borders that
 * noise makes irregular. There is no grass or snow on steep ground.
 */
#include "include/shading.h"

surface terrain(float Ka = 0.4; float Kd = 0.8; float top = 1; float fray = 0.1;
                color bands[6] = {color(0.8, 0.7, 0.5), color(0.8, 0.7, 0.5),
                                  color(0.2, 0.4, 0.1), color(0.4, 0.35, 0.3),
                                  color(1, 1, 1), color(1, 1, 1)};
                color rock = color(0.35, 0.3, 0.28); string up = "world")
{
    point Pworld = transform(up, P);
    normal Nworld = normalize(ntransform(up, N));
    float height = clamp(ycomp(Pworld) / top + fray * fractalsum(Pworld * 8, 4, 2, 0.5), 0, 1);
    float steep = 1 - abs(ycomp(Nworld));
    color ground = spline("linear", height, bands);

    normal Nf = faceforward(normalize(N), I);

    Oi = 1;
    Ci = mix(ground, rock, smoothstep(0.3, 0.5, steep)) * (Ka * ambient() + Kd * diffuse(Nf));
}
