/* Few flat colors instead of many: value and saturation in steps, with unchanged hue. */
imager posterize(float steps = 4)
{
    color hsv = ctransform("hsv", Ci);

    setcomp(hsv, 1, round(comp(hsv, 1) * steps) / steps);
    setcomp(hsv, 2, round(comp(hsv, 2) * steps) / steps);
    Ci = ctransform("hsv", "rgb", hsv);
}
