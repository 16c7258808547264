#pragma once

#include "QxCalls.h"
#include "QxCardNames.h"

// Maps names in generated code to functions. Other names are mapped in QxCardNames.h, which is
// generated from the cards, in QxOperators.h and in QxSceneNames.h. A name has up to four forms:
// without a suffix for the current point or uniform data, with _SIMD for the whole grid, and with
// _SIMD_IF_TRUE and _SIMD_IF_FALSE for the points where a flag is true or false. The macros use
// these variables of the calling code: the grid (`numMp`, `numMpU`, `numMpV`), the point
// (`polyCnt`), the context (`i_context`, `shaderSupport`), the predefined variables (`i_hiddens`)
// and the lights (`i_lights`, `i_numLights`, `lightCnt`).

// clang-format off

// Components of triples, and the four numbers that one packed number contains.
#define CALL_PRIM_XCOMP(result, p) ((result) = QxToPoint(p).x)
#define CALL_PRIM_YCOMP(result, p) ((result) = QxToPoint(p).y)
#define CALL_PRIM_ZCOMP(result, p) ((result) = QxToPoint(p).z)
#define CALL_PRIM_SETXCOMP(p, value) ((p).x = QxNumber(value))
#define CALL_PRIM_SETYCOMP(p, value) ((p).y = QxNumber(value))
#define CALL_PRIM_SETZCOMP(p, value) ((p).z = QxNumber(value))
#define CALL_PRIM_UNPACK(packed, a, b, c, d) QxUnpack(QxNumber(packed), a, b, c, d)

// Strings, properties of the current ray, and spaces.
#define CALL_PRIM_MATCH(result, expression, text) ((result) = i_context.Match(expression, text) ? 1.0f : 0.0f)
#define CALL_PRIM_ISSHADOWRAY(result) ((result) = shaderSupport->IsShadowRay() ? 1.0f : 0.0f)
#define CALL_PRIM_ISINDIRECTRAY(result) ((result) = shaderSupport->IsIndirectRay() ? 1.0f : 0.0f)
#define CALL_PRIM_RAYLEVEL(result) ((result) = shaderSupport->RayLevel())
#define CONCAT_SPACE_MATRIX(dest, source, space) ((dest) = (source) * i_context.Space(space).toCurrent)

// Functions that use values of the point in addition to their arguments.
#define QX_LIGHTS QxLights{shaderSupport, i_hiddens.GetP(), i_lights, i_numLights}
#define CALL_PRIM_AMBIENT(...) QxCallPlainAt(polyCnt, QxAmbientCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_AMBIENT_SIMD(result) QxAmbientOverGrid(numMp, QX_LIGHTS, result)
#define CALL_PRIM_AMBIENT_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxAmbientCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_AMBIENT_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxAmbientCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_DIFFUSE(...) QxCallPlainAt(polyCnt, QxDiffuseCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_DIFFUSE_SIMD(...) QxCallSimdAt(numMp, QxDiffuseCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_DIFFUSE_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxDiffuseCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_DIFFUSE_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxDiffuseCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_FACEFORWARD(...) QxCallPlainAt(polyCnt < numMp ? polyCnt : 0, QxFaceForwardNgCall{i_hiddens.GetNg()}, __VA_ARGS__)
#define CALL_PRIM_FACEFORWARD_SIMD(...) QxCallSimdAt(numMp, QxFaceForwardNgCall{i_hiddens.GetNg()}, __VA_ARGS__)
#define CALL_PRIM_FACEFORWARD_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxFaceForwardNgCall{i_hiddens.GetNg()}, __VA_ARGS__)
#define CALL_PRIM_FACEFORWARD_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxFaceForwardNgCall{i_hiddens.GetNg()}, __VA_ARGS__)
#define CALL_PRIM_PHONG(...) QxCallPlainAt(polyCnt, QxPhongCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_PHONG_SIMD(...) QxCallSimdAt(numMp, QxPhongCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_PHONG_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxPhongCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_PHONG_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxPhongCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULAR(...) QxCallPlainAt(polyCnt, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULAR_SIMD(...) QxCallSimdAt(numMp, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULAR_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULAR_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULARSTD(...) QxCallPlainAt(polyCnt, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULARSTD_SIMD(...) QxCallSimdAt(numMp, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULARSTD_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)
#define CALL_PRIM_SPECULARSTD_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxSpecularCall(QX_LIGHTS), __VA_ARGS__)

// Derivatives and other functions of neighbouring points.
#define QX_GRID QxGrid{numMpU, numMpV}
#define CALL_PRIM_DU_FLOAT_SIMD(result, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::U, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DU_FLOAT_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::U, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DU_FLOAT_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::U, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DU_COLOR_SIMD(result, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::U, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DU_COLOR_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::U, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DU_COLOR_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::U, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DU_POINT_SIMD(result, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::U, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DU_POINT_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::U, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DU_POINT_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::U, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DV_FLOAT_SIMD(result, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::V, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DV_FLOAT_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::V, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DV_FLOAT_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<float>(QX_GRID, QxGridAxis::V, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DV_COLOR_SIMD(result, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::V, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DV_COLOR_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::V, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DV_COLOR_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<QxRGBColor>(QX_GRID, QxGridAxis::V, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DV_POINT_SIMD(result, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::V, QxAllPoints(), result, value, spacing)
#define CALL_PRIM_DV_POINT_SIMD_IF_TRUE(result, condition, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::V, QxWhere(condition, true), result, value, spacing)
#define CALL_PRIM_DV_POINT_SIMD_IF_FALSE(result, condition, value, spacing) QxDerivativeAlong<QxVector3>(QX_GRID, QxGridAxis::V, QxWhere(condition, false), result, value, spacing)
#define CALL_PRIM_DERIV_FLOAT_SIMD(result, numerator, denominator) QxDerivativeByOperand<float>(QX_GRID, QxAllPoints(), result, numerator, denominator)
#define CALL_PRIM_DERIV_FLOAT_SIMD_IF_TRUE(result, condition, numerator, denominator) QxDerivativeByOperand<float>(QX_GRID, QxWhere(condition, true), result, numerator, denominator)
#define CALL_PRIM_DERIV_FLOAT_SIMD_IF_FALSE(result, condition, numerator, denominator) QxDerivativeByOperand<float>(QX_GRID, QxWhere(condition, false), result, numerator, denominator)
#define CALL_PRIM_DERIV_COLOR_SIMD(result, numerator, denominator) QxDerivativeByOperand<QxRGBColor>(QX_GRID, QxAllPoints(), result, numerator, denominator)
#define CALL_PRIM_DERIV_COLOR_SIMD_IF_TRUE(result, condition, numerator, denominator) QxDerivativeByOperand<QxRGBColor>(QX_GRID, QxWhere(condition, true), result, numerator, denominator)
#define CALL_PRIM_DERIV_COLOR_SIMD_IF_FALSE(result, condition, numerator, denominator) QxDerivativeByOperand<QxRGBColor>(QX_GRID, QxWhere(condition, false), result, numerator, denominator)
#define CALL_PRIM_DERIV_POINT_SIMD(result, numerator, denominator) QxDerivativeByOperand<QxVector3>(QX_GRID, QxAllPoints(), result, numerator, denominator)
#define CALL_PRIM_DERIV_POINT_SIMD_IF_TRUE(result, condition, numerator, denominator) QxDerivativeByOperand<QxVector3>(QX_GRID, QxWhere(condition, true), result, numerator, denominator)
#define CALL_PRIM_DERIV_POINT_SIMD_IF_FALSE(result, condition, numerator, denominator) QxDerivativeByOperand<QxVector3>(QX_GRID, QxWhere(condition, false), result, numerator, denominator)
#define CALL_PRIM_AREA_SIMD(result, p) QxAreaOfOperand(QX_GRID, QxAllPoints(), result, p)
#define CALL_PRIM_AREA_SIMD_IF_TRUE(result, condition, p) QxAreaOfOperand(QX_GRID, QxWhere(condition, true), result, p)
#define CALL_PRIM_AREA_SIMD_IF_FALSE(result, condition, p) QxAreaOfOperand(QX_GRID, QxWhere(condition, false), result, p)
#define CALL_PRIM_CALCULATENORMAL_SIMD(result, p, du, dv) QxNormalOfOperand(QX_GRID, QxAllPoints(), result, p, du, dv)
#define CALL_PRIM_CALCULATENORMAL_SIMD_IF_TRUE(result, condition, p, du, dv) QxNormalOfOperand(QX_GRID, QxWhere(condition, true), result, p, du, dv)
#define CALL_PRIM_CALCULATENORMAL_SIMD_IF_FALSE(result, condition, p, du, dv) QxNormalOfOperand(QX_GRID, QxWhere(condition, false), result, p, du, dv)

// Transforms between the current space and another one, given by its number, and between RGB and
// another color space, given by its name. The condition is the first argument.
#define CALL_PRIM_TRANSFORM_TO_CURRENT(dest, source, space) QxCallPlain(QxToCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_TRANSFORM_TO_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxToCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_TRANSFORM_TO_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxToCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_TRANSFORM_FROM_CURRENT(dest, source, space) QxCallPlain(QxFromCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_TRANSFORM_FROM_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxFromCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_TRANSFORM_FROM_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxFromCurrentCall<QxAsPoint>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_VTRANSFORM_TO_CURRENT(dest, source, space) QxCallPlain(QxToCurrentCall<QxAsVector>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_VTRANSFORM_TO_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxToCurrentCall<QxAsVector>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_VTRANSFORM_TO_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxToCurrentCall<QxAsVector>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_VTRANSFORM_FROM_CURRENT(dest, source, space) QxCallPlain(QxFromCurrentCall<QxAsVector>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_VTRANSFORM_FROM_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxFromCurrentCall<QxAsVector>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_VTRANSFORM_FROM_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxFromCurrentCall<QxAsVector>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_NTRANSFORM_TO_CURRENT(dest, source, space) QxCallPlain(QxToCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_NTRANSFORM_TO_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxToCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_NTRANSFORM_TO_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxToCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_NTRANSFORM_FROM_CURRENT(dest, source, space) QxCallPlain(QxFromCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_NTRANSFORM_FROM_CURRENT_SIMD(dest, source, space) QxCallSimd(numMp, QxFromCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, source)
#define CALL_PRIM_NTRANSFORM_FROM_CURRENT_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxFromCurrentCall<QxAsNormal>{i_context.Space(space)}, dest, condition, source)
#define CALL_PRIM_CTRANSFORM_TO_RGB(dest, source, space) QxCallPlain(QxColorToRgbCall(), dest, source, space)
#define CALL_PRIM_CTRANSFORM_TO_RGB_SIMD(dest, source, space) QxCallSimd(numMp, QxColorToRgbCall(), dest, source, space)
#define CALL_PRIM_CTRANSFORM_TO_RGB_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxColorToRgbCall(), dest, condition, source, space)
#define CALL_PRIM_CTRANSFORM_FROM_RGB(dest, source, space) QxCallPlain(QxColorFromRgbCall(), dest, source, space)
#define CALL_PRIM_CTRANSFORM_FROM_RGB_SIMD(dest, source, space) QxCallSimd(numMp, QxColorFromRgbCall(), dest, source, space)
#define CALL_PRIM_CTRANSFORM_FROM_RGB_SIMD_IF_TRUE(condition, dest, source, space) QxCallSimdIf(numMp, true, QxColorFromRgbCall(), dest, condition, source, space)

// The evaluation of lights, and light statements. The condition is the second argument, but the
// last one of `illuminance`.
#define EVAL_LIGHTS(position) shaderSupport->EvaluateLights(position, numMp, i_lights, i_numLights)
#define ILLUMINATE(flag, position, axis, angle, Ps, L) ((flag) = QxIlluminateCall()(position, axis, QxNumber(angle), Ps, L))
#define ILLUMINATE_SIMD(flag, ...) QxLightOverGrid(numMp, QxAllPoints(), QxIlluminateCall(), flag, __VA_ARGS__)
#define ILLUMINATE_SIMD_IF_TRUE(flag, condition, ...) QxLightOverGrid(numMp, QxWhere(condition, true), QxIlluminateCall(), flag, __VA_ARGS__)
#define ILLUMINATE_NO_CONE(flag, position, Ps, L) ((flag) = QxIlluminateNoConeCall()(position, Ps, L))
#define ILLUMINATE_NO_CONE_SIMD(flag, ...) QxLightOverGrid(numMp, QxAllPoints(), QxIlluminateNoConeCall(), flag, __VA_ARGS__)
#define ILLUMINATE_NO_CONE_SIMD_IF_TRUE(flag, condition, ...) QxLightOverGrid(numMp, QxWhere(condition, true), QxIlluminateNoConeCall(), flag, __VA_ARGS__)
#define SOLAR(flag, L, axis, angle) ((flag) = QxSolarCall()(L, axis, QxNumber(angle)))
#define SOLAR_SIMD(flag, ...) QxLightOverGrid(numMp, QxAllPoints(), QxSolarCall(), flag, __VA_ARGS__)
#define SOLAR_SIMD_IF_TRUE(flag, condition, ...) QxLightOverGrid(numMp, QxWhere(condition, true), QxSolarCall(), flag, __VA_ARGS__)
#define SOLAR_SIMD_IF_FALSE(flag, condition, ...) QxLightOverGrid(numMp, QxWhere(condition, false), QxSolarCall(), flag, __VA_ARGS__)
#define QX_LIGHT_DIRECTIONS QxIlluminanceCall{i_lights[lightCnt].L}
#define ILLUMINANCE(flag, position, axis, angle) ((flag) = QX_LIGHT_DIRECTIONS(polyCnt, position, axis, QxNumber(angle)))
#define ILLUMINANCE_SIMD(flag, position, axis, angle) QxIlluminanceOverGrid(numMp, QxAllPoints(), QX_LIGHT_DIRECTIONS, flag, axis, angle)
#define ILLUMINANCE_SIMD_IF_TRUE(flag, position, axis, angle, condition) QxIlluminanceOverGrid(numMp, QxWhere(condition, true), QX_LIGHT_DIRECTIONS, flag, axis, angle)
#define ILLUMINANCE_SIMD_IF_FALSE(flag, position, axis, angle, condition) QxIlluminanceOverGrid(numMp, QxWhere(condition, false), QX_LIGHT_DIRECTIONS, flag, axis, angle)
// clang-format on
