/* Light from a picture of the sky, looked up in the direction from each point to the eye. */
light skylight(float intensity = 1; string sky = ""; color above = color(0.5, 0.7, 1))
{
    solar () {
        if (sky != "")
            Cl = intensity * color environment(sky, vtransform("world", -L), "blur", 0.2);
        else
            Cl = intensity * above * (0.5 - 0.5 * normalize(L) . vector "world" (0, 1, 0));
    }
}
