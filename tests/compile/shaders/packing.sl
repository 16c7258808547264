surface packing(output varying float whole = 0)
{
    float r, g, b, a;
    whole = pack(u, v, s, t);
    unpack(whole, r, g, b, a);
    if (v > 0.5)
        unpack(whole, a, b, g, r);
    Ci = color(r, g, b) + a;
}
