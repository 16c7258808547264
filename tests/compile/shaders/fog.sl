volume fog(float distance = 1; color background = 0;)
{
    float d = 1 - exp(-length(I) / distance);
    color lit = 0;
    illuminance(P) { lit += Cl; }
    Ci = mix(Ci, background + lit, d);
    Oi = mix(Oi, color 1, d);
}
