/*
 * A strip of square tiles for an imager: the number of the tile, x to the right and y up within it,
 * and the width of a pixel. CURVE draws a line where y is close to a value.
 */
#define STRIP(count)                                        \
    float format[3] = {1, 1, 1};                            \
    option("Format", format);                               \
    float across = (count) * xcomp(P) / format[0];          \
    float tile = floor(across);                             \
    float x = across - tile;                                \
    float y = 1 - ycomp(P) / format[1];                     \
    float pixel = 1 / format[1];                            \
    float border = x < 2 * pixel || x > 1 - 2 * pixel ? 1 : 0; \
    Oi = 1;                                                 \
    alpha = 1

/* Covers the part of a pixel column between two values of a curve, so that it has no gaps. */
#define CURVE(from, to, ink)                                                       \
    {                                                                              \
        float low = min(from, to) - pixel;                                         \
        float high = max(from, to) + pixel;                                        \
        Ci = mix(Ci, ink, smoothstep(low - pixel, low, y) * (1 - smoothstep(high, high + pixel, y))); \
    }
