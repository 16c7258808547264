/* A lamp that one looks at. */
surface glow(float intensity = 1)
{
    Oi = 1;
    Ci = intensity * Cs;
}
