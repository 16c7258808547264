surface localfunctions(float Kd = 0.8, bumps = 20, depth = 0.1; color base = color(0.8, 0.6, 0.4))
{
    float bump(float x, y)
    {
        return depth * sin(x * bumps) * sin(y * bumps);
    }

    normal bumped()
    {
        extern point P;
        extern normal N;
        extern float s, t;
        point moved = P + float noise(s, t) * normalize(N);
        return normalize(calculatenormal(moved));
    }

    void tint(output color c; float amount)
    {
        extern uniform color base;
        c = mix(c, base, amount);
    }

    color shade = Cs;
    tint(shade, 0.5);
    Ci = Os * shade * Kd * diffuse(faceforward(bumped(), I)) * (1 + bump(s, t));
    Oi = Os;
}
