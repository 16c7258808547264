/* The row of a method takes what any overload names; one file name means one library. */
surface shadeop_clashes()
{
    Ci = shade(s) + shade(s, t) + shade(s, t, u);
    Oi = tint(s);
}
