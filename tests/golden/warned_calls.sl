/* Calls that give less than they seem to: derivatives of what is the same everywhere, or under a
   condition that leaves out neighbors; and names of shaders. */
surface warned_calls(float k = 1; point q = 0; color c = 0)
{
    float a = Du(k) + Dv(k) + Deriv(k, u) + Deriv(u, k) + area(q);
    vector d = Du(q) + Dv(q) + Deriv(q, u) + calculatenormal(q);
    color e = Du(c) + Dv(c) + Deriv(Cs, k);

    if (shadername() == shadername("surface"))
        a += 1;
    if (s > 0.5) {
        a += Du(u) + Dv(u) + Deriv(u, v) + area(P);
        N = calculatenormal(P);
    }
    Ci = e + a + color d;
}
