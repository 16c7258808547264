void density(point PP; output float d; output color glow)
{
    d = smoothstep(0.3, 0.8, noise(PP * 3));
    glow = 0;
    illuminance(PP) {
        glow += Cl * d;
    }
}

volume smoke(float opacity = 0.5; uniform float stepsize = 0.1, maxsteps = 100)
{
    point origin = P - I;
    vector direction = normalize(I);
    float end = length(I);
    float pos = stepsize * random();
    color total = 0;
    float covered = 0;
    uniform float count = 0;
    while (pos < end) {
        float d = 0;
        color glow = 0;
        density(origin + pos * direction, d, glow);
        d *= opacity * stepsize;
        if (d <= 0) {
            pos += stepsize;
            continue;
        }
        total += (1 - covered) * d * glow;
        covered += (1 - covered) * d;
        pos += stepsize;
        if (covered > 0.99)
            break;
    }
    Ci = total + (1 - covered) * Ci;
    Oi = (color covered) + (1 - covered) * Oi;
}
