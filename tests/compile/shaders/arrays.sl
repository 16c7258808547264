// Elements of uniform and varying arrays, by uniform and varying index.
surface arrays(float knots[4] = {0, 0.25, 0.5, 1}; varying color tints[2] = {color(1, 0, 0), Cs};
               point path[2] = {point "object" (0, 0, 0), point "world" (1, 1, 1)};)
{
    uniform float flat[3] = {1, 2, 3};
    float deep[3] = {u, v, 1};
    color colors[2] = {0, 0};
    matrix frames[2];
    uniform float k;
    for (k = 0; k < 3; k += 1)
        flat[k] = flat[k] * 2;
    float at = floor(u * 2.99);
    deep[at] = flat[at] + knots[at];
    deep[1] += 1;
    colors[0] = tints[floor(v + 0.5)];
    colors[at / 2] = tints[1] * deep[at];
    frames[0] = 1;
    frames[1] = frames[0] * 2;
    point here = transform(frames[1], P) + path[1];
    setxcomp(here, 2);
    Ci = colors[0] + colors[1] + spline(u, knots) + color(comp(here, 0), deep[0], flat[2]);
    Ci *= spline("linear", v, tints) + comp(frames[1], 0, 1);
}
