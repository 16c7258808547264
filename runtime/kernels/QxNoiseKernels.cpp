// Noise. A loop that branches at each point of a mask is none of vectors. So the points that are to
// be computed are picked first, and what a call takes is laid out number by number for a batch of
// them, so that one loop of vectors computes each component of the result:
//
//     operands p, t        numbers  x x x x ..  y y y y ..  z z z z ..  t t t t ..
//
// No vector is computed for points that nobody asked for: under a mask that pays from one point in
// 64 on, and takes a quarter to a third of the time where half of the points are set. Without a
// mask the cheap noise, one value a cell, is computed where its operands stand, since copies would
// be a third of its time.

#include "QxBuiltInNames.h"
#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;

/// Vectors of all instruction sets divide this many points.
constexpr unsigned int k_lanes = 8;

/// Below this many points the function of one point is faster than a vector that is mostly unused.
constexpr unsigned int k_fewestPoints = 3;

/// Points of a mask that are computed together.
struct Batch {
    unsigned int points[k_block];
    unsigned int count;

    /// With the places that fill the last vector up.
    [[nodiscard]] unsigned int Padded() const { return (count + k_lanes - 1) / k_lanes * k_lanes; }
};

static_assert(k_block % k_lanes == 0);

template <class Value>
constexpr unsigned int k_numbers = sizeof(Value) / sizeof(float);

inline void Put(Numbers* numbers, unsigned int j, float value)
{
    numbers[0].at[j] = value;
}

inline void Put(Numbers* numbers, unsigned int j, const Vector& value)
{
    numbers[0].at[j] = value.x;
    numbers[1].at[j] = value.y;
    numbers[2].at[j] = value.z;
}

inline void Take(float& value, const Numbers* numbers, unsigned int j)
{
    value = numbers[0].at[j];
}

inline void Take(Vector& value, const Numbers* numbers, unsigned int j)
{
    value = {numbers[0].at[j], numbers[1].at[j], numbers[2].at[j]};
}

/// Copies the numbers of an operand, component by component. Places past the last point repeat it.
template <class Value>
inline void Gather(Numbers* numbers, const GridOperand<Value>& operand, const Batch& batch)
{
    for (unsigned int j = 0; j < batch.count; ++j)
        Put(numbers, j, QxAt(operand, batch.points[j]));
    for (unsigned int j = batch.count; j < batch.Padded(); ++j)
        Put(numbers, j, QxAt(operand, batch.points[batch.count - 1]));
}

/// Computes one component for all points of a batch.
template <class Noise, int n>
inline void Compute(Numbers& results, const Numbers* operands, unsigned int count,
                    unsigned int seed)
{
    QX_LOOP_OF_OPERANDS_APART
    for (unsigned int j = 0; j < count; ++j) {
        float x[n];
        int periods[n];
        for (int i = 0; i < n; ++i)
            x[i] = operands[i].at[j];
        if constexpr (Noise::isPeriodic)
            for (int i = 0; i < n; ++i)
                periods[i] = qxnoise::PeriodOf(operands[n + i].at[j]);
        results.at[j] = Noise::At(x, periods, seed);
    }
}

/// Fills the next batch, from point `next` on. Returns the point after it.
inline unsigned int Pick(Batch& batch, const QxPoints& points, unsigned int next)
{
    for (batch.count = 0; next < points.End() && batch.count < k_block; ++next) {
        batch.points[batch.count] = next;
        batch.count += points(next) ? 1u : 0u;
    }
    return next;
}

template <class Noise, class Function, class Result, class... Types, std::size_t... k>
QX_KERNEL_CODE void RunPickedPoints(QxMachineState& state, const QxCode& code,
                                    const QxPoints& points, std::index_sequence<k...>)
{
    constexpr unsigned int numbers = (k_numbers<Types> + ...);
    constexpr int n = static_cast<int>(Noise::isPeriodic ? numbers / 2 : numbers);
    // Components of a triple have seeds from 1 on.
    constexpr unsigned int firstSeed = k_numbers<Result> == 1 ? 0 : 1;
    const auto result = Operand<Result>(state, code, 0);
    Batch batch;
    for (unsigned int next = points.first; next < points.End();) {
        next = Pick(batch, points, next);
        if (batch.count < k_fewestPoints) {
            for (unsigned int j = 0; j < batch.count; ++j)
                Function()(QxAt(result, batch.points[j]),
                           QxAt(Operand<Types>(state, code, k + 1), batch.points[j])...);
            continue;
        }
        Numbers operands[numbers];
        Numbers* place = operands;
        ((Gather(place, Operand<Types>(state, code, k + 1), batch), place += k_numbers<Types>),
         ...);
        Numbers results[k_numbers<Result>];
        for (unsigned int i = 0; i < k_numbers<Result>; ++i)
            Compute<Noise, n>(results[i], operands, batch.Padded(), firstSeed + i);
        for (unsigned int j = 0; j < batch.count; ++j)
            Take(QxAt(result, batch.points[j]), results, j);
    }
}

template <class Noise, class Function, class Result, class... Types>
void PickedPoints(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    RunPickedPoints<Noise, Function, Result, Types...>(state, code, points,
                                                       std::index_sequence_for<Types...>());
}

/// A row for a noise whose operands are the coordinates and then, if it repeats, their periods.
template <class Noise, class Result, class... Types, class Function>
constexpr QxKernelRow NoiseRow(std::string_view primitive, Function function)
{
    QxKernelRow row = Each<Result&, Types...>(primitive, function);
    row.masked = PickedPoints<Noise, Function, Result, Types...>;
    if constexpr (!std::is_same_v<Noise, qxnoise::CellNoise>)
        row.all = row.masked;
    return row;
}

#define NOISE(KIND, NAME, ...)                                                                     \
    NoiseRow<qxnoise::KIND, __VA_ARGS__>(                                                          \
        #NAME, [](auto& r, const auto&... arguments) { NAME(r, arguments...); })

// clang-format off
constexpr QxKernelRow k_rows[] = {
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_1D, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_2D, float, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_3D, float, Vector),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_4D, float, Vector, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_1D, Vector, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_2D, Vector, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_3D, Vector, Vector),
    NoiseRow<qxnoise::PlainNoise, Vector, Vector, float>("CALL_PRIM_NOISE_POINT_4D", [](Vector& r, const Vector& p, float t) {
        CALL_PRIM_POINT_FLOAT_4D(r, p, t);
    }),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_FLOAT_1D, float, float),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_FLOAT_2D, float, float, float),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_FLOAT_3D, float, Vector),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_FLOAT_4D, float, Vector, float),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_POINT_1D, Vector, float),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_POINT_2D, Vector, float, float),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_POINT_3D, Vector, Vector),
    NOISE(CellNoise, CALL_PRIM_CELLNOISE_POINT_4D, Vector, Vector, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_FLOAT_1D, float, float, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_FLOAT_2D, float, float, float, float, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_FLOAT_3D, float, Vector, Vector),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_FLOAT_4D, float, Vector, float, Vector, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_POINT_1D, Vector, float, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_POINT_2D, Vector, float, float, float, float),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_POINT_3D, Vector, Vector, Vector),
    NOISE(PeriodicNoise, CALL_PRIM_PNOISE_POINT_4D, Vector, Vector, float, Vector, float),
};
// clang-format on

}  // namespace

QxKernelRows NoiseKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
