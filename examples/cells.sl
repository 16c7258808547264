/*
 * Stones in a wall, leather, cracked mud: each point belongs to the nearest of some scattered
 * seeds. Loops over the neighboring cells look for the two nearest; layers of cells that are too
 * far away are skipped.
 */
surface cells(float Ka = 0.5; float Kd = 0.8; float frequency = 4; float jitter = 0.8;
              float gap = 0.1; color stone = color(0.6, 0.55, 0.5);
              color joint = color(0.15, 0.12, 0.1))
{
    point Pc = frequency * transform("shader", P);
    point corner = point(floor(xcomp(Pc)) + 0.5, floor(ycomp(Pc)) + 0.5, floor(zcomp(Pc)) + 0.5);
    float nearest = 100;
    float second = 100;
    point seed = corner;
    uniform float i, j, k;

    for (i = -1; i <= 1; i += 1) {
        if (abs(xcomp(corner) + i - xcomp(Pc)) - 0.5 * jitter > second)
            continue;
        for (j = -1; j <= 1; j += 1) {
            for (k = -1; k <= 1; k += 1) {
                point cell = corner + vector(i, j, k);
                point place = cell + jitter * (vector cellnoise(cell) - vector(0.5, 0.5, 0.5));
                float far = distance(place, Pc);

                if (far < nearest) {
                    second = nearest;
                    nearest = far;
                    seed = place;
                } else if (far < second)
                    second = far;
            }
        }
    }

    float within = smoothstep(0, gap, second - nearest);
    float shade = 0.75 + 0.5 * float cellnoise(seed);
    normal Nf = faceforward(normalize(N), I);

    Oi = Os;
    Ci = Os * mix(joint, stone * shade, within) * (Ka * ambient() + Kd * diffuse(Nf));
}
