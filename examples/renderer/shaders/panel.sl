/* A square that shines downward, with soft shadows. */
light panel(float intensity = 10; color lightcolor = 1; uniform float samples = 9;
            point corners[4] = {point "shader" (-1, 0, -1), point "shader" (1, 0, -1),
                                point "shader" (1, 0, 1), point "shader" (-1, 0, 1)})
{
    uniform point middle = mix(corners[0], corners[2], 0.5);
    uniform vector front = normalize((corners[1] - corners[0]) ^ (corners[3] - corners[0]));

    illuminate (middle, front, PI / 2) {
        color kept = shadow("rays", Ps, "source", corners[0], corners[1], corners[2], corners[3],
                            "samples", samples);
        Cl = intensity * lightcolor * (front . normalize(L)) * (1 - kept) / max(L . L, 0.001);
    }
}
