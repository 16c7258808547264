/* Tiles of two colors, a little shiny, under a sky that objects nearby hide. */
surface floor(float Kd = 0.8; float Kr = 0.15; float tiles = 8; color odd = color(0.15, 0.17, 0.2);
              color even = 0.85; color sky = 0; uniform float samples = 16)
{
    normal Nf = faceforward(normalize(N), I);
    float ss = s * tiles;
    float tt = t * tiles;
    color tile = mod(floor(ss) + floor(tt), 2) < 0.5 ? even : odd;
    color light = diffuse(Nf) + ambient();

    if (sky != color 0)
        light += sky * (1 - occlusion(P, Nf, samples));

    Oi = 1;
    Ci = Cs * tile * Kd * light + Kr * trace(P, reflect(normalize(I), Nf));
}
