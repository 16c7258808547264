/* Texture accesses with missing, wrong and unknown arguments. */
surface bad_textures(string map = "a.tx"; varying string each = "b.tx")
{
    float f = 0;

    f = shadow(map);
    f = shadow(map, 1);
    f = shadow(map, "bias", 1);
    f = shadow(map, P, P);
    f = shadow(map, P, "source");
    f = shadow(map, P, "source", P);
    f = shadow(map, P, "source", 1);
    f = shadow(map, P, "lerp", 0.5);
    f = float environment(map);
    f = float environment(map, s, t);
    f = float texture(map, s);
    f = float texture(map, s, t, s);
    f = float texture(map, s, t, 1, 2);
    f = float texture(map, P);
    f = float texture(map, s, t, "blur");
    f = float texture(map, s, t, "blur", "x");
    f = float texture(map, s, t, "filter", 1);
    f = float texture(map, s, t, "fuzz", 1);
    f = float texture(map[P], s, t);
    f = float texture(s, s, t);
    Ci = f;
}
