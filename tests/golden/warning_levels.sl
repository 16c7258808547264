// Variables that are read before they are set, at each warning level.
void accumulate(output color sum; color layer)
{
    sum = sum + layer;
}

surface stripes(float frequency = 8; color ink = 0)
{
    color total;
    float edge, depth;

    accumulate(total, Cs);
    if (mod(s * frequency, 1) < 0.5) {
        total *= ink;
        edge = 1;
    }
    Ci = total * edge + depth;
}
