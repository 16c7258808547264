/*
 * Metallic paint: a base whose color changes with the view, flakes that flash one by one, and a
 * clear coat that reflects more at grazing angles.
 */
surface carpaint(float Ka = 1; float Kd = 0.6; float Kflakes = 0.5; float Kcoat = 1;
                 float roughness = 0.05; uniform float ior = 1.5; float flakesize = 0.02;
                 color facecolor = color(0.6, 0.02, 0.05); color edgecolor = color(0.2, 0, 0.15);
                 string surroundings = "")
{
    normal Nf = faceforward(normalize(N), I);
    vector V = -normalize(I);
    float facing = Nf . V;
    color base = mix(edgecolor, facecolor, facing);

    color highlight(normal Nlayer; float rough)
    {
        extern vector V;

        return specular(Nlayer, V, rough);
    }

    /* Each cell contains one flake, tilted by up to a quarter of the normal's length. */
    vector tilt = vector cellnoise(transform("shader", P) / flakesize) - vector(0.5, 0.5, 0.5);
    normal Nflake = normalize(Nf + 0.5 * tilt);
    color flash = Kflakes * base * highlight(Nflake, 0.1);

    float mirrored = 0;
    float passed = 0;
    fresnel(-V, Nf, 1 / ior, mirrored, passed);
    color coat = highlight(Nf, roughness);
    if (surroundings != "")
        coat += color environment(surroundings, reflect(-V, Nf), "blur", 0.01);

    Oi = 1;
    Ci = (1 - mirrored) * (base * (Ka * ambient() + Kd * diffuse(Nf)) + flash) +
         Kcoat * mirrored * coat;
}
