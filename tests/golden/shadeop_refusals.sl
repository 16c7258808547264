/* Each wrong record of a library causes a warning; the right record beside them is called. */
surface shadeop_refusals()
{
    Ci = shade(s, t);
    Oi = dim(s);
    Ci = shade(s);
}
