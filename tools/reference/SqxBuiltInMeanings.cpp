// The purpose of each function, which no table of the compiler contains. The page takes its order
// and its chapters from here; a function of the library without a row is an error when the page is
// made.
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
    {"radians",      k_math,       "converts degrees to radians"},
    {"degrees",      k_math,       "converts radians to degrees"},
    {"sin",          k_math,       "sine of an angle in radians"},
    {"asin",         k_math,       "angle whose sine is the argument, in radians, from -PI/2 to PI/2"},
    {"cos",          k_math,       "cosine of an angle in radians"},
    {"acos",         k_math,       "angle whose cosine is the argument, in radians, from 0 to PI"},
    {"tan",          k_math,       "tangent of an angle in radians"},
    {"atan",         k_math,       "angle whose tangent is the argument, in radians, from -PI/2 to PI/2; `atan(y, x)`: angle of the direction (x, y), from -PI to PI"},
    {"pow",          k_math,       "`pow(x, y)`: x to the power of y"},
    {"exp",          k_math,       "e to the power of the argument"},
    {"sqrt",         k_math,       "square root"},
    {"inversesqrt",  k_math,       "1 divided by the square root"},
    {"log",          k_math,       "natural logarithm; `log(x, b)` to the base b"},
    {"mod",          k_math,       "`mod(a, b)`: the remainder of a divided by b"},
    {"abs",          k_math,       "absolute value"},
    {"sign",         k_math,       "-1, 0 or 1, as the argument is negative, zero or positive"},
    {"min",          k_math,       "least of its arguments, component by component"},
    {"max",          k_math,       "greatest of its arguments, component by component"},
    {"clamp",        k_math,       "`clamp(a, low, high)`: a, limited to the range from low to high"},
    {"mix",          k_math,       "`mix(a, b, x)`: linear interpolation, `a * (1 - x) + b * x`"},
    {"floor",        k_math,       "greatest whole number that is not above the argument"},
    {"ceil",         k_math,       "least whole number that is not below the argument"},
    {"round",        k_math,       "nearest whole number"},
    {"step",         k_math,       "`step(edge, x)`: 0 below the edge, 1 from it on"},
    {"smoothstep",   k_math,       "`smoothstep(low, high, x)`: 0 below low, 1 from high on, a smooth curve in between"},
    {"filterstep",   k_math,       "`filterstep(edge, s1 [, s2] [, \"filter\", f] [, \"width\", w])`: an antialiased step"},
    {"spline",       k_math,       "`spline([basis,] x, v1, ..., vn)`: a curve controlled by the values, at x from 0 to 1"},

    {"noise",        k_noise,      "smooth noise from 0 to 1 of one to four coordinates"},
    {"pnoise",       k_noise,      "`pnoise(x, px)`, `pnoise(x, y, px, py)`, `pnoise(p, pp)`, `pnoise(p, t, pp, pt)`: `noise` that repeats with the periods px, py, pp and pt"},
    {"cellnoise",    k_noise,      "one random value for each cell between whole numbers"},
    {"random",       k_noise,      "a random value from 0 up to, but not including, 1; a different one for each point and each call"},

    {"Du",           k_change,     "derivative by the surface parameter u"},
    {"Dv",           k_change,     "derivative by the surface parameter v"},
    {"Deriv",        k_change,     "`Deriv(a, b)`: derivative of a by b"},
    {"area",         k_change,     "area of the surface that a shading point represents"},
    {"calculatenormal", k_change,  "normal of the surface that the points form: `Du(p) ^ Dv(p)`"},

    {"length",       k_geometry,   "length of a vector"},
    {"normalize",    k_geometry,   "the vector of length 1 with the same direction"},
    {"distance",     k_geometry,   "distance of two points"},
    {"ptlined",      k_geometry,   "`ptlined(a, b, p)`: distance of p from the line segment between a and b"},
    {"faceforward",  k_geometry,   "`faceforward(n, i [, ng])`: n or -n, whichever faces against i"},
    {"reflect",      k_geometry,   "`reflect(i, n)`: the direction i, reflected at a surface with the normal n"},
    {"refract",      k_geometry,   "`refract(i, n, eta)`: the direction i, refracted at a surface with the normal n"},
    {"fresnel",      k_geometry,   "`fresnel(i, n, eta, kr, kt [, r, t])`: sets kr and kt to the factors of reflected and transmitted light, and r and t to the reflected and the refracted direction"},
    {"rotate",       k_geometry,   "`rotate(p, angle, a, b)`: p, rotated around the line from a to b; `rotate(m, angle, axis)`: the matrix of a rotation around an axis through the origin, followed by m"},
    {"transform",    k_geometry,   "`transform([from,] to, p)`: the coordinates of the point p in another space, which is given by name or matrix"},
    {"vtransform",   k_geometry,   "`transform` for a vector: without the translation"},
    {"ntransform",   k_geometry,   "`transform` for a normal: by the inverse transpose of the matrix"},
    {"depth",        k_geometry,   "depth of a point between the near and the far clipping plane, from 0 to 1"},

    {"xcomp",        k_components, "x of a point, vector or normal"},
    {"ycomp",        k_components, "y of a point, vector or normal"},
    {"zcomp",        k_components, "z of a point, vector or normal"},
    {"setxcomp",     k_components, "`setxcomp(p, x)`: sets x"},
    {"setycomp",     k_components, "`setycomp(p, y)`: sets y"},
    {"setzcomp",     k_components, "`setzcomp(p, z)`: sets z"},
    {"comp",         k_components, "`comp(c, i)`: component i of a color or point; `comp(m, row, column)`: element of a matrix; both counted from 0"},
    {"setcomp",      k_components, "`setcomp(c, i, x)`, `setcomp(m, row, column, x)`: sets the component to x"},
    {"ctransform",   k_components, "`ctransform([from,] to, c)`: the color c, converted to another color space"},
    {"inverse",      k_components, "the inverse matrix"},
    {"determinant",  k_components, "determinant of a matrix"},
    {"translate",    k_components, "`translate(m, t)`: a translation, followed by m"},
    {"scale",        k_components, "`scale(m, t)`: a scaling along the axes, followed by m"},
    {"pack",         k_components, "four numbers from 0 to 1 in one float, eight bits each"},
    {"unpack",       k_components, "`unpack(packed, a, b, c, d)`: sets four variables to what `pack` has packed"},

    {"ambient",      k_light,      "the sum of all ambient lights"},
    {"diffuse",      k_light,      "`diffuse(n)`: the light that arrives at a surface with the normal n, weighted by the cosine"},
    {"specular",     k_light,      "`specular(n, v, roughness)`: the highlights of all lights, seen from the direction v"},
    {"specularstd",  k_light,      "the same as `specular`"},
    {"specularbrdf", k_light,      "`specularbrdf(l, n, v, roughness)`: the factor that `specular` applies to light from the direction l"},
    {"phong",        k_light,      "`phong(n, v, size)`: the highlights of all lights by Phong's formula"},
    {"trace",        k_light,      "`trace(p, dir)`: as a float, the distance to what a ray hits; as a color, the light that comes along it"},
    {"transmission", k_light,      "`transmission(a, b)`: the share of light that passes between a and b"},
    {"occlusion",    k_light,      "`occlusion(p, n [, samples] [, name, value] ...)`: the covered share of the hemisphere above p"},
    {"indirectdiffuse", k_light,   "`indirectdiffuse(p, n [, samples] [, name, value] ...)`: the light that other surfaces scatter to p"},
    {"isshadowray",  k_light,      "1 if the shader runs to answer a shadow ray, else 0"},
    {"isindirectray", k_light,     "1 if the shader runs to answer a ray of indirect light, else 0"},
    {"raylevel",     k_light,      "number of bounces between the camera and this point: 0 for what the camera sees"},

    {"printf",       k_text,       "`printf(format, ...)`: prints the text that `format` would return"},
    {"format",       k_text,       "`format(format, ...)`: the format with each specifier replaced by an argument"},
    {"concat",       k_text,       "its arguments joined to one string"},
    {"match",        k_text,       "`match(pattern, text)`: 1 if the regular expression matches some part of the text, else 0"},

    {"attribute",    k_ask,        "`attribute(name, variable)`: asks for an attribute of the object"},
    {"option",       k_ask,        "`option(name, variable)`: asks for an option of the picture"},
    {"rendererinfo", k_ask,        "`rendererinfo(name, variable)`: asks for a fact about the renderer"},
    {"textureinfo",  k_ask,        "`textureinfo(texture, name, variable)`: asks for a fact about a texture"},
    {"surface",      k_ask,        "`surface(name, variable)`: asks for a parameter of the object's surface shader"},
    {"displacement", k_ask,        "`displacement(name, variable)`: asks for a parameter of its displacement shader"},
    {"atmosphere",   k_ask,        "`atmosphere(name, variable)`: asks for a parameter of its volume shader"},
    {"lightsource",  k_ask,        "`lightsource(name, variable)`: asks for a parameter of the light of an `illuminance` loop"},
    {"incident",     k_ask,        "`incident(name, variable)`: asks for a parameter of the volume shader in front of the surface"},
    {"opposite",     k_ask,        "`opposite(name, variable)`: asks for a parameter of the volume shader behind it"},
    {"shadername",   k_ask,        "always the empty string"},
};
// clang-format on

}  // namespace

std::span<const SqxBuiltInMeaning> SqxBuiltInMeanings()
{
    return k_meanings;
}
