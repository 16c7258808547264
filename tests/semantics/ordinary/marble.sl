color veins(float x)
{
    return spline(x, color(0.25, 0.35, 0.25), color(0.25, 0.35, 0.25), color(0.2, 0.3, 0.2),
                  color(0.2, 0.3, 0.2), color(0.25, 0.35, 0.35), color(0.1, 0.1, 0.1),
                  color(0.2, 0.3, 0.2), color(0.25, 0.35, 0.25));
}

surface marble(float txtscale = 1; float Ka = 0.5, Kd = 0.8, Ks = 0.4; float roughness = 0.07)
{
    point PP = txtscale * transform("shader", P);
    float pixelsize = sqrt(area(PP));
    float twice = 2 * pixelsize;
    float turbulence = 0;
    float scale;
    for (scale = 1; scale > twice; scale /= 2)
        turbulence += scale * noise(PP / scale);
    if (scale > pixelsize) {
        float weight = clamp(scale / pixelsize - 1, 0, 1);
        turbulence += weight * scale * noise(PP / scale);
    }
    normal NN = faceforward(normalize(N), I);
    Ci = veins(clamp(4 * turbulence - 3, 0, 1));
    Oi = Os;
    Ci = Os * (Ci * (Ka * ambient() + Kd * diffuse(NN)) + Ks * specular(NN, -normalize(I), roughness));
}
