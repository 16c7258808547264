#pragma once

#include "QxCardNames.h"
#include "QxSceneCalls.h"

// Maps names in generated code to functions, for variable argument lists, random numbers,
// footprints and messages. `theTypes` is null if a format is known to match its arguments.
// Otherwise it contains one letter for each argument, of which the first is the format: f float, p
// point, vector or normal, c color, m matrix, s string.

// clang-format off
#define CALL_PRIM_SPLINE_1D(result, arguments, count) QxSplineCall(result, "catmull-rom", arguments, 1, count)
#define CALL_PRIM_SPLINE_3D(result, arguments, count) QxSplineCall(result, "catmull-rom", arguments, 1, count)
#define CALL_PRIM_SPLINE_BASIS_1D(result, arguments, count) QxSplineCall(result, QxArgument<const char*>(arguments, 0), arguments, 2, count)
#define CALL_PRIM_SPLINE_BASIS_3D(result, arguments, count) QxSplineCall(result, QxArgument<const char*>(arguments, 0), arguments, 2, count)
#define CALL_PRIM_MIN_1D(result, arguments, count) QxChooseCall<QxLesser>(result, arguments, count)
#define CALL_PRIM_MIN_3D(result, arguments, count) QxChooseCall<QxLesser>(result, arguments, count)
#define CALL_PRIM_MAX_1D(result, arguments, count) QxChooseCall<QxGreater>(result, arguments, count)
#define CALL_PRIM_MAX_3D(result, arguments, count) QxChooseCall<QxGreater>(result, arguments, count)
#define CALL_PRIM_CONCAT(result, arguments, count) QxConcatCall(result, arguments, count)
#define CALL_PRIM_FORMAT(result, arguments, count) QxAssignString(result, QxFormatArguments(arguments, theTypes, count).Characters())
#define CALL_PRIM_PRINTF(arguments, count) shaderSupport->Print(QxFormatArguments(arguments, theTypes, count).Characters())

// The result of a whole-grid form of `random` is varying. Whether that of the plain form is varying
// can be seen only from the text of the operand.
#define CALL_PRIM_RANDOM_COLOR(result) QxCallPlainAt(QxIsAtPoint(#result) ? polyCnt : QxDraws::k_allPoints, QxRandomTripleCall(shaderSupport), result)
#define CALL_PRIM_RANDOM_COLOR_SIMD(...) QxCallSimdAt(numMp, QxRandomTripleCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_COLOR_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxRandomTripleCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_COLOR_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxRandomTripleCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_FLOAT(result) QxCallPlainAt(QxIsAtPoint(#result) ? polyCnt : QxDraws::k_allPoints, QxRandomCall(shaderSupport), result)
#define CALL_PRIM_RANDOM_FLOAT_SIMD(...) QxCallSimdAt(numMp, QxRandomCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_FLOAT_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxRandomCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_FLOAT_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxRandomCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_POINT(result) QxCallPlainAt(QxIsAtPoint(#result) ? polyCnt : QxDraws::k_allPoints, QxRandomTripleCall(shaderSupport), result)
#define CALL_PRIM_RANDOM_POINT_SIMD(...) QxCallSimdAt(numMp, QxRandomTripleCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_POINT_SIMD_IF_TRUE(...) QxCallSimdIfAt(numMp, true, QxRandomTripleCall(shaderSupport), __VA_ARGS__)
#define CALL_PRIM_RANDOM_POINT_SIMD_IF_FALSE(...) QxCallSimdIfAt(numMp, false, QxRandomTripleCall(shaderSupport), __VA_ARGS__)

// Footprints, for the whole grid; a condition is the last argument.
#define COMPUTE_POINTS(p, p1, p2, p3, p4) QxPatchCorners(QX_GRID, QxAllPoints(), p, p1, p2, p3, p4)
#define COMPUTE_ST_POINTS(s, t, s1, t1, s2, t2, s3, t3, s4, t4) do { QxPatchCorners(QX_GRID, QxAllPoints(), s, s1, s2, s3, s4); QxPatchCorners(QX_GRID, QxAllPoints(), t, t1, t2, t3, t4); } while (false)
#define COMPUTE_FILTERSTEP_POINTS(s2, s1) QxFilterStepEnds(QX_GRID, QxAllPoints(), s2, s1)
#define COMPUTE_POINTS_IF_TRUE(p, p1, p2, p3, p4, condition) QxPatchCorners(QX_GRID, QxWhere(condition, true), p, p1, p2, p3, p4)
#define COMPUTE_ST_POINTS_IF_TRUE(s, t, s1, t1, s2, t2, s3, t3, s4, t4, condition) do { QxPatchCorners(QX_GRID, QxWhere(condition, true), s, s1, s2, s3, s4); QxPatchCorners(QX_GRID, QxWhere(condition, true), t, t1, t2, t3, t4); } while (false)
#define COMPUTE_FILTERSTEP_POINTS_IF_TRUE(s2, s1, condition) QxFilterStepEnds(QX_GRID, QxWhere(condition, true), s2, s1)
#define COMPUTE_POINTS_IF_FALSE(p, p1, p2, p3, p4, condition) QxPatchCorners(QX_GRID, QxWhere(condition, false), p, p1, p2, p3, p4)
#define COMPUTE_ST_POINTS_IF_FALSE(s, t, s1, t1, s2, t2, s3, t3, s4, t4, condition) do { QxPatchCorners(QX_GRID, QxWhere(condition, false), s, s1, s2, s3, s4); QxPatchCorners(QX_GRID, QxWhere(condition, false), t, t1, t2, t3, t4); } while (false)
#define COMPUTE_FILTERSTEP_POINTS_IF_FALSE(s2, s1, condition) QxFilterStepEnds(QX_GRID, QxWhere(condition, false), s2, s1)

// Messages. The result is one float in every form. With a condition that holds at no point, the
// result keeps its value.
#define CALL_PRIM_ATTRIBUTE(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Attribute, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_ATTRIBUTE_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Attribute, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_ATTRIBUTE_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Attribute, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_ATTRIBUTE_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Attribute, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_OPTION(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Option, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_OPTION_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Option, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_OPTION_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Option, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_OPTION_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Option, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_RENDERERINFO(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::RendererInfo, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_RENDERERINFO_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::RendererInfo, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_RENDERERINFO_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::RendererInfo, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_RENDERERINFO_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::RendererInfo, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_SURFACE(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Surface, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_SURFACE_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Surface, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_SURFACE_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Surface, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_SURFACE_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Surface, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_DISPLACEMENT(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Displacement, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_DISPLACEMENT_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Displacement, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_DISPLACEMENT_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Displacement, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_DISPLACEMENT_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Displacement, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_LIGHTSOURCE(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::LightSource, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints(), lightCnt))
#define CALL_PRIM_LIGHTSOURCE_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::LightSource, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints(), lightCnt))
#define CALL_PRIM_LIGHTSOURCE_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::LightSource, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true), lightCnt), numMp, QxWhere(condition, true))
#define CALL_PRIM_LIGHTSOURCE_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::LightSource, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false), lightCnt), numMp, QxWhere(condition, false))
#define CALL_PRIM_ATMOSPHERE(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Atmosphere, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_ATMOSPHERE_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Atmosphere, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_ATMOSPHERE_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Atmosphere, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_ATMOSPHERE_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Atmosphere, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_INCIDENT(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Incident, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_INCIDENT_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Incident, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_INCIDENT_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Incident, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_INCIDENT_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Incident, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_OPPOSITE(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Opposite, "", name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_OPPOSITE_SIMD(result, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::Opposite, "", name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_OPPOSITE_SIMD_IF_TRUE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Opposite, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_OPPOSITE_SIMD_IF_FALSE(result, condition, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::Opposite, "", name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
#define CALL_PRIM_TEXTUREINFO(result, texture, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::TextureInfo, texture, name, QxAddress(value), varying, type, length, 1, QxAllPoints()))
#define CALL_PRIM_TEXTUREINFO_SIMD(result, texture, name, value, varying, type, length) ((result) = QxSendMessage(shaderSupport, QxMessage::TextureInfo, texture, name, QxAddress(value), varying, type, length, numMp, QxAllPoints()))
#define CALL_PRIM_TEXTUREINFO_SIMD_IF_TRUE(result, condition, texture, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::TextureInfo, texture, name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, true)), numMp, QxWhere(condition, true))
#define CALL_PRIM_TEXTUREINFO_SIMD_IF_FALSE(result, condition, texture, name, value, varying, type, length) QxTakeAnswer(result, QxSendMessage(shaderSupport, QxMessage::TextureInfo, texture, name, QxAddress(value), varying, type, length, numMp, QxWhere(condition, false)), numMp, QxWhere(condition, false))
// clang-format on
