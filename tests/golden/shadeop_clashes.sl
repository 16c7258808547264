/* Overloads may name different init functions; two libraries may not have the same file name. */
surface shadeop_clashes()
{
    Ci = shade(s) + shade(s, t) + shade(s, t, u);
    Oi = tint(s);
}
