/* Varying conditions, one within the other. */
surface branches(float edge = 0.5; color warm = color(1, 0.7, 0.2); color cold = color(0.1, 0.3, 0.9))
{
    float x = mod(s * 7, 1), y = mod(t * 5, 1), k = 0;
    color c = Cs;
    if (x > edge) {
        k = x * y;
        if (y > edge) {
            c = warm * k;
            k += 0.25;
        } else {
            c = cold * (1 - k);
        }
    } else if (y > 0.25) {
        k = y - x;
        c = mix(warm, cold, k);
    }
    if (k > 0.3)
        c *= 0.5;
    Ci = c;
    Oi = 1;
}
