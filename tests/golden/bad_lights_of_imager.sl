/* Calls that have no meaning in an imager, which only sees a finished picture. */
imager bad_lights_of_imager()
{
    illuminance (P)
        Ci += 1;
    solar ()
        Ci = 1;
    Ci += diffuse(normal P) + trace(P, I);
}
