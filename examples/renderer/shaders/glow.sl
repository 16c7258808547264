/* The visible surface of a lamp. */
surface glow(float intensity = 1)
{
    Oi = 1;
    Ci = intensity * Cs;
}
