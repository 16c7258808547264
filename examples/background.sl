/* Puts a color behind everything that does not cover its pixel. */
imager background(color bgcolor = color(0.2, 0.3, 0.5))
{
    Ci += (1 - alpha) * bgcolor;
    Oi = 1;
    alpha = 1;
}
