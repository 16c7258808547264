/* Lamps: for the whole grid where the place is uniform, point by point where it is not. */
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
