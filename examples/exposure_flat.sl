/* The response of a film: a gain, a gamma, and a tint in another color space. */
imager exposure_flat(float gain = 1; float gamma = 2.2; float warmth = 0.02)
{
    color film = color(pow(comp(Ci, 0) * gain, 1 / gamma), pow(comp(Ci, 1) * gain, 1 / gamma),
                       pow(comp(Ci, 2) * gain, 1 / gamma));
    color yiq = ctransform("rgb", "YIQ", film);

    setcomp(yiq, 1, comp(yiq, 1) + warmth);
    Ci = ctransform("YIQ", "rgb", yiq);
}
