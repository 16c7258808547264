/* The Mandelbrot set, colored by how soon a point escapes. */
surface mandelbrot(float centerX = -0.5; float centerY = 0; float size = 3;
                   uniform float iterations = 50; color inside = 0)
{
    float cx = centerX + size * (s - 0.5);
    float cy = centerY + size * (t - 0.5);
    float x = 0;
    float y = 0;
    float count = 0;

    while (count < iterations) {
        float square = x * x - y * y + cx;

        y = 2 * x * y + cy;
        x = square;
        if (x * x + y * y > 4)
            break;
        count += 1;
    }

    Oi = 1;
    if (count >= iterations)
        Ci = inside;
    else
        Ci = color "hsv" (count / iterations, 0.8, 1);
}
