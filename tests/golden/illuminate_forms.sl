/* The illuminate statement with uniform and varying positions, with and without a cone. */
light illuminate_forms(point from = 0; vector axis = vector(0, 0, 1); float angle = 0.5)
{
    illuminate (from, axis, angle)
        Cl = 1;
    if (s > 0.5)
        illuminate (Ps + axis, axis, angle)
            Cl = 2;
    else
        illuminate (from)
            Cl = 3;
}
