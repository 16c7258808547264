/*
 * Clear glass: the light that a smooth surface reflects and the light that it transmits, from a
 * map of the surroundings if there is one and by rays otherwise. Light that leaves the glass bends
 * the other way.
 */
surface glass(float Kr = 1; float Kt = 1; float Ks = 0.8; float roughness = 0.02; float ior = 1.5;
              uniform float deepest = 4; color tint = color(0.95, 1, 0.97);
              string surroundings = "")
{
    vector In = normalize(I);
    normal Nn = normalize(N);
    normal Nf = faceforward(Nn, In, Nn);
    float ratio = In . Nn < 0 ? 1 / ior : ior;
    float reflected = 0;
    float refracted = 0;
    vector R = 0;
    vector T = 0;
    color mirrored = 0;
    color behind = 0;

    fresnel(In, Nf, ratio, reflected, refracted, R, T);
    if (surroundings != "") {
        mirrored = environment(surroundings, R);
        behind = environment(surroundings, T);
    } else if (raylevel() < deepest) {
        mirrored = trace(P, R);
        behind = trace(P, T);
    }

    Oi = 1;
    Ci = Kr * reflected * mirrored + Kt * (1 - reflected) * tint * behind +
         Ks * specular(Nf, -In, roughness);
}
