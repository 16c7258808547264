// What a writer of shaders must know beyond the one-line meaning of a function: units, ranges,
// spaces, border cases, which arguments must be normalized, and defaults of optional arguments.
//
// Tested by the examples in SqxBuiltInExamples.cpp, which cover each of these statements that can
// be computed.

#include <algorithm>

#include "reference/SqxBuiltInMeanings.h"

namespace {

struct Details {
    std::string_view function;
    std::string_view text;  // Markdown, whole sentences
};

constexpr Details k_details[] = {
    {"pow",
     R"(0 for a base of 0 with every exponent, and for a negative base with an exponent that is
not a whole number.)"},
    {"exp", R"(Infinite above 88.7, since numbers are of single precision.)"},
    {"sqrt", R"(0 for a negative argument.)"},
    {"inversesqrt", R"(0 for an argument of 0 or less.)"},
    {"log", R"(0 for an argument of 0 or less, and for a base of 0 or less and of 1.)"},
    {"mod",
     R"(From 0 up to, but not including, the absolute value of b, also where a or b is negative.
The quotient is of single precision: where a is a multiple of b, the result can be b, or nearly b, instead
of 0. Where that matters, test `abs(a / b - round(a / b))`, or add half a step first.)"},
    {"min", R"(Two or more arguments; of colors and points, component by component.)"},
    {"max", R"(Two or more arguments; of colors and points, component by component.)"},
    {"clamp",
     R"(Of colors and points, component by component; the bounds may be a float, which counts as
three equal components.)"},
    {"mix",
     R"(x is not clamped. Colors and points are mixed component by component; points are not turned.)"},
    {"round", R"(Halves go up, also below 0.)"},
    {"smoothstep",
     R"(The curve is `3 t t - 2 t t t`, for t from 0 at low to 1 at high: its slope is 0 at
both ends. The bounds must be in order; for a falling curve take `1 - smoothstep(low, high, x)`.)"},
    {"filterstep",
     R"(The step from 0 below the edge to 1 above it is averaged over an interval: from s1 to
s2, or, without s2, over what the shading point covers of s1, centered on the point and as long as the change
of s1 from one point to the next in u and in v together. So a stripe keeps its place at every resolution.

`"width"` is a factor of the length of the interval, 1 unless given. `"filter"` is one of these, of which
each is scaled so that the interval has the length 1:

| Filter | Weights | Result |
|---|---|---|
| `"box"` | equal in the interval | 0 to 1 |
| `"triangle"` | falling to 0 at the distance 1 from the middle | 0 to 1 |
| `"gaussian"` | a bell with the standard deviation 0.5 | 0 to 1 |
| `"catmull-rom"` | a cubic of the radius 2, negative beyond 1; the default | about -0.04 to 1.04: clamp it, or name another filter |

Any other name means the default. Names and values come last, in any order.

![The four filters](images/filterstrip.png)

"box", "triangle", "gaussian" and "catmull-rom" over an interval of 0.3, from 0.5 before the edge to 0.5 after it
([`filterstrip`](../examples/strips/filterstrip.sl)).)"},
    {"spline",
     R"(At least four values, as arguments or as an array. x is clamped to 0 to 1 and runs over
all segments evenly: n segments share the range. The basis says how many values further on the next segment
begins, the *step*; values after the last whole segment are ignored.

| Basis | Step | Segment of the values a b c d | Number of values |
|---|---|---|---|
| `"catmull-rom"`, the default | 1 | from b to c; a and d shape the ends | 4, 5, 6, ... |
| `"bezier"` | 3 | from a to d; b and c pull the curve | 4, 7, 10, ... |
| `"bspline"` | 1 | near b and c, smoother than the others; no value is reached | 4, 5, 6, ... |
| `"hermite"` | 2 | from a to c, with the slopes b and d | 4, 6, 8, ... |
| `"linear"` | 1 | straight from b to c | 4, 5, 6, ... |
| `"power"` | 4 | `a x x x + b x x + c x + d` | 4, 8, 12, ... |

So with `"catmull-rom"`, `"bspline"` and `"linear"` the first and the last value only shape the ends: give
them twice if the curve is to start and end there. The curve of `"catmull-rom"` can leave the range of its
values. Any other name means the default. The basis may be a variable.

![The same values in five bases](images/splinestrip.png)

"catmull-rom", "bspline", "linear", "bezier" and "hermite", whose slopes are not shown, through eight values
([`splinestrip`](../examples/strips/splinestrip.sl)).)"},

    {"noise",
     R"(Gradient noise with a lattice at the whole numbers: the value is 0.5 wherever all coordinates
are whole, so scale and shift a pattern that looks flat. The mean is 0.5; nine of ten values lie from 0.25 to
0.75, with a standard deviation of 0.14 to 0.15, and extremes near 0 and 1 are rare. Features have the
size of about one unit, and first and second derivatives are continuous. The same arguments give the same value
in every run. Coordinates beyond 10^9 count as 10^9; fractions vanish above 2^23.

The components of a color or a point are three independent noises, and not the noise of the float. What the
context leaves open, a cast decides: `float noise(P)`. For values around 0 write `2 * noise(P) - 1`; for
octaves, sum `noise(P * f) / f` for f of 1, 2, 4, ....

![Noise in five tiles](images/noisestrip.png)

`float noise`, `color noise`, octaves of `abs(2 * noise - 1)`, `pnoise` of the period 3 and `color cellnoise`, over six
units each ([`noisestrip`](../examples/strips/noisestrip.sl)).)"},
    {"pnoise",
     R"(Mean, spread and lattice are those of `noise`. A period is rounded to a whole number, and one
below 1 counts as 1. From 0 up to the last cell of the first period the value is that of `noise`.)"},
    {"cellnoise",
     R"(The cell of a coordinate is `floor` of it, in each dimension. Values are from 0 up to, but
not including, 1, spread evenly, and independent from cell to cell. The components of a color or a point
are independent too.)"},
    {"random",
     R"(The number is computed from the seed of the scene, the number of the run, the kind of the shader,
the place of the point in its grid, and how many numbers the point has drawn in this run; a triple takes three.
The renderer sets seed and run, which are 0 otherwise. So the same seed gives the same picture, in any number of
threads and in byte-code and shared objects alike. A uniform result, as of `uniform float r = random()`, is one
number for all points; which of both a call gives depends on what the whole expression is assigned to, so that a
number for a `uniform` formal needs such a variable if the result of the call varies. In an ambient light the point is
the one that is lit. A default value that is computed once for an instance depends on the seed alone. Use `cellnoise`
for what must stay on a surface.)"},

    {"Du",
     R"(The change from point to point divided by `du`: central differences inside the grid; at a border
of the grid, or of the points for which the condition around the call holds, one-sided differences of second
order over three points where there are three, else over two, and 0 for a single point. The derivative of
anything uniform is 0. For the change to the next point, the size of a pixel, multiply by `du`.)"},
    {"Dv", R"(As `Du`, with `dv`.)"},
    {"Deriv",
     R"(The changes of a along u and v, weighted by those of b: the derivative in the direction in
which b changes most. `Deriv(a, u)` is `Du(a)`. 0 where b does not change. Differences are taken as by `Du`.)"},
    {"area",
     R"(In square units of the space of the points. A point inside the grid counts the parallelogram of
its changes along u and v, a point at a border only the part that lies in the grid, so that the sum over a
grid is the area of its surface. `sqrt(area(P))` is a size for antialiasing.)"},
    {"calculatenormal",
     R"(Not of length 1: normalize it. Its side follows from u and v by the right-hand rule, as
that of `Ng`. Differences are taken as by `Du`. After moving `P`, write `N = calculatenormal(P)`.)"},

    {"length",
     R"(Any length that a float can hold, also where the squares of the components cannot.)"},
    {"normalize", R"(A vector of length 0 is returned as it is.)"},
    {"ptlined", R"(Beyond the ends of the segment it is the distance from the end.)"},
    {"faceforward",
     R"(-n where `i . ng` is positive, else n; ng is `Ng` unless given. n itself is not looked
at, and none of the vectors needs length 1.)"},
    {"reflect",
     R"(`i - 2 (i . n) n`. n must have length 1; the result has the length of i. i points to the
surface, as `I` does.)"},
    {"refract",
     R"(i and n must have length 1, and n must face against i (`faceforward`). eta is the index of
refraction of the medium that the ray leaves divided by that of the medium that it enters: 1 / 1.5 from air into
glass, 1.5 out of it. The zero vector on total reflection.)"},
    {"fresnel",
     R"(i, n and eta as for `refract`; i points to the surface, n faces against it. kr is the
reflected share of unpolarized light, from 0 to 1. kt is `(1 - kr) eta eta`, the factor of the radiance that
comes through, whose cone narrows or widens at the border: it is no share, and kr + kt is not 1. For a plain
share take `1 - kr`. On total reflection kr is 1, kt is 0 and t is the zero vector.)"},
    {"rotate",
     R"(The angle is in radians, by the right-hand rule: counterclockwise for an eye that looks from b
to a, or against the axis. a and b must differ; the axis needs no length of 1.)"},
    {"transform",
     R"(from is `"current"` unless given, the space in which a shader computes. A space without a
definition counts as the current one. A matrix is applied as it is, `p m` with p as a row: with from, the
point is first brought from that space to the current one. The result is divided by the fourth
coordinate, so that matrices with perspective work. Numbers that are meant in a space need no call: `point "shader" (x, y, z)`.

The usual names are `"shader"`, `"object"`, `"world"`, `"camera"`, and, with x and y across the picture,
`"screen"`, `"NDC"` (0 to 1) and `"raster"` (pixels).)"},
    {"vtransform",
     R"(Spaces and matrices as for `transform`. Lengths change with the scale of the space.)"},
    {"ntransform",
     R"(Spaces and matrices as for `transform`. The result is at right angles to the transformed
surface, but not of length 1. A singular matrix gives the zero normal.)"},
    {"depth",
     R"(0 at the near and 1 at the far plane, as the renderer has them. 0 where the renderer does not
answer, as `sqxshade`.)"},

    {"setxcomp", R"(The variable is changed in place.)"},
    {"setycomp", R"(The variable is changed in place.)"},
    {"setzcomp", R"(The variable is changed in place.)"},
    {"comp",
     R"(0 is red or x, 2 blue or z. An index is cut to a whole number, and one outside counts as the
nearest one.)"},
    {"setcomp", R"(The variable is changed in place. Indices as for `comp`.)"},
    {"ctransform",
     R"(from is `"rgb"` unless given, the space in which a shader computes: linear, with the
primaries of ITU-R BT.709. Letters count: `"HSV"` is unknown, and an unknown space counts as `"rgb"`.

| Space | Components |
|---|---|
| `"rgb"` | red, green, blue |
| `"hsv"` | hue, saturation, value: the largest component |
| `"hsl"` | hue, saturation, lightness: the middle between the largest and the smallest component |
| `"xyz"`, `"XYZ"` | CIE tristimulus values; white (D65) is (0.950456, 1, 1.088754) |
| `"xyY"` | chromaticity x and y, luminance Y; black gives (0, 0, 0) |
| `"YIQ"` | luma and the two chroma signals of NTSC |

Hue is 0 for red, 1/3 for green, 2/3 for blue and 0 for a gray; on the way to `"rgb"` it wraps, so that 1.25 is
0.25. Saturation is 0 for a gray. Colors brighter than 1 convert both ways too. Numbers that are meant in a space
need no call: `color "hsv" (h, s, v)`.

![Two components in five spaces](images/spacestrip.png)

To the right and up: red and green in "rgb", hue and value in "hsv", hue and lightness in "hsl", x and y in "xyY", the
two signals of "YIQ" from -0.5 to 0.5 ([`spacestrip`](../examples/strips/spacestrip.sl)).)"},
    {"inverse", R"(All 0 for a singular matrix.)"},
    {"determinant", R"(0 for a singular matrix.)"},
    {"translate",
     R"(Points go through the new transform first, then through m. `translate(matrix 1, t)` is the
translation alone.)"},
    {"scale", R"(A scaling along the axes by the components of t, then m.)"},
    {"pack",
     R"(Numbers outside are clamped. The result can be stored and passed on, but is no number to compute
with. Only with `--dso`.)"},
    {"unpack", R"(Each is rounded to a multiple of 1 / 255. Only with `--dso`.)"},

    {"ambient", R"(Lights whose shader has neither `illuminate` nor `solar`.)"},
    {"diffuse",
     R"(The sum of `Cl * max(0, l . n)` over all lights but the ambient ones, where l leads to the
light and has length 1. n must have length 1 and face the eye: `faceforward(normalize(N), I)`. The light's color
alone: multiply by the color of the surface.)"},
    {"specular",
     R"(The sum of `Cl * pow(max(0, h . n), 1 / roughness)` over all lights in front of the surface,
where h has length 1 and lies in the middle between light and eye. n and v must have length 1, and v leads to the
eye: `-normalize(I)`. The smaller the roughness, the smaller the highlight: 0.1 is usual, and 0 or less is as
sharp as a millionth.)"},
    {"specularbrdf",
     R"(n, v and roughness as for `specular`; l leads to the light and needs no length of 1. For
loops of your own: `illuminance (P, n, PI / 2) Ci += Cl * specularbrdf(L, n, v, 0.1);`.)"},
    {"phong",
     R"(The sum of `Cl * pow(max(0, r . l), size)` over all lights in front of the surface, where r is
the mirrored direction of v. n and v need no length of 1, except that a light is in front where `l . n` is positive;
the larger the size, the smaller the highlight.)"},
    {"trace",
     R"(dir needs no length of 1. The distance is negative where nothing is hit. As a color it takes a
third argument, a variable, which gets the distance. Black, and -1, where the renderer traces no rays; in
`sqxshade` a ray sees a sky above a ground, and hits nothing.)"},
    {"transmission",
     R"(From 0 for nothing to 1 for all, in each component; 1 where the renderer traces no rays.)"},
    {"occlusion",
     R"(From 0 for an open sky to 1 for a closed room; 0 where the renderer traces no rays. n
leads away from the surface. Names and values come after p, n and samples, in any order:

| Name | Value | Without it |
|---|---|---|
| samples, without a name | float, number of rays | 0: the renderer chooses |
| `"angle"` | float, half the opening of the cone of rays, in radians | -1: the renderer chooses, as a rule PI / 2 |
| `"bias"` | float, distance from p at which rays start | 0 |
| `"maxdist"` | float, distance beyond which nothing is hit | 0: no limit |
| `"variance"` | float, error that is allowed | 0: the renderer chooses |
| `"axis"` | vector, middle of the cone | n |
| `"environmentdir"` | variable, a vector, which gets the mean open direction | |)"},
    {"indirectdiffuse",
     R"(Black where the renderer traces no rays. Arguments as for `occlusion`, and also:

| Name | Value | Without it |
|---|---|---|
| `"environmentmap"` | string, what rays see that hit nothing | none |
| `"occlusion"` | variable, a float, which gets what `occlusion` returns | |)"},

    {"printf",
     R"(Once for each point if an argument is varying or the call is under a varying condition, else once. No line
break is added: write `\n`.)"},
    {"format",
     R"(`%f`, `%d`, `%s`, `%c`, `%p` and `%m` each take the next argument, which is written by its own type:
a float as a number of up to six digits, a color, point, vector or normal as three and a matrix as sixteen
numbers with blanks between, a string as it is. `%d` writes only the whole part of numbers. `%%` is a percent
sign. There are no widths and precisions. A specifier without an argument stays as it is, and so does an unknown
one; an argument without a specifier is left out.)"},
    {"concat",
     R"(Two or more. A text has at most 65,535 characters; what goes beyond is left out.)"},
    {"match",
     R"(The pattern is an extended regular expression. Letters count, and a character is a byte. A pattern that
is malformed, or that takes more than 2000 states (its length with the repeats written out), matches nothing. The time
is at most the product of both lengths, whatever the pattern; there are no back-references. An operand has one repeat:
`a**` is no pattern, but `(a*)*` is.

| Sign | Matches |
|---|---|
| `.` | any character |
| `[abc]`, `[a-z]`, `[^abc]` | one of these, or one that is none of these; `]` is meant itself as the first one, `-` as the last |
| `[[:digit:]]` | one of a class: `alnum`, `alpha`, `blank`, `cntrl`, `digit`, `graph`, `lower`, `print`, `punct`, `space`, `upper`, `xdigit` |
| `x*`, `x+`, `x?` | any number of x, at least one, at most one |
| `x{3}`, `x{2,}`, `x{2,4}` | as many; at most 1000 |
| `xy`, `x\|y`, `(x)` | x and then y; x or y; a group |
| `^`, `$` | begin and end of the text |
| `\d`, `\s`, `\w`, `\D`, `\S`, `\W` | a digit, a blank, a letter, digit or `_`; one that is none |
| `\b`, `\B`, `\<`, `\>` | border of a word, no border, its begin, its end |
| `\` and a sign | that sign itself |

In a string of a shader a backslash is written twice, or avoided: `[.]`.)"},
    {"attribute",
     R"(1 if the renderer has an answer, which is then in the variable; 0 if not, and the variable is
as it was. There is an answer only if its type and its length are those of the variable; points, vectors and
normals pass for each other. Which names there are is the renderer's matter. All functions of this chapter but
`shadername` work like this.)"},
    {"option",
     R"(Answers as for `attribute`. `sqxshade` knows `"Format"`, an array of three floats: width, height,
and 1.)"},
    {"rendererinfo", R"(Answers as for `attribute`.)"},
    {"textureinfo", R"(Answers as for `attribute`.)"},
    {"surface",
     R"(Answers as for `attribute`: by the name, the type and the length of the parameter, with the
value that it has at this point.)"},
    {"displacement", R"(Answers as for `surface`.)"},
    {"atmosphere", R"(Answers as for `surface`.)"},
    {"lightsource",
     R"(Answers as for `surface`. Inside an `illuminance` statement it asks the light whose turn it is, also
for output parameters that the light has computed; outside, there is no answer.)"},
    {"incident", R"(Answers as for `surface`.)"},
    {"opposite", R"(Answers as for `surface`.)"},
    {"shadername",
     R"(It is not implemented: the compiler warns, and the name of the shader is not known.)"},
};

}  // namespace

std::string_view SqxBuiltInDetails(std::string_view function)
{
    const auto* const found =
        std::find_if(std::begin(k_details), std::end(k_details),
                     [function](const Details& details) { return details.function == function; });
    return found == std::end(k_details) ? std::string_view() : found->text;
}
