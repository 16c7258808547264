/* Shadows of a point light, and of lights with two and four corners. */
surface shadow_forms(point corner = 1)
{
    float hidden = shadow("a.shd", P, "bias", 0.1);

    if (s > 0.5)
        hidden = shadow("a.shd", P, "source", corner, P, "samples", 8);
    Ci = hidden * color shadow("a.shd", P, "source", corner, corner, P, P);
}
