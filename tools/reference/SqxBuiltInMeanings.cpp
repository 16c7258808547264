// What no table of the compiler tells of a function: what it is for. The page takes its order and
// its chapters from here; a function of the library without a row is an error when it is made.
//
// Tested by tests/reference/run.sh.

#include "reference/SqxBuiltInMeanings.h"

namespace {

constexpr std::string_view k_math = "Mathematics";
constexpr std::string_view k_noise = "Noise and random numbers";
constexpr std::string_view k_change = "Change from point to point";
constexpr std::string_view k_geometry = "Geometry";
constexpr std::string_view k_components = "Components, colors and matrices";
constexpr std::string_view k_light = "Light and rays";
constexpr std::string_view k_text = "Text";
constexpr std::string_view k_ask = "Questions to the renderer";

// clang-format off
//   name            group         meaning
constexpr SqxBuiltInMeaning k_meanings[] = {
    {"radians",      k_math,       "degrees as radians"},
    {"degrees",      k_math,       "radians as degrees"},
    {"sin",          k_math,       "sine of an angle in radians"},
    {"asin",         k_math,       "angle of a sine, from -PI/2 to PI/2"},
    {"cos",          k_math,       "cosine of an angle in radians"},
    {"acos",         k_math,       "angle of a cosine, from 0 to PI"},
    {"tan",          k_math,       "tangent of an angle in radians"},
    {"atan",         k_math,       "angle of a tangent; with two arguments `atan(y, x)`, the angle of the point (x, y), from -PI to PI"},
    {"pow",          k_math,       "`pow(x, y)`: x to the power of y"},
    {"exp",          k_math,       "e to the power of the argument"},
    {"sqrt",         k_math,       "square root"},
    {"inversesqrt",  k_math,       "1 divided by the square root"},
    {"log",          k_math,       "natural logarithm; `log(x, b)` to the base b"},
    {"mod",          k_math,       "`mod(a, b)`: what is left of a behind the greatest whole multiple of b below it"},
    {"abs",          k_math,       "absolute value"},
    {"sign",         k_math,       "-1, 0 or 1, as the argument is negative, zero or positive"},
    {"min",          k_math,       "least of its arguments, component by component"},
    {"max",          k_math,       "greatest of its arguments, component by component"},
    {"clamp",        k_math,       "`clamp(a, low, high)`: a, held between low and high"},
    {"mix",          k_math,       "`mix(a, b, x)`: a where x is 0, b where it is 1, in proportion between"},
    {"floor",        k_math,       "greatest whole number that is not above the argument"},
    {"ceil",         k_math,       "least whole number that is not below the argument"},
    {"round",        k_math,       "nearest whole number"},
    {"step",         k_math,       "`step(edge, x)`: 0 below the edge, 1 from it on"},
    {"smoothstep",   k_math,       "`smoothstep(low, high, x)`: 0 below low, 1 above high, a smooth curve between"},
    {"filterstep",   k_math,       "`filterstep(edge, s1)`: a step, averaged over the stretch that the point covers; `filterstep(edge, s1, s2)` over the stretch from s1 to s2; pairs such as `\"filter\", \"gaussian\"` or `\"width\", 2` behind"},
    {"spline",       k_math,       "`spline([basis,] x, v1, ..., vn)`: the curve through the values at x from 0 to 1"},

    {"noise",        k_noise,      "smooth noise from 0 to 1 of one to four coordinates"},
    {"pnoise",       k_noise,      "the same, repeating with the periods given behind the coordinates"},
    {"cellnoise",    k_noise,      "a random value for each cell between whole numbers"},
    {"random",       k_noise,      "a random value from 0 to 1, another each time"},

    {"Du",           k_change,     "derivative in the direction of u"},
    {"Dv",           k_change,     "derivative in the direction of v"},
    {"Deriv",        k_change,     "`Deriv(a, b)`: change of a with a change of b"},
    {"area",         k_change,     "area of the surface that a shading point stands for"},
    {"calculatenormal", k_change,  "normal of the surface that the points form"},

    {"length",       k_geometry,   "length of a vector"},
    {"normalize",    k_geometry,   "the vector with length 1"},
    {"distance",     k_geometry,   "distance of two points"},
    {"ptlined",      k_geometry,   "`ptlined(a, b, p)`: distance of p from the line between a and b"},
    {"faceforward",  k_geometry,   "`faceforward(n, i [, ng])`: n, turned against i as ng tells; ng is `Ng` unless given"},
    {"reflect",      k_geometry,   "`reflect(i, n)`: the direction i, reflected about n"},
    {"refract",      k_geometry,   "`refract(i, n, eta)`: the direction i, refracted at n; zero on total reflection"},
    {"fresnel",      k_geometry,   "`fresnel(i, n, eta, kr, kt [, r, t])`: sets the shares of reflected and transmitted light and, if wanted, both directions"},
    {"rotate",       k_geometry,   "`rotate(p, angle, a, b)`: p, rotated about the line from a to b; `rotate(m, angle, axis)`: a rotation about the axis, followed by the matrix m"},
    {"transform",    k_geometry,   "`transform([from,] to, p)`: the point p of one space in another, by name or matrix"},
    {"vtransform",   k_geometry,   "the same for a vector"},
    {"ntransform",   k_geometry,   "the same for a normal"},
    {"depth",        k_geometry,   "distance from the near to the far clipping plane, as 0 to 1"},

    {"xcomp",        k_components, "x of a point, vector or normal"},
    {"ycomp",        k_components, "y of a point, vector or normal"},
    {"zcomp",        k_components, "z of a point, vector or normal"},
    {"setxcomp",     k_components, "sets x"},
    {"setycomp",     k_components, "sets y"},
    {"setzcomp",     k_components, "sets z"},
    {"comp",         k_components, "`comp(c, i)`: component i of a color or point, counted from 0; `comp(m, row, column)` of a matrix"},
    {"setcomp",      k_components, "sets a component"},
    {"ctransform",   k_components, "`ctransform([from,] to, c)`: the color c of one color space in another"},
    {"inverse",      k_components, "the inverse matrix"},
    {"determinant",  k_components, "determinant of a matrix"},
    {"translate",    k_components, "`translate(m, t)`: a translation, followed by m"},
    {"scale",        k_components, "`scale(m, t)`: a scaling along the axes, followed by m"},
    {"pack",         k_components, "four numbers as one; only in shared objects' sources"},
    {"unpack",       k_components, "sets four variables to what `pack` has packed"},

    {"ambient",      k_light,      "light that comes from everywhere"},
    {"diffuse",      k_light,      "`diffuse(n)`: light of all lights, scattered evenly by a surface with normal n"},
    {"specular",     k_light,      "`specular(n, v, roughness)`: highlights of all lights, seen from v"},
    {"specularstd",  k_light,      "the same"},
    {"specularbrdf", k_light,      "`specularbrdf(l, n, v, roughness)`: share of light from l that goes to v"},
    {"phong",        k_light,      "`phong(n, v, size)`: highlights after Phong"},
    {"trace",        k_light,      "`trace(p, dir)`: as float the distance to what a ray hits, as color what it brings, with the distance in a third argument if wanted"},
    {"transmission", k_light,      "`transmission(a, b)`: how much light passes from a to b"},
    {"occlusion",    k_light,      "`occlusion(p, n [, samples])`: covered share of the hemisphere over p; pairs such as `\"maxdist\", 10` behind"},
    {"indirectdiffuse", k_light,   "`indirectdiffuse(p, n [, samples])`: light that other surfaces scatter to p; pairs behind"},
    {"isshadowray",  k_light,      "1 while a shadow ray is answered"},
    {"isindirectray", k_light,     "1 while a ray of indirect light is answered"},
    {"raylevel",     k_light,      "number of bounces that led here"},

    {"printf",       k_text,       "prints its arguments as the format says: `%f`, `%d`, `%s`, `%c` for colors, `%p` for points, `%m` for matrices"},
    {"format",       k_text,       "the text that `printf` would print"},
    {"concat",       k_text,       "its arguments, one behind the other"},
    {"match",        k_text,       "`match(pattern, text)`: 1 if the pattern, an extended regular expression, is found in the text"},

    {"attribute",    k_ask,        "`attribute(name, variable)`: sets the variable to an attribute of the object; 0 if there is none"},
    {"option",       k_ask,        "the same for an option of the renderer"},
    {"rendererinfo", k_ask,        "the same for a fact about the renderer"},
    {"textureinfo",  k_ask,        "`textureinfo(texture, name, variable)`: the same for a fact about a texture"},
    {"surface",      k_ask,        "the same for a parameter of the object's surface shader"},
    {"displacement", k_ask,        "the same for its displacement shader"},
    {"atmosphere",   k_ask,        "the same for its volume shader"},
    {"lightsource",  k_ask,        "the same for the light shader of a light loop"},
    {"incident",     k_ask,        "the same for the volume in front of the surface"},
    {"opposite",     k_ask,        "the same for the volume behind it"},
    {"shadername",   k_ask,        "name of this shader, or of the object's shader of a kind"},
};
// clang-format on

}  // namespace

std::span<const SqxBuiltInMeaning> SqxBuiltInMeanings()
{
    return k_meanings;
}
