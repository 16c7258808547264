/* A thin sheet of colored glass: light that passes it is filtered by its color. */
surface pane(float Kr = 0.08; float density = 0.95)
{
    normal Nf = faceforward(normalize(N), I);

    Oi = density * (1 - Cs);
    if (isshadowray() == 0)
        Ci = Kr * trace(P, reflect(normalize(I), Nf));
}
