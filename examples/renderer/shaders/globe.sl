/* A globe colored by a map of heights: land in bands, and a sea that reflects the sky. */
surface globe(string map = ""; string sky = ""; float sealevel = 0.5; float Ka = 0.6)
{
    normal Nf = faceforward(normalize(N), I);
    vector In = normalize(I);
    float height = texture(map, s, t);
    float up = (height - sealevel) / 0.35;

    Oi = 1;
    if (up < 0) {
        color deep = mix(color(0.05, 0.25, 0.4), color(0.01, 0.05, 0.14), clamp(-3 * up, 0, 1));
        float share = 0.05 + 0.6 * pow(1 + In . Nf, 3);
        Ci = deep * (Ka + diffuse(Nf)) + share * environment(sky, reflect(In, Nf)) +
             0.4 * specular(Nf, -In, 0.06);
    } else {
        color land = spline(clamp(up, 0, 1), color(0.75, 0.65, 0.42), color(0.75, 0.65, 0.42),
                            color(0.25, 0.42, 0.12), color(0.2, 0.32, 0.1), color(0.4, 0.33, 0.25),
                            color(0.55, 0.5, 0.45), color 0.95, color 0.95);
        color open = environment(sky, Nf, "blur", 0.4);
        Ci = land * (Ka * open * (1 - 0.8 * occlusion(P, Nf, 12, "maxdist", 0.5)) + diffuse(Nf));
    }
}
