/* Light statements and arguments that a surface shader must not have. */
surface bad_lights_of_surface()
{
    illuminate (P)
        Ci = 1;
    solar ()
        Ci = 1;
    illuminance (P, N)
        Ci += Cl;
    illuminance ("key", P, N, 1)
        Ci += Cl;
    illuminance ("x")
        Ci += Cl;
    illuminance (P, "y", 1)
        Ci += Cl;
    illuminance (P, N, "z")
        Ci += Cl;
    illuminance (P)
        illuminance (P)
            Ci += Cl;
    Ci = L;
}
