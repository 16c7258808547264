/* Shadeops for patterns.
 *
 *     cc -shared -fPIC -Iruntime/shading -o patterns.so examples/shadeops/patterns.c
 *
 * builds the library; woven.sl calls it. */

#include <stdlib.h>

#include "QxShadeop.h"

static float Fraction(float x)
{
    const float whole = (float)(long)x;
    return x < whole ? x - whole + 1 : x - whole;
}

/* wave(x): 0 at whole numbers, 1 halfway between them, and linear in between.
 * wave(x, height): the same, multiplied by the height. */

QX_SHADEOP_TABLE(wave) = {
    {"float wave(float)", "", ""},
    {"float wave(float, float)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void wave(void* data, int argc, void** argv)
{
    const float fraction = Fraction(*(const float*)argv[1]);
    const float height = argc > 2 ? *(const float*)argv[2] : 1;
    (void)data;
    *(float*)argv[0] = height * (fraction < 0.5f ? 2 * fraction : 2 - 2 * fraction);
}

/* ramp(x, colors): from the first color at 0 over the second at 0.5 to the third at 1. */

QX_SHADEOP_TABLE(ramp) = {
    {"color ramp(float, color[3])", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void ramp(void* data, int argc, void** argv)
{
    float* result = argv[0];
    const float(*colors)[3] = argv[2];
    float position = 2 * *(const float*)argv[1];
    int first, i;
    (void)data;
    (void)argc;
    position = position < 0 ? 0 : position > 2 ? 2 : position;
    first = position < 1 ? 0 : 1;
    for (i = 0; i < 3; ++i)
        result[i] =
            colors[first][i] + (position - first) * (colors[first + 1][i] - colors[first][i]);
}

/* dither(x, y): a threshold between 0 and 1 for each cell of a raster of four by four, which
 * repeats at whole numbers; neighbouring cells differ much (Bayer, "An optimum method for two-level
 * rendition of continuous-tone pictures", 1973). */

enum { k_side = 4 };

QX_SHADEOP_TABLE(dither) = {
    {"float dither(float, float)", "dither_init", "dither_cleanup"},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void* dither_init(void)
{
    static const int quarter[2][2] = {{0, 2}, {3, 1}};
    float* thresholds = malloc(k_side * k_side * sizeof *thresholds);
    int x, y;
    if (!thresholds)
        return NULL;
    for (y = 0; y < k_side; ++y)
        for (x = 0; x < k_side; ++x)
            thresholds[y * k_side + x] =
                (4 * quarter[y % 2][x % 2] + quarter[y / 2][x / 2] + 0.5f) / (k_side * k_side);
    return thresholds;
}

QX_SHADEOP_EXPORT void dither(void* data, int argc, void** argv)
{
    const float* thresholds = data;
    const int x = (int)(k_side * Fraction(*(const float*)argv[1]));
    const int y = (int)(k_side * Fraction(*(const float*)argv[2]));
    (void)argc;
    *(float*)argv[0] = thresholds ? thresholds[y % k_side * k_side + x % k_side] : 0.5f;
}

QX_SHADEOP_EXPORT void dither_cleanup(void* data)
{
    free(data);
}
