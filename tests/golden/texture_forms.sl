/* The place in a map: left out, as a point whose footprint is found, or as four corners. */
surface texture_forms(string map = "a.tx"; float soft = 0.1)
{
    Ci = texture(map);
    if (s > 0.5)
        Ci = texture(map[1], soft, t, "blur", soft, "sblur", 0.2, "filter", "box");
    Oi = float texture("b.tx", 0, 0, 1, 0, 1, 1, 0, 1, "width", 2, "fill", 1, "lerp", 1);
}
