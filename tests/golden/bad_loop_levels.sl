/* Statements break and continue outside of loops, or for more loops than there are. */
surface bad_loop_levels(float n = 3)
{
    uniform float i, j;

    break;
    if (s > 0.5)
        continue;
    illuminance (P)
        break;
    for (i = 0; i < n; i += 1) {
        break 2;
        continue 2;
        break 0;
        illuminance (P) {
            if (t > 0.5)
                break 2;
        }
        for (j = 0; j < n; j += 1)
            if (t > 0.5)
                continue 3;
    }
    while (n > 2)
        continue 0;
    Ci = 0;
}
