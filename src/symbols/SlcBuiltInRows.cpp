// The library of the language, one overload per row. To add a built-in, add a row.

#include <algorithm>
#include <array>
#include <iterator>

#include "symbols/SlcFuncDescription.h"

// clang-format off
// Columns: name, return type, number of arguments, argument types, detail rule, inline detail
// rule, primitive, order-sensitive, foldable, whole-grid form with a detail for each argument.
//
// By rule 0 the result is uniform if all arguments are, by rule 1 always varying, by rule 2 always
// uniform. The corresponding inline rules are 0, 1 and 7; the rules for functions that write to
// their arguments are in semantics/SlcBuiltInDetailRules.cpp.
constexpr const char* const SlcFuncDescription::sm_funcInfoString[] = {
    "radians float 1 float 0 0 CALL_PRIM_RADIANS 0 1 nosimd",
    "degrees float 1 float 0 0 CALL_PRIM_DEGREES 0 1 nosimd",
    "sin float 1 float 0 0 CALL_PRIM_SIN 0 1 nosimd",
    "asin float 1 float 0 0 CALL_PRIM_ASIN 0 1 nosimd",
    "cos float 1 float 0 0 CALL_PRIM_COS 0 1 nosimd",
    "acos float 1 float 0 0 CALL_PRIM_ACOS 0 1 nosimd",
    "tan float 1 float 0 0 CALL_PRIM_TAN 0 1 nosimd",
    "atan float 1 float 0 0 CALL_PRIM_ATAN 0 1 nosimd",
    "atan float 2 float float 0 0 CALL_PRIM_ATAN2 0 1 nosimd",
    "pow float 2 float float 0 0 CALL_PRIM_POW 0 1 nosimd",
    "exp float 1 float 0 0 CALL_PRIM_EXP 0 1 nosimd",
    "sqrt float 1 float 0 0 CALL_PRIM_SQRT 0 1 nosimd",
    "log float 1 float 0 0 CALL_PRIM_LOG 0 1 nosimd",
    "log float 2 float float 0 0 CALL_PRIM_LOG2 0 1 nosimd",
    "mod float 2 float float 0 0 CALL_PRIM_MOD 0 1 nosimd",
    "abs float 1 float 0 0 CALL_PRIM_ABS 0 1 nosimd",
    "sign float 1 float 0 0 CALL_PRIM_SIGN 0 1 nosimd",
    "min float 2 float float 0 0 CALL_PRIM_MIN2_FLOAT 0 1 nosimd",
    "max float 2 float float 0 0 CALL_PRIM_MAX2_FLOAT 0 1 nosimd",
    "clamp float 3 float float float 0 0 CALL_PRIM_CLAMP_1D 0 1 nosimd",
    "floor float 1 float 0 0 CALL_PRIM_FLOOR 0 1 nosimd",
    "ceil float 1 float 0 0 CALL_PRIM_CEIL 0 1 nosimd",
    "round float 1 float 0 0 CALL_PRIM_ROUND 0 1 nosimd",
    "step float 2 float float 0 0 CALL_PRIM_STEP 0 1 nosimd",
    "smoothstep float 3 float float float 0 0 CALL_PRIM_SMOOTHSTEP 0 0 simd uniform uniform varying",
    "Du float 1 float 0 0 CALL_PRIM_DU_FLOAT 0 0 always-simd varying",
    "Dv float 1 float 0 0 CALL_PRIM_DV_FLOAT 0 0 always-simd varying",
    "Deriv float 2 float float 0 0 CALL_PRIM_DERIV_FLOAT 0 0 always-simd varying varying",
    "Du color 1 color 0 0 CALL_PRIM_DU_COLOR 0 0 always-simd varying",
    "Dv color 1 color 0 0 CALL_PRIM_DV_COLOR 0 0 always-simd varying",
    "Deriv color 2 color float 0 0 CALL_PRIM_DERIV_COLOR 0 0 always-simd varying varying",
    "Du vector 1 any-point 0 0 CALL_PRIM_DU_POINT 0 0 always-simd varying",
    "Dv vector 1 any-point 0 0 CALL_PRIM_DV_POINT 0 0 always-simd varying",
    "Deriv vector 2 any-point float 0 0 CALL_PRIM_DERIV_POINT 0 0 always-simd varying varying",
    "random float 0 0 0 CALL_PRIM_RANDOM_FLOAT 1 0 simd",
    "random color 0 0 0 CALL_PRIM_RANDOM_COLOR 1 0 simd",
    "random point 0 0 0 CALL_PRIM_RANDOM_POINT 1 0 simd",
    "noise float 1 float 0 0 CALL_PRIM_NOISE_FLOAT_1D 0 0 simd varying",
    "noise float 2 float float 0 0 CALL_PRIM_NOISE_FLOAT_2D 0 0 simd varying varying",
    "noise float 1 point 0 0 CALL_PRIM_NOISE_FLOAT_3D 0 0 simd varying",
    "noise color 1 float 0 0 CALL_PRIM_NOISE_POINT_1D 0 0 simd varying",
    "noise color 2 float float 0 0 CALL_PRIM_NOISE_POINT_2D 0 0 simd varying varying",
    "noise color 1 point 0 0 CALL_PRIM_NOISE_POINT_3D 0 0 simd varying",
    "noise point 1 float 0 0 CALL_PRIM_NOISE_POINT_1D 0 0 simd varying",
    "noise point 2 float float 0 0 CALL_PRIM_NOISE_POINT_2D 0 0 simd varying varying",
    "noise point 1 point 0 0 CALL_PRIM_NOISE_POINT_3D 0 0 simd varying",
    "xcomp float 1 any-point 0 0 CALL_PRIM_XCOMP 0 0 nosimd",
    "ycomp float 1 any-point 0 0 CALL_PRIM_YCOMP 0 0 nosimd",
    "zcomp float 1 any-point 0 0 CALL_PRIM_ZCOMP 0 0 nosimd",
    "setxcomp void 2 output any-point float 0 2 CALL_PRIM_SETXCOMP 0 0 nosimd",
    "setycomp void 2 output any-point float 0 2 CALL_PRIM_SETYCOMP 0 0 nosimd",
    "setzcomp void 2 output any-point float 0 2 CALL_PRIM_SETZCOMP 0 0 nosimd",
    "length float 1 vector 0 0 CALL_PRIM_LENGTH 0 1 simd varying",
    "distance float 2 point point 0 0 CALL_PRIM_DISTANCE 0 1 simd varying varying",
    "area float 1 point 0 0 CALL_PRIM_AREA 0 0 always-simd varying",
    "normalize any-vector 1 any-vector 0 0 CALL_PRIM_NORMALIZE 0 0 simd varying",
    "faceforward any-vector 2 any-vector any-vector 1 1 CALL_PRIM_FACEFORWARD 0 0 simd varying varying",
    "faceforward any-vector 3 any-vector any-vector any-vector 0 0 CALL_PRIM_FACEFORWARD2 0 0 simd varying varying varying",
    "reflect vector 2 vector normal 0 0 CALL_PRIM_REFLECT 0 0 simd varying varying",
    "refract vector 3 vector normal float 0 0 CALL_PRIM_REFRACT 0 0 simd varying varying uniform",
    "fresnel void 5 vector normal float output float output float 0 4 CALL_PRIM_FRESNEL5 0 0 simd varying varying uniform varying varying",
    "fresnel void 7 vector normal float output float output float output vector output vector 0 4 CALL_PRIM_FRESNEL7 0 0 simd varying varying uniform varying varying varying varying",
    "transform point 3 string string point 0 0 CALL_PRIM_TRANSFORM 0 0 simd uniform uniform varying",
    "transform point 2 string point 0 0 CALL_PRIM_TRANSFORM2 0 0 simd uniform varying",
    "depth float 1 point 0 0 CALL_PRIM_DEPTH 0 0 simd varying",
    "calculatenormal normal 1 point 0 0 CALL_PRIM_CALCULATENORMAL 0 0 always-simd varying",
    "comp float 2 color float 0 0 CALL_PRIM_COMP 0 0 nosimd",
    "comp float 2 point float 0 0 CALL_PRIM_COMP 0 0 nosimd",
    "comp float 3 matrix float float 0 0 CALL_PRIM_COMP_MATRIX 0 0 nosimd",
    "setcomp void 3 output color float float 0 3 CALL_PRIM_SETCOMP 0 0 nosimd",
    "setcomp void 3 output point float float 0 3 CALL_PRIM_SETCOMP 0 0 nosimd",
    "setcomp void 4 output matrix float float float 0 6 CALL_PRIM_SETCOMP_MATRIX 0 0 nosimd",
    "mix color 3 color color float 0 0 CALL_PRIM_MIX_3D 0 0 simd varying varying uniform",
    "ambient color 0 1 1 CALL_PRIM_AMBIENT 0 0 simd",
    "diffuse color 1 normal 1 1 CALL_PRIM_DIFFUSE 0 0 simd varying",
    "specular color 3 normal vector float 1 1 CALL_PRIM_SPECULAR 0 0 simd varying varying uniform",
    "specularstd color 3 normal vector float 1 1 CALL_PRIM_SPECULARSTD 0 0 simd varying varying uniform",
    "phong color 3 normal vector float 1 1 CALL_PRIM_PHONG 0 0 simd varying varying uniform",
    "trace float 2 point vector 0 0 CALL_PRIM_RAYHITTEST 0 0 simd varying varying",
    "transmission color 2 point point 0 0 CALL_PRIM_TRANSMISSION 0 0 simd varying varying",
    "isshadowray float 0 2 7 CALL_PRIM_ISSHADOWRAY 0 0 nosimd",
    "isindirectray float 0 2 7 CALL_PRIM_ISINDIRECTRAY 0 0 nosimd",
    "raylevel float 0 2 7 CALL_PRIM_RAYLEVEL 0 0 nosimd",
    "incident float 2 string output any 2 7 CALL_PRIM_INCIDENT 0 0 nosimd",
    "opposite float 2 string output any 2 7 CALL_PRIM_OPPOSITE 0 0 nosimd",
    "inversesqrt float 1 float 0 0 CALL_PRIM_INVERSESQRT 0 1 nosimd",
    "transform point 2 matrix point 0 0 CALL_PRIM_TRANSFORM2_MATRIX 0 0 simd uniform varying",
    "transform point 3 string matrix point 0 0 CALL_PRIM_TRANSFORM_MATRIX 0 0 simd uniform uniform varying",
    "vtransform vector 2 string vector 0 0 CALL_PRIM_VTRANSFORM2 0 0 simd uniform varying",
    "vtransform vector 2 matrix vector 0 0 CALL_PRIM_VTRANSFORM2_MATRIX 0 0 simd uniform varying",
    "vtransform vector 3 string string vector 0 0 CALL_PRIM_VTRANSFORM 0 0 simd uniform uniform varying",
    "vtransform vector 3 string matrix vector 0 0 CALL_PRIM_VTRANSFORM_MATRIX 0 0 simd uniform uniform varying",
    "ntransform normal 2 string normal 0 0 CALL_PRIM_NTRANSFORM2 0 0 simd uniform varying",
    "ntransform normal 2 matrix normal 0 0 CALL_PRIM_NTRANSFORM2_MATRIX 0 0 simd uniform varying",
    "ntransform normal 3 string string normal 0 0 CALL_PRIM_NTRANSFORM 0 0 simd uniform uniform varying",
    "ntransform normal 3 string matrix normal 0 0 CALL_PRIM_NTRANSFORM_MATRIX 0 0 simd uniform uniform varying",
    "inverse matrix 1 matrix 0 0 CALL_PRIM_INVERSE 0 0 nosimd",
    "determinant float 1 matrix 0 0 CALL_PRIM_DETERMINANT 0 0 nosimd",
    "match float 2 string string 0 0 CALL_PRIM_MATCH 0 0 nosimd",
    "translate matrix 2 matrix point 0 0 CALL_PRIM_TRANSLATE 0 0 nosimd",
    "rotate matrix 3 matrix float vector 0 0 CALL_PRIM_ROTATE 0 0 nosimd",
    "scale matrix 2 matrix point 0 0 CALL_PRIM_SCALE 0 0 nosimd",
    "ctransform color 3 string string color 0 0 CALL_PRIM_CTRANSFORM 0 0 simd uniform uniform varying",
    "ctransform color 2 string color 0 0 CALL_PRIM_CTRANSFORM2 0 0 simd uniform varying",
    "ptlined float 3 point point point 0 0 CALL_PRIM_PTLINED 0 0 simd uniform uniform varying",
    "rotate any-point 4 any-point float point point 0 0 CALL_PRIM_ROTATE_POINT 0 0 nosimd",
    "cellnoise float 1 float 0 0 CALL_PRIM_CELLNOISE_FLOAT_1D 0 0 simd varying",
    "cellnoise float 2 float float 0 0 CALL_PRIM_CELLNOISE_FLOAT_2D 0 0 simd varying varying",
    "cellnoise float 1 point 0 0 CALL_PRIM_CELLNOISE_FLOAT_3D 0 0 simd varying",
    "cellnoise float 2 point float 0 0 CALL_PRIM_CELLNOISE_FLOAT_4D 0 0 simd varying varying",
    "cellnoise point 1 float 0 0 CALL_PRIM_CELLNOISE_POINT_1D 0 0 simd varying",
    "cellnoise point 2 float float 0 0 CALL_PRIM_CELLNOISE_POINT_2D 0 0 simd varying varying",
    "cellnoise point 1 point 0 0 CALL_PRIM_CELLNOISE_POINT_3D 0 0 simd varying",
    "cellnoise point 2 point float 0 0 CALL_PRIM_CELLNOISE_POINT_4D 0 0 simd varying varying",
    "cellnoise color 1 float 0 0 CALL_PRIM_CELLNOISE_POINT_1D 0 0 simd varying",
    "cellnoise color 2 float float 0 0 CALL_PRIM_CELLNOISE_POINT_2D 0 0 simd varying varying",
    "cellnoise color 1 point 0 0 CALL_PRIM_CELLNOISE_POINT_3D 0 0 simd varying",
    "cellnoise color 2 point float 0 0 CALL_PRIM_CELLNOISE_POINT_4D 0 0 simd varying varying",
    "specularbrdf color 4 vector normal vector float 1 1 CALL_PRIM_SPECULARBRDF 0 0 simd varying varying varying uniform",
    "clamp point 3 point any-point any-point 0 0 CALL_PRIM_CLAMP_3D 0 0 simd varying uniform uniform",
    "clamp color 3 color color color 0 0 CALL_PRIM_CLAMP_3D 0 0 simd varying uniform uniform",
    "mix float 3 float float float 0 0 CALL_PRIM_MIX_1D 0 0 simd varying varying uniform",
    "mix point 3 point point float 0 0 CALL_PRIM_MIX_3D 0 0 simd varying varying uniform",
    "spline float 2 float array-float 0 0 CALL_PRIM_SPLINE_1D 0 0 nosimd",
    "spline color 2 float array-color 0 0 CALL_PRIM_SPLINE_3D 0 0 nosimd",
    "spline point 2 float array-point 0 0 CALL_PRIM_SPLINE_3D 0 0 nosimd",
    "spline float 3 string float array-float 0 0 CALL_PRIM_SPLINE_BASIS_1D 0 0 simd uniform varying uniform",
    "spline color 3 string float array-color 0 0 CALL_PRIM_SPLINE_BASIS_3D 0 0 nosimd",
    "spline point 3 string float array-point 0 0 CALL_PRIM_SPLINE_BASIS_3D 0 0 nosimd",
    "noise float 2 point float 0 0 CALL_PRIM_NOISE_FLOAT_4D 0 0 simd varying varying",
    "noise color 2 point float 0 0 CALL_PRIM_POINT_FLOAT_4D 0 0 simd varying varying",
    "noise point 2 point float 0 0 CALL_PRIM_POINT_FLOAT_4D 0 0 simd varying varying",
    "pnoise float 2 float uniform float 0 0 CALL_PRIM_PNOISE_FLOAT_1D 0 0 simd varying uniform",
    "pnoise float 4 float float uniform float uniform float 0 0 CALL_PRIM_PNOISE_FLOAT_2D 0 0 simd varying varying uniform uniform",
    "pnoise float 2 point uniform point 0 0 CALL_PRIM_PNOISE_FLOAT_3D 0 0 simd varying uniform",
    "pnoise float 4 point float uniform point uniform float 0 0 CALL_PRIM_PNOISE_FLOAT_4D 0 0 simd varying varying uniform uniform",
    "pnoise point 2 float uniform float 0 0 CALL_PRIM_PNOISE_POINT_1D 0 0 simd varying uniform",
    "pnoise point 4 float float uniform float uniform float 0 0 CALL_PRIM_PNOISE_POINT_2D 0 0 simd varying varying uniform uniform",
    "pnoise point 2 point uniform point 0 0 CALL_PRIM_PNOISE_POINT_3D 0 0 simd varying uniform",
    "pnoise point 4 point float uniform point uniform float 0 0 CALL_PRIM_PNOISE_POINT_4D 0 0 simd varying varying uniform uniform",
    "pnoise color 2 float uniform float 0 0 CALL_PRIM_PNOISE_POINT_1D 0 0 simd varying uniform",
    "pnoise color 4 float float uniform float uniform float 0 0 CALL_PRIM_PNOISE_POINT_2D 0 0 simd varying varying uniform uniform",
    "pnoise color 2 point uniform point 0 0 CALL_PRIM_PNOISE_POINT_3D 0 0 simd varying uniform",
    "pnoise color 4 point float uniform point uniform float 0 0 CALL_PRIM_PNOISE_POINT_4D 0 0 simd varying varying uniform uniform",
    "attribute float 2 string output any 2 7 CALL_PRIM_ATTRIBUTE 0 0 nosimd",
    "option float 2 string output any 2 7 CALL_PRIM_OPTION 0 0 nosimd",
    "textureinfo float 3 string string output any 2 7 CALL_PRIM_TEXTUREINFO 0 0 nosimd",
    "rendererinfo float 2 string output any 2 7 CALL_PRIM_RENDERERINFO 0 0 nosimd",
    "shadername string 0 0 0 CALL_PRIM_SHADERNAME 0 0 nosimd",
    "shadername string 1 string 0 0 CALL_PRIM_SHADERNAME2 0 0 nosimd",
    "atmosphere float 2 string output any 2 7 CALL_PRIM_ATMOSPHERE 0 0 nosimd",
    "displacement float 2 string output any 2 7 CALL_PRIM_DISPLACEMENT 0 0 nosimd",
    "lightsource float 2 string output any 2 7 CALL_PRIM_LIGHTSOURCE 0 0 nosimd",
    "surface float 2 string output any 2 7 CALL_PRIM_SURFACE 0 0 nosimd",
    "pack float 4 float float float float 0 0 CALL_PRIM_PACK 0 0 nosimd",
    "unpack void 5 float float float float float 0 5 CALL_PRIM_UNPACK 0 0 nosimd",
    nullptr,
};

// The same columns, with a variable tail of arguments after the fixed ones.
constexpr const char* const SlcFuncDescription::sm_varArgsFuncInfoString[] = {
    "spline float 5 float float float float float float* 0 0 CALL_PRIM_SPLINE_1D 0 0 nosimd",
    "spline color 5 float color color color color color* 0 0 CALL_PRIM_SPLINE_3D 0 0 nosimd",
    "spline point 5 float point point point point point* 0 0 CALL_PRIM_SPLINE_3D 0 0 nosimd",
    "spline float 6 string float float float float float float* 0 0 CALL_PRIM_SPLINE_BASIS_1D 0 0 nosimd",
    "spline color 6 string float color color color color color* 0 0 CALL_PRIM_SPLINE_BASIS_3D 0 0 nosimd",
    "spline point 6 string float point point point point point* 0 0 CALL_PRIM_SPLINE_BASIS_3D 0 0 nosimd",
    "printf void 1 string any* 1 1 CALL_PRIM_PRINTF 1 0 nosimd",
    "concat string 2 string string string* 0 0 CALL_PRIM_CONCAT 0 0 nosimd",
    "format string 1 string any* 0 0 CALL_PRIM_FORMAT 0 0 nosimd",
    "min float 3 float float float float* 0 0 CALL_PRIM_MIN_1D 0 0 nosimd",
    "min point 2 any-point any-point any-point* 0 0 CALL_PRIM_MIN_3D 0 0 nosimd",
    "min color 2 color color color* 0 0 CALL_PRIM_MIN_3D 0 0 nosimd",
    "max float 3 float float float float* 0 0 CALL_PRIM_MAX_1D 0 0 nosimd",
    "max point 2 any-point any-point any-point* 0 0 CALL_PRIM_MAX_3D 0 0 nosimd",
    "max color 2 color color color* 0 0 CALL_PRIM_MAX_3D 0 0 nosimd",
    "filterstep float 2 float float any* 0 0 CALL_PRIM_FILTERSTEP 0 0 nosimd",
    "trace color 2 point vector (output float) 0 0 CALL_PRIM_TRACE 0 0 simd varying varying varying",
    "occlusion float 2 point vector (float = 0.0 named (angle float = -1.0 bias float = 0.0 maxdist float = 0.0 variance float = 0 axis vector = 0 environmentdir output vector = 0)) 0 0 CALL_PRIM_OCCLUSION 0 0 simd varying varying uniform uniform uniform uniform uniform uniform varying",
    "indirectdiffuse color 2 point vector (float = 0.0 named (angle float = -1.0 bias float = 0.0 maxdist float = 0.0 variance float = 0 environmentmap string = 0 axis vector = 0 environmentdir output vector = 0 occlusion output float = 0)) 0 0 CALL_PRIM_INDIRECTDIFFUSE 0 0 simd varying varying uniform uniform uniform uniform uniform uniform uniform varying varying",
    nullptr,
};
// clang-format on

namespace {

/// All rows sorted by name; rows with the same name keep the order of the tables.
constexpr auto k_rowsByName = [] {
    using Description = SlcFuncDescription;
    std::array<Description::NamedRow, std::size(Description::sm_funcInfoString) +
                                          std::size(Description::sm_varArgsFuncInfoString) - 2>
        rows;
    auto* next = rows.data();
    const auto add = [&](const char* row, bool hasTail) {
        const std::string_view text = row;
        *next++ = {text.substr(0, text.find(' ')), row, hasTail};
    };
    for (const char* const* row = Description::sm_funcInfoString; *row; ++row)
        add(*row, false);
    for (const char* const* row = Description::sm_varArgsFuncInfoString; *row; ++row)
        add(*row, true);
    // Not std::sort, which is not stable.
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const auto place = std::upper_bound(rows.begin(), row, *row,
                                            [](auto& a, auto& b) { return a.name < b.name; });
        std::rotate(place, row, row + 1);
    }
    return rows;
}();

}  // namespace

std::span<const SlcFuncDescription::NamedRow> SlcFuncDescription::RowsOf(std::string_view name)
{
    const auto [begin, end] =
        std::equal_range(k_rowsByName.begin(), k_rowsByName.end(), NamedRow{name, nullptr, false},
                         [](const NamedRow& a, const NamedRow& b) { return a.name < b.name; });
    return {begin, end};
}
