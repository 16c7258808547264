/* Shadeops whose results show how they were called. */

#include <stddef.h>

#include "QxShadeop.h"

QX_SHADEOP_EXPORT int started = 0;
QX_SHADEOP_EXPORT int stopped = 0;

/* Returns how often it has been called since `start`. Tests also read `started` and `stopped`,
 * which count the calls of `start`, and those of `stop` with data. */

QX_SHADEOP_TABLE(tick) = {
    {"float tick(float)", "start", "stop"},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void* start(void)
{
    static int calls;
    calls = 0;
    ++started;
    return &calls;
}

QX_SHADEOP_EXPORT void stop(void* data)
{
    stopped += data != NULL;
}

QX_SHADEOP_EXPORT void tick(void* data, int argc, void** argv)
{
    (void)argc;
    *(float*)argv[0] = (float)++*(int*)data;
}

/* Overloads: the sum of two numbers, or of the given number of elements of an array. For an array
 * the result is written before its elements have been read. */

QX_SHADEOP_TABLE(sum) = {
    {"float sum(float[], float, string)", "", ""},
    {"float sum(float, float)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void sum(void* data, int argc, void** argv)
{
    float* result = argv[0];
    int i;
    (void)data;
    if (argc == 3) {
        *result = *(const float*)argv[1] + *(const float*)argv[2];
        return;
    }
    *result = 0;
    for (i = 0; i < (int)*(const float*)argv[2]; ++i)
        *result += ((const float*)argv[1])[i];
}

/* Returns the components in reverse order. Writes a part of the result before it has read the whole
 * argument. */

QX_SHADEOP_TABLE(swap) = {
    {"color swap(color)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void swap(void* data, int argc, void** argv)
{
    float* result = argv[0];
    const float* color = argv[1];
    (void)data;
    (void)argc;
    result[0] = color[2];
    result[1] = color[1];
    result[2] = color[0];
}

/* Reverses the array in place, and returns its new first element. */

QX_SHADEOP_TABLE(reverse) = {
    {"float reverse(float[3])", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void reverse(void* data, int argc, void** argv)
{
    float* array = argv[1];
    const float first = array[0];
    (void)data;
    (void)argc;
    array[0] = array[2];
    array[2] = first;
    *(float*)argv[0] = array[0];
}

/* Stores the number in the first element, and returns it. */

QX_SHADEOP_TABLE(store) = {
    {"float store(float[], float)", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void store(void* data, int argc, void** argv)
{
    (void)data;
    (void)argc;
    *(float*)argv[0] = ((float*)argv[1])[0] = *(const float*)argv[2];
}

/* Returns the longer of two texts, the second if they are equally long. */

QX_SHADEOP_TABLE(longer) = {
    {"string longer(string, string)", NULL, NULL},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void longer(void* data, int argc, void** argv)
{
    const char* first = *(const char**)argv[1];
    const char* second = *(const char**)argv[2];
    size_t i = 0;
    (void)data;
    (void)argc;
    while (first[i] && second[i])
        ++i;
    *(const char**)argv[0] = first[i] ? first : second;
}

/* Returns the sum of the numbers, and then overwrites all its arguments, which is forbidden. */

QX_SHADEOP_TABLE(spoil) = {
    {"float spoil(float, color, string, string[2])", "", ""},
    QX_SHADEOP_END,
};

QX_SHADEOP_EXPORT void spoil(void* data, int argc, void** argv)
{
    float* number = argv[1];
    float* color = argv[2];
    (void)data;
    (void)argc;
    *(float*)argv[0] = *number + color[0] + color[1] + color[2];
    *number = color[0] = color[1] = color[2] = 9;
    *(const char**)argv[3] = "spoilt";
    ((const char**)argv[4])[0] = ((const char**)argv[4])[1] = NULL;
    argv[0] = argv[1] = argv[2] = argv[3] = argv[4] = NULL;
}
