imager grade(color tint = color (1, 0.9, 0.8); varying float late = alpha;)
{
    Ci = Ci * tint + (1 - alpha) * late;
    Oi = 1;
    alpha = 1;
}
