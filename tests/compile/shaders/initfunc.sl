// Default values from functions, some of which have varying local variables.
float shape(uniform float x) { uniform float y = x * 2; uniform float z = noise(y); if (y > 3) z += y; return z + y; }
float plain(uniform float x) { varying float w = x; w += 1; if (w > 2) w = 3; return x; }
float half(float x) { return x / 2; }
float late(float x) { varying float y = x; if (y > 1) y = 2; return y; }
float loops(uniform float x) { uniform float y = 1; uniform float i; for (i = 0; i < 3; i += 1) y += i; return y; }
point move(uniform point p) { uniform point q = transform("shader", p); q = q + 1; return q; }
surface initfunc(float a = shape(2); float c = a; float d = plain(2); varying float e = late(3); uniform float list[2] = {half(1), shape(1)}; float f = loops(1); float g = half(f); point b = move(point (1, 2, 3));)
{
    Ci = a + c + d + e + list[1] + f + g + zcomp(b);
}
