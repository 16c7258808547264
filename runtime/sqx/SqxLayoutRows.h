#pragma once

#include <string_view>

#include "sqx/SqxLayout.h"

/// The layout and types of the values of instructions: one row per primitive, or for all that match
/// a pattern; the first match counts.
struct SqxLayoutRow {
    std::string_view pattern;   // "*" stands for any text
    std::string_view operands;  // letters of the layout; empty if never written
    std::string_view types;     // one letter for each value
    SqxRun run;

    // In both columns a number repeats the letter before it, and "0" means no values. In the column
    // of types
    //   X  is the last but one word of the name as a type: FLOAT, POINT, 1D, 3D and so on
    //   Y  the last one
    //   W  the one of the two that is wider
    // and a letter with a star, after a list's fixed letters, stands for any further values.
};

// clang-format off
namespace sqxlayout {

using enum SqxRun;

//   pattern                               values    types           runs
inline constexpr SqxLayoutRow k_sqxLayoutRows[] = {
    // Marks
    {"GOTO",                                 "j",      "-",            Grid},
    {"IF_TRUE_GOTO",                         "rj",     "b-",           Grid},
    {"IF_FALSE_GOTO",                        "rj",     "b-",           Grid},
    {"BEGIN_PARALLEL",                       "0",      "",             Grid},
    {"END_PARALLEL",                         "0",      "",             Grid},
    {"IF_TRUE",                              "r",      "b",            Point},
    {"IF_FALSE",                             "r",      "b",            Point},
    {"END_IF",                               "0",      "",             Point},
    {"SET_BOOL",                             "w",      "b",            Point},
    {"BEGIN_ILLUMINANCE",                    "j",      "-",            Grid},
    {"END_ILLUMINANCE",                      "j",      "-",            Grid},
    {"EVAL_LIGHTS_FOR_P",                    "0",      "",             Grid},
    {"RESET_EVAL_LIGHTS_FOR_P",              "0",      "",             Grid},
    {"ARRAY_REF",                            "wrr",    "e[f",          Point},
    {"CHECK_VALID_ARRAY_INDEX",              "rriri",  "sf-s-",        Point},
    {"CALL_DSO",                             "dnw*",   "--aA*",        Point},
    {"CONVERT_ARRAY_DSO_*",                  "wr",     "[[",           Grid},
    // Operators
    {"ASSIGN_TO_ZERO_*",                     "w",      "Y",            Point},
    {"ASSIGN_*",                             "wr",     "XY",           Point},
    {"INIT_MATRIX",                          "wr16",   "mf16",         Point},
    {"INIT_*",                               "wr3",    "tf3",          Point},
    {"INVERT_INNER_BOOL_FLAG",               "wrr",    "b3",           Grid},
    {"INVERT_BOOL_FLAG",                     "wr",     "b2",           Grid},
    {"INVERT_*",                             "wr",     "YY",           Point},
    {"SET_UNIFORM_BOOL_FLAG",                "wr",     "b2",           Reduce},
    {"OR_BOOL_FLAG",                         "wrr",    "b3",           Grid},
    {"ADD_*",                                "wrr",    "WXY",          Point},
    {"SUB_*",                                "wrr",    "WXY",          Point},
    {"MULT_*",                               "wrr",    "WXY",          Point},
    {"DIV_*",                                "wrr",    "WXY",          Point},
    {"DOT_PROD_*",                           "wrr",    "fXY",          Point},
    {"CROSS_PROD_*",                         "wrr",    "tXY",          Point},
    {"BOOL_*",                               "wrr",    "bXY",          Point},
    // Mathematics
    {"CALL_PRIM_ATAN2",                      "wrr",    "f3",           Point},
    {"CALL_PRIM_POW",                        "wrr",    "f3",           Point},
    {"CALL_PRIM_LOG2",                       "wrr",    "f3",           Point},
    {"CALL_PRIM_MOD",                        "wrr",    "f3",           Point},
    {"CALL_PRIM_MAX2_FLOAT",                 "wrr",    "f3",           Point},
    {"CALL_PRIM_MIN2_FLOAT",                 "wrr",    "f3",           Point},
    {"CALL_PRIM_CLAMP_*",                    "wr3",    "Y4",           Point},
    {"CALL_PRIM_MIN_*",                      "nw*",    "-YYY*",        Point},
    {"CALL_PRIM_MAX_*",                      "nw*",    "-YYY*",        Point},
    {"CALL_PRIM_STEP",                       "wrr",    "f3",           Point},
    {"CALL_PRIM_SMOOTHSTEP",                 "wr3",    "f4",           Point},
    {"CALL_PRIM_MIX_*",                      "wr3",    "Y3f",          Point},
    {"CALL_PRIM_SPLINE_BASIS_*",             "nw*",    "-YsfYY*",     Point},
    {"CALL_PRIM_SPLINE_*",                   "nw*",    "-YfYY*",      Point},
    {"CALL_PRIM_FILTERSTEP",                 "wr5",    "f5s",          Point},
    {"COMPUTE_FILTERSTEP_POINTS",            "rw",     "f2",           Grid},
    {"CALL_PRIM_DU_*",                       "wrr",    "YYf",          Grid},
    {"CALL_PRIM_DV_*",                       "wrr",    "YYf",          Grid},
    {"CALL_PRIM_DERIV_*",                    "wrr",    "YYf",          Grid},
    {"CALL_PRIM_RANDOM_*",                   "w",      "Y",            Point},
    {"CALL_PRIM_NOISE_*_2D",                 "wrr",    "Xff",          Point},
    {"CALL_PRIM_NOISE_*_4D",                 "wrr",    "Xtf",          Point},
    {"CALL_PRIM_NOISE_*",                    "wr",     "XY",           Point},
    {"CALL_PRIM_CELLNOISE_*_2D",             "wrr",    "Xff",          Point},
    {"CALL_PRIM_CELLNOISE_*_4D",             "wrr",    "Xtf",          Point},
    {"CALL_PRIM_CELLNOISE_*",                "wr",     "XY",           Point},
    {"CALL_PRIM_PNOISE_*_2D",                "wr4",    "Xf4",          Point},
    {"CALL_PRIM_PNOISE_*_4D",                "wr4",    "Xtftf",        Point},
    {"CALL_PRIM_PNOISE_*",                   "wrr",    "XYY",          Point},
    // Geometry and matrices
    {"CALL_PRIM_XCOMP",                      "wr",     "ft",           Point},
    {"CALL_PRIM_YCOMP",                      "wr",     "ft",           Point},
    {"CALL_PRIM_ZCOMP",                      "wr",     "ft",           Point},
    {"CALL_PRIM_SETXCOMP",                   "mr",     "tf",           Point},
    {"CALL_PRIM_SETYCOMP",                   "mr",     "tf",           Point},
    {"CALL_PRIM_SETZCOMP",                   "mr",     "tf",           Point},
    {"CALL_PRIM_COMP_MATRIX",                "wr3",    "fmff",         Point},
    {"CALL_PRIM_COMP",                       "wrr",    "ftf",          Point},
    {"CALL_PRIM_SETCOMP_MATRIX",             "mr3",    "mf3",          Point},
    {"CALL_PRIM_SETCOMP",                    "mrr",    "tff",          Point},
    {"CALL_PRIM_LENGTH",                     "wr",     "ft",           Point},
    {"CALL_PRIM_DISTANCE",                   "wrr",    "ftt",          Point},
    {"CALL_PRIM_NORMALIZE",                  "wr",     "tt",           Point},
    {"CALL_PRIM_PTLINED",                    "wr3",    "ft3",          Point},
    {"CALL_PRIM_ROTATE_POINT",               "wr4",    "ttftt",        Point},
    {"CALL_PRIM_FACEFORWARD",                "wrr",    "t3",           Shaded},
    {"CALL_PRIM_FACEFORWARD2",               "wr3",    "t4",           Point},
    {"CALL_PRIM_REFLECT",                    "wrr",    "t3",           Point},
    {"CALL_PRIM_REFRACT",                    "wr3",    "t3f",          Point},
    {"CALL_PRIM_FRESNEL5",                   "rrrmm",  "ttf3",         Point},
    {"CALL_PRIM_FRESNEL7",                   "rrrm4",  "ttf3tt",       Point},
    {"CALL_PRIM_AREA",                       "wr",     "ft",           Grid},
    {"CALL_PRIM_CALCULATENORMAL",            "wr3",    "ttff",         Grid},
    {"CALL_PRIM_DEPTH",                      "wr",     "ft",           Point},
    {"CALL_PRIM_INVERSE",                    "wr",     "mm",           Point},
    {"CALL_PRIM_DETERMINANT",                "wr",     "fm",           Point},
    {"CALL_PRIM_TRANSLATE",                  "wrr",    "mmt",          Point},
    {"CALL_PRIM_ROTATE",                     "wr3",    "mmft",         Point},
    {"CALL_PRIM_SCALE",                      "wrr",    "mmt",          Point},
    {"CONCAT_SPACE_MATRIX",                  "wrs",    "mm-",          Point},
    {"CALL_PRIM_*TRANSFORM_TO_CURRENT",      "wrs",    "tt-",          Point},
    {"CALL_PRIM_*TRANSFORM_FROM_CURRENT",    "wrs",    "tt-",          Point},
    {"CALL_PRIM_CTRANSFORM_*",               "wrr",    "tts",          Point},
    {"CALL_PRIM_CTRANSFORM2",                "wrr",    "tst",          Point},
    {"CALL_PRIM_CTRANSFORM",                 "wr3",    "tsst",         Point},
    {"CALL_PRIM_*TRANSFORM2_MATRIX",         "wrr",    "tmt",          Point},
    {"CALL_PRIM_*TRANSFORM2",                "wrr",    "tst",          Point},
    {"CALL_PRIM_*TRANSFORM_MATRIX",          "wr3",    "tsmt",         Point},
    {"CALL_PRIM_*TRANSFORM",                 "wr3",    "tsst",         Point},
    // Strings
    {"CALL_PRIM_PRINTF",                     "n*",     "-sa*",         Point},
    {"CALL_PRIM_CONCAT",                     "nw*",    "-ssss*",       Point},
    {"CALL_PRIM_FORMAT",                     "nw*",    "-ssa*",        Point},
    {"CALL_PRIM_MATCH",                      "wrr",    "fss",          Point},
    // Light
    {"CALL_PRIM_AMBIENT",                    "w",      "t",            Shaded},
    {"CALL_PRIM_DIFFUSE",                    "wr",     "tt",           Shaded},
    {"CALL_PRIM_SPECULARBRDF",               "wr4",    "t4f",          Shaded},
    {"CALL_PRIM_SPECULAR*",                  "wr3",    "t3f",          Shaded},
    {"CALL_PRIM_PHONG",                      "wr3",    "t3f",          Shaded},
    {"CALL_PRIM_TRACE",                      "wrrm",   "t3F",          Point},
    {"CALL_PRIM_RAYHITTEST",                 "wrr",    "ftt",          Point},
    {"CALL_PRIM_TRANSMISSION",               "wrr",    "t3",           Point},
    {"CALL_PRIM_OCCLUSION",                  "wr8m",   "fttf5NT",      Point},
    {"CALL_PRIM_INDIRECTDIFFUSE",            "wr9mm",  "t3f5SNTF",     Point},
    {"CALL_PRIM_ISSHADOWRAY",                "w",      "f",            Point},
    {"CALL_PRIM_ISINDIRECTRAY",              "w",      "f",            Point},
    {"CALL_PRIM_RAYLEVEL",                   "w",      "f",            Point},
    {"EVAL_LIGHTS",                          "r",      "t",            Grid},
    {"ILLUMINATE_NO_CONE",                   "wrrw",   "bt3",          Shaded},
    {"ILLUMINATE",                           "wr4w",   "bttftt",       Shaded},
    {"SOLAR",                                "wrrw",   "btft",         Shaded},
    {"ILLUMINANCE",                          "wr3",    "bttf",         Shaded},
    // Textures
    {"COMPUTE_ST_POINTS",                    "rrw8",   "f10",          Grid},
    {"COMPUTE_POINTS",                       "rw4",    "t5",           Grid},
    {"CALL_TEXTURE_*",                       "wr19",   "Ysf15sff",     Point},
    {"CALL_ENVIRONMENT_*",                   "wr15",   "Ysft4f6sff",   Point},
    {"CALL_SHADOW_*_LIGHT",                  "wr14",   "Xsft4f6sf",    Point},
    {"CALL_SHADOW_*",                        "wr14",   "Ysft4f6sf",    Point},
    {"CALL_AREASHADOW_*_LIGHT",              "wr19",   "Xsft4f6sfNN4", Point},
    {"CALL_AREASHADOW_*",                    "wr19",   "Ysft4f6sfNN4", Point},
    // Messages
    {"CALL_PRIM_TEXTUREINFO",                "wrrmr3", "fssAf3",       Answer},
    {"CALL_PRIM_ATTRIBUTE",                  "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_OPTION",                     "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_RENDERERINFO",               "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_SURFACE",                    "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_DISPLACEMENT",               "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_LIGHTSOURCE",                "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_ATMOSPHERE",                 "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_INCIDENT",                   "wrmr3",  "fsAf3",        Answer},
    {"CALL_PRIM_OPPOSITE",                   "wrmr3",  "fsAf3",        Answer},
    // Known to the renderer, but never written
    {"FREE_STRING",                          "",       "",             Point},
    {"CONVERT_COLOR_HSV_TO_RGB",             "",       "",             Point},
    {"FIND_SPACE",                           "",       "",             Point},
    {"CALL_PRIM_FULLTRACE",                  "",       "",             Point},
    // All other built-ins are functions of one number
    {"CALL_PRIM_*",                          "wr",     "ff",           Point},
};

}  // namespace sqxlayout
// clang-format on
