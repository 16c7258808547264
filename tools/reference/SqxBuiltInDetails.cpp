// What a writer of shaders must know beyond the one-line meaning of a function: units, ranges,
// spaces, border cases, which arguments must be normalized, and defaults of optional arguments.
//
// Tested in part by the examples in SqxBuiltInExamples.cpp.

#include <algorithm>

#include "reference/SqxBuiltInMeanings.h"

namespace {

struct Details {
    std::string_view function;
    std::string_view text;  // Markdown, whole sentences
};

constexpr Details k_details[] = {
    {"pow",
     R"(The result is 0 for a base of 0 with any exponent, and for a negative base with an exponent that is
not a whole number.)"},
    {"exp", R"(The result is infinite above 88.7, since numbers have single precision.)"},
    {"sqrt", R"(The result is 0 for a negative argument.)"},
    {"inversesqrt", R"(The result is 0 for an argument of 0 or less.)"},
    {"log",
     R"(The result is 0 for an argument of 0 or less, and for a base of 0 or less or of 1.)"},
    {"mod",
     R"(The result is from 0 up to, but not including, the absolute value of b, also if a or b is negative.
The quotient has single precision: if a is a multiple of b, the result can be b, or nearly b, instead
of 0. If that matters, test whether `abs(a / b - round(a / b))` is small, or add half a step to a first.)"},
    {"min",
     R"(It takes two or more arguments. Colors and points are compared component by component.)"},
    {"max",
     R"(It takes two or more arguments. Colors and points are compared component by component.)"},
    {"clamp",
     R"(Colors and points are clamped component by component. A bound may be a float, which is used as
three equal components.)"},
    {"mix",
     R"(x is not clamped. Colors and points are mixed component by component; directions are not rotated.)"},
    {"round", R"(Halves are rounded up, also below 0.)"},
    {"smoothstep",
     R"(The curve is `3 t t - 2 t t t`, for t from 0 at low to 1 at high: its slope is 0 at
both ends. low must be less than high; for a falling curve use `1 - smoothstep(low, high, x)`.)"},
    {"filterstep",
     R"(The step from 0 below the edge to 1 above it is averaged over an interval: from s1 to
s2, or, without s2, over the range of s1 that the shading point covers. This range is centered on the point, and
its length is the change of s1 to the next point in u plus the change to the next point in v. So a stripe has the
same position at every resolution.

`"width"` is a factor for the length of the interval, 1 by default. `"filter"` is one of these, each
of which is scaled so that the interval has the length 1:

| Filter | Weights | Result |
|---|---|---|
| `"box"` | equal in the interval | 0 to 1 |
| `"triangle"` | falling to 0 at the distance 1 from the middle | 0 to 1 |
| `"gaussian"` | a Gaussian with the standard deviation 0.5 | 0 to 1 |
| `"catmull-rom"` | a cubic with the radius 2, negative beyond 1; the default | about -0.04 to 1.04: clamp it, or use another filter |

Any other name selects the default. Names and values come last, in any order.

![The four filters](images/filterstrip.png)

"box", "triangle", "gaussian" and "catmull-rom" over an interval of 0.3, from 0.5 before the edge to 0.5 after it
([`filterstrip`](../examples/strips/filterstrip.sl)).)"},
    {"spline",
     R"(It takes at least four values, as arguments or as an array. x is clamped to 0 to 1, and all segments
have the same share of this range. The basis determines the *step*: the number of values from the start of one
segment to that of the next. Values after the last complete segment are ignored.

| Basis | Step | Segment of the values a b c d | Number of values |
|---|---|---|---|
| `"catmull-rom"`, the default | 1 | from b to c; a and d determine the slopes | 4, 5, 6, ... |
| `"bezier"` | 3 | from a to d; b and c attract the curve | 4, 7, 10, ... |
| `"bspline"` | 1 | near b and c, smoother than the others; the curve does not pass through the values | 4, 5, 6, ... |
| `"hermite"` | 2 | from a to c, with the slopes b and d | 4, 6, 8, ... |
| `"linear"` | 1 | a straight line from b to c | 4, 5, 6, ... |
| `"power"` | 4 | `a x x x + b x x + c x + d` | 4, 8, 12, ... |

So with `"catmull-rom"`, `"bspline"` and `"linear"` the first and the last value only influence the ends: pass
them twice if the curve must start and end there. The curve of `"catmull-rom"` can leave the range of its
values. Any other name selects the default. The basis may be a variable.

![The same values in five bases](images/splinestrip.png)

"catmull-rom", "bspline", "linear", "bezier" and "hermite", whose slopes are not shown, through eight values
([`splinestrip`](../examples/strips/splinestrip.sl)).)"},

    {"noise",
     R"(Gradient noise with a lattice at the whole numbers: the value is 0.5 wherever all coordinates
are whole, so scale and shift a pattern that looks flat. The mean is 0.5; nine of ten values lie from 0.25 to
0.75, with a standard deviation of 0.14 to 0.15, and extremes near 0 and 1 are rare. Features have the
size of about one unit, and first and second derivatives are continuous. The same arguments have the same value
in every run. Coordinates beyond 10^9 are clamped to it; numbers above 2^23 have no fractions.

The components of a color or a point are three independent noises, which differ from the noise of a float. If the
context does not determine the type, use a cast: `float noise(P)`. For values around 0 write `2 * noise(P) - 1`;
for octaves, add `noise(P * f) / f` for f = 1, 2, 4, ....

![Noise in five tiles](images/noisestrip.png)

`float noise`, `color noise`, octaves of `abs(2 * noise - 1)`, `pnoise` with the period 3 and `color cellnoise`, over six
units each ([`noisestrip`](../examples/strips/noisestrip.sl)).)"},
    {"pnoise",
     R"(Mean, spread and lattice are those of `noise`. A period is rounded to a whole number of at least
1. From 0 up to the last cell of the first period the value is that of `noise`.)"},
    {"cellnoise",
     R"(The cell of a coordinate is its `floor`, in each dimension. Values are from 0 up to, but
not including, 1, evenly distributed, and independent from cell to cell. The components of a color or a point
are independent too.)"},
    {"random",
     R"(The number depends on the seed of the scene, the number of the run, the type of the shader, the number
of the point in its grid, and how many numbers the point has drawn in this run; a triple draws three. The renderer
sets seed and run, which are 0 by default. So the same seed leads to the same picture, with any number of threads,
in byte-code and in shared objects. A uniform result, as in `uniform float r = random()`, is one number for all
points. Whether a call is uniform depends on the variable to which the whole expression is assigned. So to pass a
random number to a `uniform` formal of a function whose result varies, assign it to a uniform variable first. In an
ambient light the point is the one that is lit. A default value that is computed once for an instance depends only
on the seed. Use `cellnoise` for values that must stay at the same place of a surface.)"},

    {"Du",
     R"(The change from point to point divided by `du`, by central differences inside the grid. At a border
of the grid, or of the points for which the condition around the call holds, the differences are one-sided: of
second order over three points if there are three, otherwise over two, and 0 for a single point. The derivative
of a uniform value is 0. Multiply by `du` for the change from one point to the next.)"},
    {"Dv", R"(As `Du`, with `dv`.)"},
    {"Deriv",
     R"(The changes of a along u and v, weighted by those of b: the derivative in the direction in
which b changes most. `Deriv(a, u)` is `Du(a)`. The result is 0 where b does not change. Differences are those of `Du`.)"},
    {"area",
     R"(The area is in square units of the space of the points. A point inside the grid represents the
parallelogram of its changes along u and v, and a point at a border only the part inside the grid, so that the sum
over a grid is the area of its surface. `sqrt(area(P))` is a suitable size for antialiasing.)"},
    {"calculatenormal",
     R"(The result does not have length 1: normalize it. It points to the side that follows from u and v by
the right-hand rule, as `Ng` does. Differences are those of `Du`. After moving `P`, write `N = calculatenormal(P)`.)"},

    {"length",
     R"(The result is correct for any length that a float can represent, even if the squares of the components overflow.)"},
    {"normalize", R"(A vector of length 0 is returned unchanged.)"},
    {"ptlined", R"(Beyond the ends of the segment the result is the distance from the end.)"},
    {"faceforward",
     R"(The result is -n if `i . ng` is positive, else n; ng is `Ng` by default. The direction of n has no
influence on this, and none of the vectors needs length 1.)"},
    {"reflect",
     R"(`i - 2 (i . n) n`. n must have length 1; the result has the length of i. i points to the
surface, like `I`.)"},
    {"refract",
     R"(i and n must have length 1, and n must point against i (`faceforward`). eta is the index of
refraction of the medium that the ray leaves, divided by that of the medium that it enters: 1 / 1.5 from air into
glass, and 1.5 out of it. At total reflection the result is the zero vector.)"},
    {"fresnel",
     R"(i, n and eta are as for `refract`; i points to the surface, and n against i. kr is the reflected
fraction of unpolarized light, from 0 to 1. kt is `(1 - kr) eta eta`, the factor of the transmitted radiance,
whose cone becomes narrower or wider at the surface: it is not a fraction, and kr + kt is not 1. For the transmitted
fraction use `1 - kr`. At total reflection kr is 1, kt is 0 and t is the zero vector.)"},
    {"rotate",
     R"(The angle is in radians, by the right-hand rule: counterclockwise for an eye that looks from b
to a, or against the axis. a and b must differ; the axis can have any length.)"},
    {"transform",
     R"(from is `"current"` by default, the space in which a shader computes. A space that is not
defined means the current one. A matrix is multiplied from the right, `p m` with p as a row; if from is given, the
point is first transformed from that space to the current one. The result is divided by the fourth
coordinate, so that matrices with perspective work. Coordinates in another space need no call: `point "shader" (x, y, z)`.

The usual names are `"shader"`, `"object"`, `"world"`, `"camera"`, and, with x and y across the picture,
`"screen"`, `"NDC"` (0 to 1) and `"raster"` (pixels).)"},
    {"vtransform",
     R"(Spaces and matrices are those of `transform`. Lengths change with the scale of the space.)"},
    {"ntransform",
     R"(Spaces and matrices are those of `transform`. The result is perpendicular to the transformed
surface, but does not have length 1. For a singular matrix it is the zero normal.)"},
    {"depth",
     R"(The result is 0 at the near and 1 at the far plane of the renderer. It is also 0 if the renderer does
not answer; `sqxshade` does not.)"},

    {"setxcomp", R"(The variable is changed in place.)"},
    {"setycomp", R"(The variable is changed in place.)"},
    {"setzcomp", R"(The variable is changed in place.)"},
    {"comp",
     R"(0 is red or x, and 2 is blue or z. Fractions of an index are dropped, and an index out of range
selects the nearest component.)"},
    {"setcomp", R"(The variable is changed in place. Indices are those of `comp`.)"},
    {"ctransform",
     R"(from is `"rgb"` by default, the space in which a shader computes: linear, with the primaries of
ITU-R BT.709. Names are case-sensitive: `"HSV"` is unknown, and an unknown space is treated as `"rgb"`.

| Space | Components |
|---|---|
| `"rgb"` | red, green, blue |
| `"hsv"` | hue, saturation, value: the largest component |
| `"hsl"` | hue, saturation, lightness: the mean of the largest and the smallest component |
| `"xyz"`, `"XYZ"` | CIE tristimulus values; white (D65) is (0.950456, 1, 1.088754) |
| `"xyY"` | chromaticity x and y, luminance Y; black is (0, 0, 0) |
| `"YIQ"` | luma and the two chroma signals of NTSC |

Hue is 0 for red, 1/3 for green, 2/3 for blue and 0 for a gray; in a conversion to `"rgb"` it wraps around, so that
1.25 is 0.25. Saturation is 0 for a gray. Colors brighter than 1 can be converted in both directions too. Colors in
another space need no call: `color "hsv" (h, s, v)`.

![Two components in five spaces](images/spacestrip.png)

To the right and up: red and green in "rgb", hue and value in "hsv", hue and lightness in "hsl", x and y in "xyY", the
two signals of "YIQ" from -0.5 to 0.5 ([`spacestrip`](../examples/strips/spacestrip.sl)).)"},
    {"inverse", R"(For a singular matrix all elements are 0.)"},
    {"determinant", R"(The result is 0 for a singular matrix.)"},
    {"translate",
     R"(The new transform is applied to points first, then m. `translate(matrix 1, t)` is only the
translation.)"},
    {"scale", R"(The components of t are the factors along the axes; m is applied afterwards.)"},
    {"pack",
     R"(Numbers outside this range are clamped. The result can be stored and passed on, but not used in
computations. This function needs `--dso`.)"},
    {"unpack", R"(Each number is rounded to a multiple of 1 / 255. This function needs `--dso`.)"},

    {"ambient", R"(Ambient lights are those whose shader has neither `illuminate` nor `solar`.)"},
    {"diffuse",
     R"(The sum of `Cl * max(0, l . n)` over all lights except ambient ones, where l points to the
light and has length 1. n must have length 1 and face the eye: `faceforward(normalize(N), I)`. The result contains
only the color of the light: multiply by the color of the surface.)"},
    {"specular",
     R"(The sum of `Cl * pow(max(0, h . n), 1 / roughness)` over all lights on the near side of the surface,
where h has length 1 and points halfway between light and eye. n and v must have length 1, and v must point to the
eye: `-normalize(I)`. The smaller the roughness, the smaller the highlight: 0.1 is usual, and 0 or less is treated as
a millionth.)"},
    {"specularbrdf",
     R"(n, v and roughness are those of `specular`; l points to the light and can have any length. Use it in
your own loops: `illuminance (P, n, PI / 2) Ci += Cl * specularbrdf(L, n, v, 0.1);`.)"},
    {"phong",
     R"(The sum of `Cl * pow(max(0, r . l), size)` over all lights with a positive `l . n`, where r is v
reflected at the surface and l points to the light. n and v can have any length. The larger the size, the smaller the
highlight.)"},
    {"trace",
     R"(dir can have any length. The distance is negative if nothing is hit. As a color the function takes a
third argument, a variable, in which it stores the distance. If the renderer traces no rays, the results are black
and -1; in `sqxshade` a ray sees a sky above a ground, and hits nothing.)"},
    {"transmission",
     R"(Each component is from 0 for no light to 1 for all light; 1 if the renderer traces no rays.)"},
    {"occlusion",
     R"(The result is from 0 for an open sky to 1 for a closed room; 0 if the renderer traces no rays. n
points away from the surface. Names and values come after p, n and samples, in any order:

| Name | Value | Default |
|---|---|---|
| samples, without a name | float, number of rays | 0: the renderer chooses |
| `"angle"` | float, half the opening of the cone of rays, in radians | -1: the renderer chooses, usually PI / 2 |
| `"bias"` | float, distance from p at which rays start | 0 |
| `"maxdist"` | float, distance beyond which nothing is hit | 0: no limit |
| `"variance"` | float, acceptable error | 0: the renderer chooses |
| `"axis"` | vector, middle of the cone | n |
| `"environmentdir"` | vector variable, in which the mean open direction is stored | |)"},
    {"indirectdiffuse",
     R"(The result is black if the renderer traces no rays. The arguments are those of `occlusion`, and also:

| Name | Value | Default |
|---|---|---|
| `"environmentmap"` | string, map for rays that hit nothing | none |
| `"occlusion"` | float variable, in which the result of `occlusion` is stored | |)"},

    {"printf",
     R"(It prints once per point if an argument is varying or the call is under a varying condition, otherwise once. It
adds no line break: write `\n`.)"},
    {"format",
     R"(Each of `%f`, `%d`, `%s`, `%c`, `%p` and `%m` is replaced by the next argument, formatted according to its
type: a float as a number of up to six digits; a color, point, vector or normal as three and a matrix as sixteen
numbers, separated by blanks; a string unchanged. `%d` writes only the whole part of numbers. `%%` is a percent
sign. There are no widths and precisions. A specifier without an argument, or an unknown one, is unchanged; an argument
without a specifier is ignored.)"},
    {"concat",
     R"(It takes two or more strings. The result has at most 65,535 characters; the rest is cut off.)"},
    {"match",
     R"(The pattern is an extended regular expression. It is case-sensitive, and a character is a byte. A pattern that
is malformed, or that needs more than 2000 states (its length with the repeats expanded), matches nothing. For every
pattern the time is at most proportional to the product of both lengths; there are no back-references. An operand has
at most one repeat: `a**` is not a pattern, but `(a*)*` is.

| Pattern | Matches |
|---|---|
| `.` | any character |
| `[abc]`, `[a-z]`, `[^abc]` | one of these, or any other character; a `]` must be the first in a set, a `-` the last |
| `[[:digit:]]` | one of a class: `alnum`, `alpha`, `blank`, `cntrl`, `digit`, `graph`, `lower`, `print`, `punct`, `space`, `upper`, `xdigit` |
| `x*`, `x+`, `x?` | any number of x, at least one, at most one |
| `x{3}`, `x{2,}`, `x{2,4}` | 3; at least 2; 2 to 4 of x; numbers up to 1000 |
| `xy`, `x\|y`, `(x)` | x and then y; x or y; a group |
| `^`, `$` | start and end of the text |
| `\d`, `\s`, `\w`, `\D`, `\S`, `\W` | a digit; a blank; a letter, digit or `_`; any other character |
| `\b`, `\B`, `\<`, `\>` | a word boundary; no word boundary; the start of a word; the end of a word |
| `\` and another character | that character |

In a string of a shader, write a backslash twice, or avoid it: `[.]`.)"},
    {"attribute",
     R"(The result is 1 if the renderer has an answer, which is then stored in the variable; otherwise it is 0
and the variable is unchanged. There is an answer only if its type and its length are those of the variable; points,
vectors and normals can be used for each other. The renderer determines which names exist. All functions of this
chapter except `shadername` work like this.)"},
    {"option",
     R"(It answers like `attribute`. `sqxshade` knows `"Format"`, an array of three floats: width, height,
and 1.)"},
    {"rendererinfo", R"(It answers like `attribute`.)"},
    {"textureinfo", R"(It answers like `attribute`.)"},
    {"surface",
     R"(It works like `attribute`: the answer is the value, at this point, of the parameter with this name, if
its type and length match.)"},
    {"displacement", R"(It answers like `surface`.)"},
    {"atmosphere", R"(It answers like `surface`.)"},
    {"lightsource",
     R"(It answers like `surface`. Inside an `illuminance` statement it queries the current light, also for
output parameters that the light has computed; outside there is no answer.)"},
    {"incident", R"(It answers like `surface`.)"},
    {"opposite", R"(It answers like `surface`.)"},
    {"shadername", R"(It is not implemented: the compiler warns, and the result is empty.)"},
};

}  // namespace

std::string_view SqxBuiltInDetails(std::string_view function)
{
    const auto* const found =
        std::find_if(std::begin(k_details), std::end(k_details),
                     [function](const Details& details) { return details.function == function; });
    return found == std::end(k_details) ? std::string_view() : found->text;
}
