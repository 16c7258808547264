/* The lights are evaluated for P, and again after P has changed. Without a cone there are no flags. */
surface illuminance_at_p()
{
    Ci = 0;
    illuminance (P)
        Ci += Cl;
    P += N;
    illuminance (P)
        Ci += Cl;
}
