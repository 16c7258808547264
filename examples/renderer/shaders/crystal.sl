/*
 * Glass that bends light: reflection and refraction are traced as rays. Its shadow is colored
 * light, darker at its edge, where less light comes through.
 */
surface crystal(float ior = 1.5; float Ks = 0.6; float roughness = 0.01; color tint = 0.95)
{
    vector In = normalize(I);
    normal Nn = normalize(N);

    Oi = 1;
    if (isshadowray() != 0) {
        Oi = 1 - tint * sqrt(abs(In . Nn));
    } else {
        normal Nf = faceforward(Nn, In, Nn);
        float eta = In . Nn < 0 ? 1 / ior : ior;
        float kr = 0;
        float kt = 0;
        vector R = 0;
        vector T = 0;

        fresnel(In, Nf, eta, kr, kt, R, T);
        Ci = kr * trace(P, R) + Ks * specular(Nf, -In, roughness);
        if (kr < 1)
            Ci += (1 - kr) * tint * trace(P, T);
    }
}
