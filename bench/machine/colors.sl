/* Plain arithmetic of colors. */
surface colors(color a = color(0.7, 0.2, 0.4); color b = color(0.31, 0.9, 0.1); float k = 0.3)
{
    color x = Cs * a, y = Cs + b, z = Cs - a * b, w = Cs;
    x = x * y + z * k;
    y = mix(x, y, s) - w * b;
    z = z * x + y * t;
    w = w * k + x * y;
    x = x - w * a + b;
    y = y * z + mix(w, x, t);
    z = z * (1 - s) + w * y;
    w = mix(x, z, k) * y + w;
    x = x * a + y * b + z * k;
    y = y - x * w + Cs;
    Ci = x + y * z - w;
    Oi = Os * w;
}
