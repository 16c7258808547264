displacement dented(float Km = 1; uniform float octaves = 6)
{
    float size = 1;
    float magnitude = 0;
    point P2 = transform("shader", P);
    uniform float i;
    for (i = 0; i < octaves; i += 1) {
        magnitude += abs(0.5 - noise(P2 * size)) / size;
        size *= 2;
    }
    point PP = P - normalize(N) * (magnitude * magnitude * magnitude) * Km;
    N = calculatenormal(PP);
    P = PP;
}
