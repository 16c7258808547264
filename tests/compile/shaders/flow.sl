// Conditions and loops, uniform and varying, with break and continue.
surface flow(float n = 5;)
{
    float twice(float x) { float y = x; if (x > 0.5) return x * 2; y += 1; }
    void both(float a; output float b; output color c) { b = a * 2; c = color(a, b, 1); }
    varying float i, j;
    float sum = 0;
    uniform float k = 0;
    color c = 0;
    while (k < n) { k += 1; sum += k; if (sum > 3 && u > 0.5) break; }
    for (i = 0; i < 4 * u; i += 1) {
        for (j = 0; j < 3; j += 1) {
            if (j > 2 * v) continue;
            if (i * j > 3) break 2;
            sum += i > j ? i : twice(j);
        }
        if (!(sum < 10) || s == t) continue 1;
        both(sum, sum, c);
    }
    if (n > 2) { if (u > v) sum = 1; else sum = -sum; } else sum = n;
    float picked = n > 3 ? sum : u;
    Ci = c + picked + ((u < 0.5 || v > 0.5) && n != 3 ? color 1 : Cs);
}
