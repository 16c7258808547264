/* Plain arithmetic of numbers, like the bodies of expanded functions. */
surface arithmetic(float a = 0.7, b = 0.31, c = 1.9)
{
    float x = s, y = t, z = s * t + a, w = s - t * b;
    y = y * b + z * x - c * z;
    w = w * c + z * x - a * z;
    w = w * a + y * x - c * y;
    w = w * b + z * y - c * z;
    y = y * c + x * z - b * x;
    x = x * a + z * w - c * z;
    x = x * b + y * w - b * y;
    w = w * b + z * y - c * z;
    w = w * a + x * y - a * x;
    y = y * b + w * x - c * w;
    w = w * b + z * y - c * z;
    w = w * c + z * y - c * z;
    w = w * b + z * x - c * z;
    x = x * c + y * w - b * y;
    x = x * c + z * w - c * z;
    z = z * a + y * x - b * y;
    w = w * a + x * y - b * x;
    Ci = color(x, y, z) * w;
    Oi = 1;
}
