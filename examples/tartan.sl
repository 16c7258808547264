/*
 * Woven cloth from a list of stripes. Threads in both directions follow the same list, and the
 * twill shows one or the other.
 */
#define STRIPES 5

/* The color of the thread at a position of the pattern, and the position in its stripe. */
void findthread(float place; uniform float widths[]; color colors[]; output color thread;
                output float within)
{
    uniform float i;
    float end = 0;

    thread = colors[0];
    within = 0;
    for (i = 0; i < STRIPES; i += 1) {
        if (place < end + widths[i]) {
            thread = colors[i];
            within = (place - end) / widths[i];
            break;
        }
        end += widths[i];
    }
}

surface tartan(float Ka = 0.6; float Kd = 0.8; float repeats = 3; float threads = 200;
               uniform float widths[STRIPES] = {0.3, 0.05, 0.3, 0.05, 0.3};
               color colors[STRIPES] = {color(0.6, 0.05, 0.05), color(0.9, 0.9, 0.8),
                                        color(0.05, 0.1, 0.3), color(0.9, 0.8, 0.1),
                                        color(0.05, 0.2, 0.1)})
{
    color warp = 0;
    color weft = 0;
    float within = 0;

    findthread(mod(s * repeats, 1), widths, colors, warp, within);
    findthread(mod(t * repeats, 1), widths, colors, weft, within);

    /* Each thread passes over two and under two, one further in each row. */
    float over = mod(floor(s * threads) + floor(t * threads), 4);
    color cloth = over < 2 ? warp : weft;

    normal Nf = faceforward(normalize(N), I);

    Oi = Os;
    Ci = Os * cloth * (Ka * ambient() + Kd * diffuse(Nf));
}
