/* Fractal terrain of ridges, with a slope mask as output. */
float ridged(point p; uniform float octaves, lacunarity, gain)
{
    float sum = 0, amplitude = 0.5, previous = 1;
    point q = p;
    uniform float i;
    for (i = 0; i < octaves; i += 1) {
        float n = 1 - abs(2 * noise(q) - 1);
        n *= n;
        sum += n * amplitude * previous;
        previous = n;
        amplitude *= gain;
        q *= lacunarity;
    }
    return sum;
}

displacement terrain(float height = 0.3, scale = 4; uniform float octaves = 8;
                     output varying float slope = 0)
{
    point PP = scale * transform("object", P);
    float h = ridged(PP, octaves, 2.1, 0.5);
    vector up = vtransform("object", "current", vector(0, 0, 1));
    P += height * h * normalize(N);
    N = calculatenormal(P);
    slope = 1 - abs(normalize(N) . normalize(up));
}
