/* Changes of values from one shading point to the next, and edges that are softened by them. */
surface derivatives(float edge = 0.4; output varying float shown[8] = {0, 0, 0, 0, 0, 0, 0, 0};
                    output varying color shades = 0; output varying vector ways = 0)
{
    float x = 3 * u + 2 * v;
    color tint = color(u, v, u + v);
    point place = point(2 * u, v, 0);

    shown[0] = Du(x);
    shown[1] = Dv(x);
    shown[2] = Deriv(4 * x, x);
    shown[3] = area(place);
    shown[4] = filterstep(edge, u);
    shown[5] = filterstep(edge, u, "filter", "box");
    shown[6] = filterstep(edge, u, "width", 2, "filter", "triangle");
    shown[7] = zcomp(calculatenormal(place));
    shades = Du(tint) + 10 * Dv(tint) + 100 * Deriv(tint, u + 2 * v);
    ways = Du(place) + 10 * Dv(place) + 100 * Deriv(place, u);

    Oi = 1;
    Ci = shades;
}
