/*
 * Drops on a pane, large ones first and small ones in between. Only the first drop that is
 * found has an effect, so drops do not merge; it bends the pane like a lens.
 */
displacement raindrops(float Km = 0.02; float drops = 5; uniform float sizes = 3;
                       float fullness = 0.6; output varying float wet = 0)
{
    uniform float i, j, k;
    float scale = drops;

    for (i = 0; i < sizes; i += 1) {
        float ss = floor(s * scale);
        float tt = floor(t * scale);

        for (j = -1; j <= 1; j += 1) {
            for (k = -1; k <= 1; k += 1) {
                float cs = ss + j;
                float ct = tt + k;

                if (float cellnoise(cs, ct + 100 * i) > fullness)
                    continue;

                point place = point cellnoise(cs, ct);
                float ds = s * scale - cs - xcomp(place);
                float dt = t * scale - ct - ycomp(place);
                float radius = 0.2 + 0.3 * zcomp(place);
                float square = (ds * ds + dt * dt) / (radius * radius);

                if (square < 1) {
                    wet = sqrt(1 - square) * radius / scale * drops;
                    break 3;
                }
            }
        }
        scale *= 2;
    }
    P += Km * wet * normalize(N);
    N = calculatenormal(P);
}
