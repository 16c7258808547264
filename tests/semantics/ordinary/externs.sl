float fresneldrop(float edge)
{
    extern vector I;
    extern normal N;
    float facing = abs(normalize(I) . normalize(N));
    return pow(1 - facing, edge);
}

color lit(normal Nn; float rough)
{
    extern point P;
    color sum = 0;
    illuminance(P, Nn, PI / 2) {
        vector Ln = normalize(L);
        sum += Cl * pow(max(0, Nn . Ln), 1 / rough);
    }
    return sum;
}

surface externs(float rough = 0.4, edge = 3)
{
    normal Nn = faceforward(normalize(N), I);
    Ci = Os * (Cs * lit(Nn, rough) + fresneldrop(edge) * environment("sky", reflect(I, Nn)));
    Oi = Os;
}
