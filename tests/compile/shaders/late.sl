// Default values of every type that need shading data.
surface late(varying float a = noise(u); varying color c = color "hsv" (u, 1, 1) * Cs;
             varying point p = transform("shader", P) + point "my space" (u, v, 0);
             varying vector d = normalize(I); varying matrix m = matrix(u);
             varying float list[2] = {u, v}; string name = format("%f", zcomp(E));
             uniform float depth = zcomp(E); float after = depth * 2;
             varying color around = ambient(); varying float wave = Du(u) + random();
             string fixed = "late"; varying float sum = a + after;)
{
    Ci = c + around + color(a, list[1], wave) + sum;
    Oi = length(d) * zcomp(transform(m, p));
}
