/* Cloth with a sheen that grows toward the silhouette. */
surface velvet_flat(float Ka = 0.4; float Kd = 0.6; float Ksheen = 0.7; float falloff = 3;
                    color sheencolor = color(0.9, 0.7, 0.8))
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    float facing = clamp(Nf . V, 0, 1);

    Ci = Cs * (Ka * ambient() + Kd * diffuse(Nf));
    Ci += Ksheen * sheencolor * pow(1 - facing, falloff);
    Ci *= Os;
    Oi = Os;
}
