/*
 * A sticker with a picture: moved, rotated and scaled in the object's space, and projected onto
 * the side that faces it. The varnish of the surface covers it as well.
 */
#include "include/shading.h"

surface sticker(string picture = "label.tx"; point place = point "object" (0, 0, 0);
                float turn = 0; float width = 1; float height = 1; float Ka = 1; float Kd = 0.8;
                float Ks = 0.3; float roughness = 0.1)
{
    matrix frame = translate(matrix "object" 1, transform("object", place));
    frame = rotate(frame, radians(turn), vector(0, 0, 1));
    frame = inverse(scale(frame, point(width, height, 1)));

    point Plabel = transform(frame, P);
    float ss = 0.5 + xcomp(Plabel);
    float tt = 0.5 - ycomp(Plabel);
    color ground = Cs;

    if (ss >= 0 && ss <= 1 && tt >= 0 && tt <= 1 && !(zcomp(ntransform(frame, N)) > 0)) {
        float cover = texture(picture[3], ss, tt);

        ground = mix(ground, color texture(picture, ss, tt), cover);
    }

    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);

    Oi = Os;
    Ci = Os * (ground * (Ka * ambient() + Kd * diffuse(Nf)) + Ks * phong(Nf, V, 1 / roughness));
}
