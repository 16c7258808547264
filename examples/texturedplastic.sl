/*
 * Plastic whose color comes from a map, repeated over the surface. A second map, if there is one,
 * makes the coat rough where it is bright.
 */
surface texturedplastic(string map = "grid.tx"; string roughmap = ""; float Ka = 1; float Kd = 0.7;
                        float Ks = 0.5; float roughness = 0.1; float repeatS = 1; float repeatT = 1;
                        uniform float blur = 0; color specularcolor = 1)
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    float ss = mod(s * repeatS, 1);
    float tt = mod(t * repeatT, 1);
    color body = texture(map, ss, tt, "blur", blur, "filter", "box");
    float rough = roughness;

    if (roughmap != "")
        rough *= 1 + float texture(roughmap[0], ss, tt);

    Oi = Os;
    Ci = Os * (Cs * body * (Ka * ambient() + Kd * diffuse(Nf)) +
               specularcolor * Ks * specular(Nf, V, rough));
}
