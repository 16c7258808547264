/* Haze that hides what is far away; half of it is gone at the given distance. */
volume fog_flat(uniform float distance = 10; color background = color(0.7, 0.75, 0.8))
{
    float haze = 1 - pow(0.5, length(I) / distance);

    Ci = mix(Ci, background, haze);
    Oi = mix(Oi, color(1, 1, 1), haze);
}
