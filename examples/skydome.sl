/*
 * Daylight without lamps: how much of the sky a point sees, and the color of that part of the sky
 * that it sees most of. Light that bounces off the neighbors is added.
 */
surface skydome(float Kd = 1; float Kbounce = 0.5; uniform float samples = 64;
                uniform float reach = 10; color zenith = color(0.3, 0.5, 0.9);
                color horizon = color(0.9, 0.9, 0.8); output varying float hidden = 0)
{
    normal Nf = faceforward(normalize(N), I);
    vector open = Nf;

    hidden = occlusion(P, Nf, samples, "angle", PI / 2, "maxdist", reach, "environmentdir", open);
    vector sky = normalize(vtransform("world", open));
    color light = mix(horizon, zenith, clamp(ycomp(sky), 0, 1));
    color bounced = indirectdiffuse(P, Nf, samples, "maxdist", reach, "bias", 0.01);

    Oi = Os;
    Ci = Os * Cs * (Kd * (1 - hidden) * light + Kbounce * bounced);
}
