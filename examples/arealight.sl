/*
 * A glowing panel, given by its four corners: light from its middle, weaker toward the sides, with
 * the soft shadow of a light of that size.
 */
light arealight(float intensity = 1; color lightcolor = 1; string shadowmap = "";
                float bias = 0.01; uniform float samples = 32;
                point corners[4] = {point "shader" (-1, -1, 0), point "shader" (1, -1, 0),
                                    point "shader" (1, 1, 0), point "shader" (-1, 1, 0)})
{
    uniform point middle = mix(corners[0], corners[2], 0.5);
    uniform vector front = normalize((corners[1] - corners[0]) ^ (corners[3] - corners[0]));

    illuminate (middle, front, PI / 2) {
        Cl = intensity * lightcolor * (front . normalize(L));
        Cl /= max(L . L, 0.001);
        if (shadowmap != "")
            Cl *= 1 - color shadow(shadowmap, Ps, "source", corners[0], corners[1], corners[2],
                                   corners[3], "samples", samples, "bias", bias);
    }
}
