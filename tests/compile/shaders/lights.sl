// All forms of light statements.
light lights(float angle = 0.5; point from = point "shader" (0, 0, 0); vector to = vector(0, 0, 1);)
{
    varying vector axis = to + vector(s, t, 0);
    varying point here = from + axis;
    if (s > 0.5) {
        illuminate(from, to, angle) { Cl = 1; }
        illuminate(here, axis, angle) { Cl = 2; }
        solar(to, angle) { Cl = 3; }
        illuminate(from) { Cl = 4; }
    } else {
        solar(axis, 0.1) { Cl = color(s, t, 0); }
        illuminate(here) { Cl = 5; }
    }
    illuminate(from, to, angle) { Cl = shadow("map.sh", Ps, "bias", 0.1, "samples", 4); }
    solar() { Cl = color shadow("map.sh"[0], Ps, "source", P, P, P); }
}
