/* A lens that darkens toward the corners of the picture. */
imager vignette(float strength = 0.5; float start = 0.3)
{
    uniform float size[3] = {640, 480, 1};

    if (option("Format", size) == 0)
        size[0] = 640;

    float x = xcomp(P) / size[0] - 0.5;
    float y = ycomp(P) / size[1] - 0.5;
    float out = sqrt(x * x + y * y) / sqrt(0.5);

    Ci *= 1 - strength * smoothstep(start, 1, out);
}
