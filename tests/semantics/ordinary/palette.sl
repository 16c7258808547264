float nearest(color c; color colors[]; uniform float count)
{
    float best = 0;
    float distance = 1000;
    uniform float i;
    for (i = 0; i < count; i += 1) {
        color d = c - colors[i];
        float now = comp(d, 0) * comp(d, 0) + comp(d, 1) * comp(d, 1) + comp(d, 2) * comp(d, 2);
        if (now < distance) {
            distance = now;
            best = i;
        }
    }
    return best;
}

surface palette(uniform color colors[4] = {color(1, 0, 0), color(0, 1, 0), color(0, 0, 1), 1};
                uniform float weights[] = {1, 0.5, 0.25})
{
    uniform float total = 0, i;
    for (i = 0; i < 3; i += 1)
        total += weights[i];
    color mine[4] = {colors[0], colors[1], colors[2], colors[3]};
    mine[3] = Cs / total;
    float k = nearest(Cs * noise(s, t), mine, 4);
    Ci = mine[k] * Os;
    Oi = Os;
}
