surface brushed(float Ks = 1; float xroughness = 0.3, yroughness = 0.05; color metal = color(0.9, 0.9, 1))
{
    color sum = 0;
    normal n = normalize(faceforward(N, I));
    vector xdir = normalize(dPdu);
    vector ydir = n ^ xdir;
    vector view = -normalize(I);
    illuminance(P, n, PI / 2) {
        vector LN = normalize(L);
        vector H = normalize(LN + view);
        float rho = exp(-2 * (pow(xdir . H / xroughness, 2) + pow(ydir . H / yroughness, 2)) /
                        (1 + H . n)) / sqrt((n . LN) * (n . view));
        sum += Cl * ((n . LN) * rho);
    }
    Ci = Os * metal * Ks * sum;
    Oi = Os;
}
