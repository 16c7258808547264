displacement dents(float Km = 0.1; varying float late = u;)
{
    float size = 1;
    uniform float i;
    for (i = 0; i < 6; i += 1) size += abs(0.5 - noise(P * i)) / i;
    P -= normalize(N) * size * Km * late;
    N = calculatenormal(P);
}
