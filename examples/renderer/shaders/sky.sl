/* Draws a map of a sky for other shaders: clouds, and a ground below the horizon. */
imager sky(float covered = 0.45; color zenith = color(0.16, 0.36, 0.75);
           color horizon = color(0.75, 0.85, 0.95); color ground = color(0.32, 0.28, 0.22))
{
    float format[3] = {1, 1, 1};
    option("Format", format);
    float around = 2 * PI * (xcomp(P) / format[0] - 0.5);
    float down = PI * ycomp(P) / format[1];
    float height = cos(down);
    vector direction = vector(sin(down) * sin(around), height, -sin(down) * cos(around));

    if (height > 0) {
        point place = point(direction / (height + 0.12)) * 1.7;
        float cloud = 0;
        float size = 1;
        uniform float i;
        for (i = 0; i < 5; i += 1) {
            cloud += float noise(place * size) / size;
            size *= 2;
        }
        cloud = smoothstep(1 - covered, 1.5 - covered, cloud / 1.9 + 0.12);
        Ci = mix(mix(horizon, zenith, sqrt(height)), color 0.95, cloud * smoothstep(0, 0.3, height));
    } else {
        Ci = mix(horizon * 0.7, ground, smoothstep(0, 0.15, -height));
    }
    Oi = 1;
    alpha = 1;
}
