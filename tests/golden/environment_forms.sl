/* Environment maps: a varying direction, a uniform one, and four corners of a footprint. */
surface environment_forms(string map = "a.env"; vector up = vector(0, 1, 0))
{
    Ci = environment(map, reflect(I, N), "samples", 4, "fill", 0.5);
    if (s > 0.5)
        Oi = color environment(map, up);
    else
        Oi = float environment(map, up, up, up, up, "lerp", 1);
}
