surface toon(uniform float levels = 3; float outline = 0.3; string paper = "")
{
    normal Nf = faceforward(normalize(N), I);
    color d = diffuse(Nf);
    float brightness = (comp(d, 0) + comp(d, 1) + comp(d, 2)) / 3;
    brightness = (floor(brightness * levels) + 0.5) / levels;
    float rim = normalize(-I) . Nf;
    color ink = rim < outline ? color 0 : Cs;
    if (paper != "" && (s > 0.1 || t > 0.9))
        ink *= color texture(paper, s, t);
    Ci = ink * brightness * Os;
    Oi = Os;
}
