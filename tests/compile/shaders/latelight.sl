// A light with default values that need shading data. No code computes them.
light latelight(varying float a = noise(xcomp(Ps)); point from = point "light source-1" (0, 0, 0);
                varying float list[3] = {a, 1, 2}; color c = 1;)
{
    illuminate(from) {
        Cl = c * a * list[1];
    }
}
