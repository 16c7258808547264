/*
 * Fog that lies on the ground and thins out with height. The density falls off exponentially,
 * so its integral along the ray has a closed form.
 */
volume groundfog(float density = 0.1; float falloff = 0.5; color fogcolor = color(0.8, 0.85, 0.9);
                 string space = "world")
{
    point Pground = transform(space, P);
    vector Iground = vtransform(space, I);
    float far = length(Iground);
    float rise = ycomp(Iground);
    float start = density * exp(-falloff * (ycomp(Pground) - rise));
    float depth = start * far;

    if (abs(falloff * rise) > 0.001)
        depth *= (1 - exp(-falloff * rise)) / (falloff * rise);

    float clear = exp(-depth);

    Ci = mix(fogcolor, Ci, clear);
    Oi = mix(color(1, 1, 1), Oi, clear);
}
