surface messages(float Kd = 1; string handle = "sun")
{
    uniform float bump = 0;
    uniform string name = "";
    uniform color skycolor = 0;
    varying float wet = 0;
    if (displacement("bump", bump) != 0)
        printf("bump is %f\n", bump);
    if (attribute("identifier:name", name) == 1 && match("rock", name) == 1)
        wet = 0.5;
    if (option("user:sky", skycolor) == 0)
        skycolor = color "hsv" (0.6, 0.5, 1);
    string label = concat(handle, "_", name);
    string text = format("%s at %p has %c", label, P, Cs);
    printf("%s\n", text);
    color sum = 0;
    illuminance(P, N, PI / 2) {
        float nodiffuse = 0;
        lightsource("nodiffuse", nodiffuse);
        sum += Cl * (1 - nodiffuse) * (normalize(L) . normalize(N));
    }
    Ci = Os * (Cs * Kd * sum + wet * skycolor);
    Oi = Os;
}
