/* Light statements and arguments that a light shader must not have. */
light bad_lights_of_light(point from = 0)
{
    illuminance (P)
        Cl = 1;
    illuminate (from)
        illuminate (from)
            Cl = 1;
    solar ()
        illuminate (from)
            Cl = 1;
    illuminate ("x")
        Cl = 1;
    illuminate (from, "y", 1)
        Cl = 1;
    illuminate (from, vector(0, 0, 1), "z")
        Cl = 1;
    solar ("x", 1)
        Cl = 1;
    solar (vector(0, 0, 1), P)
        Cl = 1;
    Cl = diffuse(N) + ambient();
}
