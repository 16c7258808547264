/* Texture coordinates: none, one point, or four corners of a footprint. */
surface texture_forms(string map = "a.tx"; float soft = 0.1)
{
    Ci = texture(map);
    if (s > 0.5)
        Ci = texture(map[1], soft, t, "blur", soft, "sblur", 0.2, "filter", "box");
    Oi = float texture("b.tx", 0, 0, 1, 0, 1, 1, 0, 1, "width", 2, "fill", 1, "lerp", 1);
}
