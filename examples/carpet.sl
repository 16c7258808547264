/*
 * Short, dense fibers: light from the side reaches more of them than light from above, and each
 * tuft leans in another direction. Tufts that are smaller than a shading point fade out.
 */
surface carpet(float Ka = 0.1; float Kd = 1; float tufts = 100; float lean = 0.3;
               float backscatter = 0.4; color fibercolor = color(0.5, 0.25, 0.15))
{
    float ss = s * tufts;
    float tt = t * tufts;
    float covered = abs(Du(ss) * du) + abs(Dv(tt) * dv);
    float fade = 1 - smoothstep(0.5, 2, covered);
    vector tilt = lean * fade * (vector cellnoise(ss, tt) - vector(0.5, 0.5, 0.5));

    normal Nf = faceforward(normalize(N), I);
    normal Nfiber = normalize(Nf + tilt);
    vector V = -normalize(I);
    color lit = Ka * ambient();

    illuminance (P, Nf, PI / 2) {
        vector Ln = normalize(L);
        float across = 1 - abs(Ln . Nfiber);
        float toward = max(Ln . V, 0);

        lit += Kd * Cl * (0.5 + 0.5 * across) * (Ln . Nf) + backscatter * Cl * pow(toward, 4);
    }
    Oi = Os;
    Ci = Os * fibercolor * lit;
}
