/*
 * Shows a named value of the surface as a color, for debugging: a unit vector as its direction, a
 * parameter as a ramp. If `verbose` is above 0, it prints once per grid which value it shows.
 */
surface inspect(string what = "normal"; string space = "world"; uniform float verbose = 0)
{
    color shown = color(1, 0, 1);

    if (what == "normal") {
        normal Nn = normalize(ntransform(space, N));

        shown = 0.5 * (color Nn + 1);
    } else if (what == "position")
        shown = color transform(space, P);
    else if (match("^[su][tv]$", what) == 1)
        shown = color(s, t, 0);
    else if (what == "opacity")
        shown = Os;
    else if (what == "facing") {
        float facing = -normalize(N) . normalize(I);

        shown = facing > 0 ? color(0, facing, 0) : color(-facing, 0, 0);
    } else
        printf("inspect: %s is not known\n", what);

    if (verbose > 0) {
        string title = concat("inspect: ", what, " in ", space);

        printf("%s, time %f\n", title, time);
    }
    Oi = 1;
    Ci = shown;
}
