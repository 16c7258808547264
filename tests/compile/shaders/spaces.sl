// Coordinate and color spaces, named and computed.
surface spaces(string to = "world"; point p = point "my space!" (1, 2, 3); color tone = color "hsv" 0.5;
               matrix m = matrix "world" 1; matrix k = matrix "object" (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);)
{
    color c = tone;
    point q = transform("shader", P) + transform("camera", "x-y", p) + transform(to, P);
    vector d = vtransform("shader", I) + vtransform("a b", to, I) + vtransform(m, vector p);
    normal n = ntransform("shader", N) + ntransform("shader", m, N) + ntransform(k, N);
    q += point "" (0, 0, 0) + point "current" (u, v, 0) + vector "raster" (u, v, 0) + transform("current", "current", P);
    if (u > 0.5) {
        q = transform("NDC", P);
        c = color "hsl" (u, v, 1) + ctransform("xyY", to, Cs) + ctransform("YIQ", "XYZ", c) + ctransform("xyY", Cs);
        n = ntransform("world", "shader", n);
        d = vector "é" (1, 0, u);
    }
    matrix w = matrix "shader" u;
    q += transform(w, q) + transform("world", w, P) + transform(inverse(translate(w, p)), P);
    q += transform(rotate(scale(w, p), u, d), rotate(q, 1, p, q));
    color h = ctransform("hsv", c) + ctransform("rgb", "xyz", Cs) + ctransform(to, Cs);
    setcomp(w, 1, 2, u); setcomp(h, 0, determinant(w)); setcomp(q, 1, comp(w, 3, 3)); setzcomp(q, 1);
    if (w == m || q != p || h == 1 || m != 1 || q == 0) h = 0;
    Ci = h + color q + comp(c, 1) + color(xcomp(d), ycomp(n), zcomp(q)) + distance(q, p);
    if (m / k * (w / 2) == 1 / m) Ci = -Ci;
}
