/*
 * A soap film: light that is reflected by the front and the back of the film adds up or cancels
 * out, depending on the thickness of the film, the angle and the wavelength.
 */
surface bubble(float Kr = 0.8; float thickness = 500; float ior = 1.33; float swirl = 200;
               uniform float wavelengths[3] = {650, 530, 460}; string surroundings = "")
{
    normal Nf = faceforward(normalize(N), I);
    vector In = normalize(I);
    float cosine = -In . Nf;
    float inner = sqrt(1 - (1 - cosine * cosine) / (ior * ior));
    float film = thickness + swirl * (float noise(4 * transform("shader", P)) - 0.5);
    float path = 2 * ior * film * inner;
    color tint = 0;
    uniform float i;

    /* The reflection at the front inverts the wave, the one at the back does not. */
    for (i = 0; i < 3; i += 1)
        setcomp(tint, i, 0.5 - 0.5 * cos(2 * PI * path / wavelengths[i]));

    color mirrored = 1;
    if (surroundings != "")
        mirrored = environment(surroundings, reflect(In, Nf));

    Oi = 0.1 + 0.3 * (1 - cosine);
    Ci = Kr * tint * mirrored * Oi;
}
