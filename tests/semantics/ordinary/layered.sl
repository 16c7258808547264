surface layered(float Ka = 1, Kd = 0.5, Ks = 0.5, roughness = 0.1; color specularcolor = 1;
                output varying color diffusepart = 0; output varying color specularpart = 0;
                output varying normal bentnormal = 0)
{
    normal Nf = faceforward(normalize(N), I);
    bentnormal = ntransform("camera", Nf);
    diffusepart = Cs * (Ka * ambient() + Kd * diffuse(Nf));
    specularpart = specularcolor * Ks * specular(Nf, -normalize(I), roughness);
    Oi = Os;
    Ci = Os * (diffusepart + specularpart);
}
