// Only a shared object can pack numbers: without one, each such call is reported at its place.
float both(float x, y)
{
    return pack(x, y, 0, 1);
}

surface pack_in_byte_code()
{
    float r, g, b, a;

    unpack(both(s, t) + both(t, s), r, g, b, a);
    Ci = color(r, g, b) * pack(u, v, 0, a);
}
