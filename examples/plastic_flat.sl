/* Smooth plastic: a colored body under a clear coat with white highlights. */
surface plastic_flat(float Ka = 1; float Kd = 0.5; float Ks = 0.5; float roughness = 0.1;
                     color specularcolor = 1)
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);

    color body = Cs * (Ka * ambient() + Kd * diffuse(Nf));
    color coat = specularcolor * Ks * specular(Nf, V, roughness);

    Oi = Os;
    Ci = Os * (body + coat);
}
