/* Draws a map of a globe's height: noise of seven octaves, brighter where the ground is higher. */
imager relief(float frequency = 2.2)
{
    float format[3] = {1, 1, 1};
    option("Format", format);
    float around = 2 * PI * (xcomp(P) / format[0] - 0.5);
    float down = PI * ycomp(P) / format[1];
    point place = point(sin(down) * sin(around), cos(down), -sin(down) * cos(around));
    float height = 0;
    float size = 1;
    uniform float i;

    for (i = 0; i < 7; i += 1) {
        height += (float noise(place * frequency * size + vector 7) - 0.5) / size;
        size *= 2;
    }
    Ci = clamp(0.5 + height, 0, 1);
    Oi = 1;
    alpha = 1;
}
