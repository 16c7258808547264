/* Cloth woven of three yarns, worn down to holes by dithering. Its patterns are the shadeops of
   patterns.c. */
surface woven(float threads = 2; float wear = 0.25)
{
    color yarns[3];
    yarns[0] = color(0.5, 0, 0);
    yarns[1] = color(0, 0.5, 0) * t;
    yarns[2] = color(0, 0, 1);

    Oi = 1;
    if (dither(s * threads, t * threads) < wear)
        Oi = 0;
    Ci = Oi * wave(t * threads, 0.5) * ramp(wave(s), yarns);
}
