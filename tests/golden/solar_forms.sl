/* The solar statement with a uniform axis, with a varying one and without an axis. */
light solar_forms(vector axis = vector(0, 0, 1); float angle = 0.5)
{
    if (angle > 0)
        solar (axis, angle)
            Cl = 1;
    if (s > 0.5)
        solar (axis, angle)
            Cl = 2;
    solar ()
        Cl = 3;
}
