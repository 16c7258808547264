/* The surface's own color, unlit. */
surface constant()
{
    Oi = Os;
    Ci = Os * Cs;
}
