surface sky(color low = color(0.7, 0.8, 1), high = color(0.1, 0.2, 0.7); float clouds = 0.5;
            uniform float samples = 16)
{
    matrix turned = rotate(1, radians(30), vector(0, 0, 1));
    point PP = transform(turned, transform("world", P));
    float cover = 0, f = 1;
    uniform float i;
    for (i = 0; i < 5; i += 1) {
        cover += (noise(PP * f) - 0.5) / f;
        f *= 2;
    }
    float opening = occlusion(P, normalize(N), samples, "maxdist", 100, "angle", PI / 2);
    color base = mix(low, high, clamp(zcomp(normalize(vector PP)), 0, 1));
    Ci = mix(base, color(1), smoothstep(1 - clouds, 1, cover + 0.5)) * (1 - opening);
    Oi = 1;
}
