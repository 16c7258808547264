/* Calls with unexpected results: derivatives of uniform values and under varying conditions, and
   shader names. */
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
