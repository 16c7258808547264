/* Lights in a cone, with uniform and varying positions and axes. */
surface illuminance_cones(point from = 0; vector axis = vector(0, 0, 1))
{
    Ci = 0;
    illuminance (P, N, 1.5)
        Ci += Cl;
    if (s > 0.5)
        illuminance (P, N, 1.5)
            Ci += Cl;
    illuminance (from, axis, 1.5)
        Ci += Cl;
}
