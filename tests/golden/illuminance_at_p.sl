/* The lights are run for P, and again once it has moved; no cone has no flags. */
surface illuminance_at_p()
{
    Ci = 0;
    illuminance (P)
        Ci += Cl;
    P += N;
    illuminance (P)
        Ci += Cl;
}
