// The operations of mathematical functions, interpolation, random numbers and noise, at one point.

#include <cmath>

#include "QxFilters.h"
#include "QxNoise.h"
#include "QxSplines.h"
#include "machine/SqxCall.h"
#include "machine/SqxMachine.h"

namespace {

using enum SqxPrimitive;

using Vector = QxVector3;

template <float (*function)(float)>
void Of1(const SqxCall& call)
{
    call.Set(0, function(call.Get<float>(1)));
}

template <float (*function)(float, float)>
void Of2(const SqxCall& call)
{
    call.Set(0, function(call.Get<float>(1), call.Get<float>(2)));
}

template <float (*function)(float, float, float)>
void Of3(const SqxCall& call)
{
    call.Set(0, function(call.Get<float>(1), call.Get<float>(2), call.Get<float>(3)));
}

template <class Value, Value (*function)(const Value&, const Value&, const Value&)>
void OfTriples(const SqxCall& call)
{
    call.Set(0, function(call.Get<Value>(1), call.Get<Value>(2), call.Get<Value>(3)));
}

template <class Value>
void Mix(const SqxCall& call)
{
    call.Set(0, QxMix(call.Get<Value>(1), call.Get<Value>(2), call.Get<float>(3)));
}

float Larger(float a, float b)
{
    return QxMax(a, b);
}

float Smaller(float a, float b)
{
    return QxMin(a, b);
}

/// Combines any number of arguments by `function`, from left to right.
template <class Value, Value (*function)(const Value&, const Value&)>
void OverAll(const SqxCall& call)
{
    Value value = call.Get<Value>(1);
    for (std::size_t i = 2; i < call.Count(); ++i)
        value = function(value, call.Get<Value>(i));
    call.Set(0, value);
}

template <float (*function)(float, float)>
void OverAllNumbers(const SqxCall& call)
{
    float value = call.Get<float>(1);
    for (std::size_t i = 2; i < call.Count(); ++i)
        value = function(value, call.Get<float>(i));
    call.Set(0, value);
}

/// Evaluates a spline: the parameter is at `place`, followed by the control values.
template <class Value>
void SplineFrom(const SqxCall& call, const char* basis, std::size_t place)
{
    const int count = static_cast<int>(call.Count() - place) - 1;
    const auto values = [&](int i) {
        return call.Get<Value>(place + 1 + static_cast<std::size_t>(i));
    };
    call.Set(0, QxSpline<Value>(QxFindSplineBasis(basis), call.Get<float>(place), count, values));
}

template <class Value>
void Spline(const SqxCall& call)
{
    SplineFrom<Value>(call, "catmull-rom", 1);
}

template <class Value>
void SplineOfBasis(const SqxCall& call)
{
    SplineFrom<Value>(call, call.Get<std::string>(1).c_str(), 2);
}

void FilterStep(const SqxCall& call)
{
    call.Set(0, QxFilterStep(call.Get<float>(1), call.Get<float>(2), call.Get<float>(3),
                             call.Get<float>(4), call.Get<std::string>(5).c_str()));
}

template <class Noise, class Result, class... Arguments>
void NoiseOf(const SqxCall& call)
{
    Result result{};
    std::apply([&](const auto&... values) { Noise::At(result, values...); },
               call.GetAll<Arguments...>(1));
    call.Set(0, result);
}

float NextRandomNumber(const SqxCall& call)
{
    const bool uniform = call.Variable(0).uniform;
    return call.Machine().RandomNumber(uniform ? QxDraws::k_allPoints
                                               : static_cast<unsigned int>(call.Point()));
}

void RandomNumber(const SqxCall& call)
{
    call.Set(0, NextRandomNumber(call));
}

void RandomTriple(const SqxCall& call)
{
    float values[3];
    for (float& value : values)
        value = NextRandomNumber(call);
    call.Set(0, Vector{values[0], values[1], values[2]});
}

// clang-format off
constexpr SqxOperationRow k_math[] = {
    {CALL_PRIM_RADIANS,         Of1<QxRadians>},
    {CALL_PRIM_DEGREES,         Of1<QxDegrees>},
    {CALL_PRIM_SIN,             Of1<std::sin>},
    {CALL_PRIM_ASIN,            Of1<QxAsin>},
    {CALL_PRIM_COS,             Of1<std::cos>},
    {CALL_PRIM_ACOS,            Of1<QxAcos>},
    {CALL_PRIM_TAN,             Of1<std::tan>},
    {CALL_PRIM_ATAN,            Of1<std::atan>},
    {CALL_PRIM_ATAN2,           Of2<std::atan2>},
    {CALL_PRIM_POW,             Of2<QxPow>},
    {CALL_PRIM_EXP,             Of1<std::exp>},
    {CALL_PRIM_SQRT,            Of1<QxSqrt>},
    {CALL_PRIM_INVERSESQRT,     Of1<QxInverseSqrt>},
    {CALL_PRIM_LOG,             Of1<QxLog>},
    {CALL_PRIM_LOG2,            Of2<QxLog>},
    {CALL_PRIM_MOD,             Of2<QxMod>},
    {CALL_PRIM_ABS,             Of1<std::abs>},
    {CALL_PRIM_SIGN,            Of1<QxSign>},
    {CALL_PRIM_MIN2_FLOAT,      Of2<QxMin>},
    {CALL_PRIM_MAX2_FLOAT,      Of2<QxMax>},
    {CALL_PRIM_MIN_1D,          OverAllNumbers<Smaller>},
    {CALL_PRIM_MAX_1D,          OverAllNumbers<Larger>},
    {CALL_PRIM_MIN_3D,          OverAll<Vector, QxMinTriple<Vector>>},
    {CALL_PRIM_MAX_3D,          OverAll<Vector, QxMaxTriple<Vector>>},
    {CALL_PRIM_CLAMP_1D,        Of3<QxClamp>},
    {CALL_PRIM_CLAMP_3D,        OfTriples<Vector, QxClampTriple<Vector>>},
    {CALL_PRIM_FLOOR,           Of1<std::floor>},
    {CALL_PRIM_CEIL,            Of1<std::ceil>},
    {CALL_PRIM_ROUND,           Of1<QxRound>},
    {CALL_PRIM_STEP,            Of2<QxStep>},
    {CALL_PRIM_SMOOTHSTEP,      Of3<QxSmoothStep>},
    {CALL_PRIM_MIX_1D,          Mix<float>},
    {CALL_PRIM_MIX_3D,          Mix<Vector>},
    {CALL_PRIM_SPLINE_1D,       Spline<float>},
    {CALL_PRIM_SPLINE_3D,       Spline<Vector>},
    {CALL_PRIM_SPLINE_BASIS_1D, SplineOfBasis<float>},
    {CALL_PRIM_SPLINE_BASIS_3D, SplineOfBasis<Vector>},
    {CALL_PRIM_FILTERSTEP,      FilterStep},
    {CALL_PRIM_RANDOM_FLOAT,    RandomNumber},
    {CALL_PRIM_RANDOM_COLOR,    RandomTriple},
    {CALL_PRIM_RANDOM_POINT,    RandomTriple},
};

constexpr SqxOperationRow k_noises[] = {
    {CALL_PRIM_NOISE_FLOAT_1D,     NoiseOf<QxNoise, float, float>},
    {CALL_PRIM_NOISE_FLOAT_2D,     NoiseOf<QxNoise, float, float, float>},
    {CALL_PRIM_NOISE_FLOAT_3D,     NoiseOf<QxNoise, float, Vector>},
    {CALL_PRIM_NOISE_FLOAT_4D,     NoiseOf<QxNoise, float, Vector, float>},
    {CALL_PRIM_NOISE_POINT_1D,     NoiseOf<QxNoise, Vector, float>},
    {CALL_PRIM_NOISE_POINT_2D,     NoiseOf<QxNoise, Vector, float, float>},
    {CALL_PRIM_NOISE_POINT_3D,     NoiseOf<QxNoise, Vector, Vector>},
    {CALL_PRIM_NOISE_POINT_4D,     NoiseOf<QxNoise, Vector, Vector, float>},
    {CALL_PRIM_CELLNOISE_FLOAT_1D, NoiseOf<QxCellNoise, float, float>},
    {CALL_PRIM_CELLNOISE_FLOAT_2D, NoiseOf<QxCellNoise, float, float, float>},
    {CALL_PRIM_CELLNOISE_FLOAT_3D, NoiseOf<QxCellNoise, float, Vector>},
    {CALL_PRIM_CELLNOISE_FLOAT_4D, NoiseOf<QxCellNoise, float, Vector, float>},
    {CALL_PRIM_CELLNOISE_POINT_1D, NoiseOf<QxCellNoise, Vector, float>},
    {CALL_PRIM_CELLNOISE_POINT_2D, NoiseOf<QxCellNoise, Vector, float, float>},
    {CALL_PRIM_CELLNOISE_POINT_3D, NoiseOf<QxCellNoise, Vector, Vector>},
    {CALL_PRIM_CELLNOISE_POINT_4D, NoiseOf<QxCellNoise, Vector, Vector, float>},
    {CALL_PRIM_PNOISE_FLOAT_1D,    NoiseOf<QxPeriodicNoise, float, float, float>},
    {CALL_PRIM_PNOISE_FLOAT_2D,    NoiseOf<QxPeriodicNoise, float, float, float, float, float>},
    {CALL_PRIM_PNOISE_FLOAT_3D,    NoiseOf<QxPeriodicNoise, float, Vector, Vector>},
    {CALL_PRIM_PNOISE_FLOAT_4D,    NoiseOf<QxPeriodicNoise, float, Vector, float, Vector, float>},
    {CALL_PRIM_PNOISE_POINT_1D,    NoiseOf<QxPeriodicNoise, Vector, float, float>},
    {CALL_PRIM_PNOISE_POINT_2D,    NoiseOf<QxPeriodicNoise, Vector, float, float, float, float>},
    {CALL_PRIM_PNOISE_POINT_3D,    NoiseOf<QxPeriodicNoise, Vector, Vector, Vector>},
    {CALL_PRIM_PNOISE_POINT_4D,    NoiseOf<QxPeriodicNoise, Vector, Vector, float, Vector, float>},
};
// clang-format on

}  // namespace

std::span<const SqxOperationRow> SqxMathTable()
{
    return k_math;
}

std::span<const SqxOperationRow> SqxNoiseTable()
{
    return k_noises;
}
