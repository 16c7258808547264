surface twisted(float amount = twist(0.25))
{
    Ci = amount * Cs;
    Oi = Os;
}
