/* A drawing in flat colors: light comes in steps, and parts that turn away from the eye are ink. */
surface toon(float bands = 3; float outline = 0.3; color inkcolor = color(0.05, 0.02, 0.1))
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    color steps = 0;

    illuminance (P, Nf, PI / 2) {
        steps += Cl * ceil(bands * normalize(L) . Nf) / bands;
    }

    Oi = Os;
    if (Nf . V < outline)
        Ci = Os * inkcolor;
    else
        Ci = Os * Cs * steps;
}
