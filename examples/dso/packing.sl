// options: --dso -c
/* Packs four small numbers into one; only shared objects have these functions. */
surface packing(output varying float packed = 0)
{
    float first = 0;
    float second = 0;
    float third = 0;
    float fourth = 0;

    packed = pack(s, t, u, v);
    unpack(packed, first, second, third, fourth);

    Oi = fourth;
    Ci = color(first, second, third);
}
