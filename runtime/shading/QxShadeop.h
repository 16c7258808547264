#ifndef QX_SHADEOP_H
#define QX_SHADEOP_H

/* The interface of a library of shadeops, written in C or C++, to the compiler and to renderers.
 *
 * For a shadeop f a library exports a table, which the compiler and renderers read:
 *
 *     QX_SHADEOP_TABLE(f) = {
 *         {"float f(float)", "f_init", "f_cleanup"},
 *         {"float f(color, float[4])", "", ""},
 *         QX_SHADEOP_END
 *     };
 *
 * and the method, which a shader calls for each active point, or once if all arguments are uniform:
 *
 *     QX_SHADEOP_EXPORT void f(void* data, int argc, void** argv);
 *
 * `data` is the result of the init function, or null if there is none. `argv[0]` is the address of
 * the result, `argv[1]` that of the first argument, and so on; `argc` is the number of these
 * addresses.
 * All records of a table share one method, which can distinguish them only by `argc`, so the
 * overloads must differ in their number of arguments.
 *
 *     type                          argv[i] points to
 *     float                         one float
 *     color, point, vector, normal  three floats
 *     string                        a const char*
 *     array                         its elements, one after the other
 *
 * The result never shares its address with an argument. A method may write to an array of numbers.
 * The shader then sees the new values, unless it may not write to the array itself, which is then
 * passed as a copy. A method must not change any other argument. A string result remains the
 * property of the method and must be valid until the next call; the shader copies it. Several
 * threads may call a method at the same time, with the same `data`.
 */

/* This header must also be valid C. NOLINTNEXTLINE(modernize-use-using) */
typedef struct QxShadeop {
    const char* declaration; /* empty in the record that ends the table */
    const char* init;        /* name of a function `void* init(void)`; empty for none */
    const char* cleanup;     /* name of a function `void cleanup(void* data)`; empty for none */
} QxShadeop;

#ifdef __cplusplus
#define QX_SHADEOP_EXPORT extern "C" __attribute__((visibility("default")))
#define QX_SHADEOP_TABLE(name)                                                                     \
    extern "C" {                                                                                   \
    extern const QxShadeop name##_shadeops[] __attribute__((visibility("default")));               \
    }                                                                                              \
    const QxShadeop name##_shadeops[]
#else
#define QX_SHADEOP_EXPORT __attribute__((visibility("default")))
#define QX_SHADEOP_TABLE(name) QX_SHADEOP_EXPORT const QxShadeop name##_shadeops[]
#endif

/* clang-format off */
#define QX_SHADEOP_END {"", "", ""}
/* clang-format on */

#endif
