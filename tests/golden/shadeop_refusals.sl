/* Bad records of a library cost a warning each; the good one beside them serves the call. */
surface shadeop_refusals()
{
    Ci = shade(s, t);
    Oi = dim(s);
    Ci = shade(s);
}
