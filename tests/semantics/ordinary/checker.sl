float square(float x, edge, width)
{
    return clamp((x - edge + width / 2) / width, 0, 1) - clamp((x - 1 + width / 2) / width, 0, 1);
}

surface checker(float freq = 4; color even = 0.1, odd = 0.9)
{
    float ss = freq * s, tt = freq * t;
    float width = max(abs(Du(ss) * du) + abs(Dv(ss) * dv), 0.0001);
    float a = square(mod(ss, 1), 0.5, width);
    float b = square(mod(tt, 1), 0.5, width);
    color mixed = mix(even, odd, a * (1 - b) + b * (1 - a));
    Ci = mixed * Os;
    Oi = Os;
}
