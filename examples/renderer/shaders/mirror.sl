/* Polished metal. */
surface mirror(float Kr = 0.9; float Ks = 0.5; float roughness = 0.02)
{
    normal Nf = faceforward(normalize(N), I);
    vector In = normalize(I);

    Oi = 1;
    Ci = Cs * (Kr * trace(P, reflect(In, Nf)) + Ks * specular(Nf, -In, roughness));
}
