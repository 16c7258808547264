// Functions that query the renderer.
surface scene(string map = "a.tx"; varying string which = "b.tx";)
{
    float f = 0; uniform float g = 0; color c = 0; uniform string who = ""; float row[3];
    uniform point at[2]; matrix m = 1; vector d = 0; float occ = 0;
    vector r = reflect(I, N);  // of all points, also of neighbours where the condition below is false
    g += attribute("a", g) + option("b", f) + rendererinfo("version", who);
    g += surface("x", c) + displacement("y", d) + lightsource("z", f) + atmosphere("w", row);
    g += incident("i", at) + opposite("o", m) + textureinfo(map, "resolution", row);
    if (u > 0.5) {
        g = attribute("a", f);
        c = texture(map, s, t, "blur", 0.1) + color texture(map, "filter", "box");
        f = float environment(map, P) + shadow(map, P, "samples", 2);
    } else
        c = environment(map, r, "lerp", 1);
    f += float texture(map[1], u, v) + texture(map, 0, 0, 1, 1, 0, 1, 1, 0) + texture(map, 0.5, 0.5);
    c += trace(P, d) + trace(P, d, f) + transmission(P, E) + isshadowray() + isindirectray();
    c += occlusion(P, N, 16, "bias", 0.1, "environmentdir", d);
    c += indirectdiffuse(P, N) + indirectdiffuse(P, N, 8, "maxdist", 5, "occlusion", occ);
    c += raylevel() + shadow(map, P, "source", P, P, P, P);
    Ci = c * f + g + occ;
}
