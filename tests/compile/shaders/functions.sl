// Functions of numbers, points and colors, with uniform and varying arguments.
surface functions(float a = 0.5; point p = point (1, 2, 3); color k = color (1, 0.5, 0.2);)
{
    float x = radians(u) + degrees(a) + sin(u) + asin(v) + cos(a) + acos(u) + tan(u) + atan(u) + atan(u, a);
    x += pow(u, 2) + exp(u) + sqrt(v) + log(u + 1) + log(u + 1, 2) + mod(u, 0.3) + abs(u) + sign(v - a);
    x += min(u, v) + max(u, a) + clamp(u, 0, 1) + floor(u) + ceil(v) + round(u) + step(a, u) + inversesqrt(u + 1);
    x += smoothstep(0, 1, u) + smoothstep(a, 1, a) + smoothstep(u, 1, v) + min(u, v, a, 1) + max(u, v, 1);
    x += noise(u) + noise(u, v) + noise(P) + noise(P, u) + noise(a) + cellnoise(u) + cellnoise(u, v) + cellnoise(P) + cellnoise(P, u);
    x += pnoise(u, 2) + pnoise(u, v, 2, 3) + pnoise(P, p) + pnoise(P, u, p, 2) + random();
    color c = noise(u) + noise(u, v) + noise(P) + noise(P, a) + cellnoise(u) + cellnoise(P) + random();
    c += color cellnoise(u, v) + color cellnoise(P, v) + color pnoise(u, 2) + color pnoise(u, v, 2, 3) + color pnoise(P, p) + color pnoise(P, u, p, 2);
    point q = point noise(u) + point noise(u, v) + point noise(P) + point noise(P, u) + point random();
    q += point cellnoise(u) + point cellnoise(u, v) + point cellnoise(P) + point cellnoise(P, u);
    q += point pnoise(u, 2) + point pnoise(u, v, 2, 3) + point pnoise(P, p) + point pnoise(P, u, p, 2);
    q += clamp(P, p, q) + mix(P, p, u) + min(P, p) + max(P, p, q) + spline(u, p, P, p, q, P);
    c += clamp(c, k, 1) + mix(c, k, a) + mix(c, Cs, u) + min(c, k) + max(c, k, Cs) + spline(u, k, k, c, c, Cs);
    x += mix(u, v, a) + mix(u, v, s) + spline(u, 0, 0, 1, 1, a) + spline("bezier", u, 0, 0, 1, 1, a);
    c += spline("b-spline", v, k, k, c, c);
    x += P . N + k . c;
    x += length(I) + distance(P, p) + depth(P) + ptlined(p, q, P) + length(vector p);
    vector d = reflect(I, N) + refract(I, N, 1.5) + faceforward(N, I, N) + normalize(vector p) + (I ^ N) - -I;
    float kr, kt; vector r, t2; uniform float ur, ut;
    fresnel(I, N, 1.5, kr, kt); fresnel(I, N, 1.5, kr, kt, r, t2);
    x += Du(x) + Dv(u) + Deriv(x, v) + area(P) + kr + kt + Du(a) + filterstep(a, u) + filterstep(u, v, "width", s, "filter", "box") + filterstep(a, 0.2);
    d += Du(P) + Dv(q) + Deriv(P, u) + calculatenormal(P) + r + t2;
    c += Du(c) + Dv(Cs) + Deriv(c, u);
    if (v > 0.5) { x += Du(u) + noise(u) + filterstep(a, v); d = normalize(d); c = mix(c, k, a); }
    Ci = c + x + color q + color d + (a * p + 2 * P / 3 - 1 / P == 0 ? 1 : 0);
}
