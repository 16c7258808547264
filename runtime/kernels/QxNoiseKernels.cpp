// Noise, computed for batches of points, see QxBatches.h. With a mask, batches are faster than a
// call for each point if more than one point in 64 is active, and take a quarter to a third of the
// time if half of the points are active. Without a mask, `cellnoise` reads its operands in place,
// since copying them would take a third of its time.

#include "QxBuiltInNames.h"
#include "kernels/QxBatches.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;

/// Computes one component of the result for all points of a batch.
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

/// The loops of a noise function, one for each component of the result.
template <class Noise, class Result, class... Types>
struct NoiseLoops {
    static void Run(Numbers* results, const Numbers* operands, unsigned int count)
    {
        constexpr unsigned int numbers = (k_numbers<Types> + ...);
        constexpr int n = static_cast<int>(Noise::isPeriodic ? numbers / 2 : numbers);
        // The components of a triple have the seeds 1 to 3.
        constexpr unsigned int firstSeed = k_numbers<Result> == 1 ? 0 : 1;
        for (unsigned int i = 0; i < k_numbers<Result>; ++i)
            Compute<Noise, n>(results[i], operands, count, firstSeed + i);
    }
};

/// Returns a row for a noise function, whose arguments are the coordinates, followed by their
/// periods if the noise is periodic.
template <class Noise, class Result, class... Types, class Function>
constexpr QxKernelRow NoiseRow(SqxPrimitive primitive, Function function)
{
    QxKernelRow row = Each<Result&, Types...>(primitive, function);
    row.masked = PickedPoints<NoiseLoops<Noise, Result, Types...>, Function, Result, Types...>;
    if constexpr (std::is_same_v<Noise, qxnoise::CellNoise>)
        row.all = AllPoints<Function, Result, Types...>;
    else
        row.all = row.masked;
    return row;
}

#define NOISE(KIND, NAME, ...)                                                                     \
    NoiseRow<qxnoise::KIND, __VA_ARGS__>(                                                          \
        SqxPrimitive::NAME, [](auto& r, const auto&... arguments) { NAME(r, arguments...); })

// clang-format off
constexpr QxKernelRow k_rows[] = {
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_1D, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_2D, float, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_3D, float, Vector),
    NOISE(PlainNoise, CALL_PRIM_NOISE_FLOAT_4D, float, Vector, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_1D, Vector, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_2D, Vector, float, float),
    NOISE(PlainNoise, CALL_PRIM_NOISE_POINT_3D, Vector, Vector),
    NoiseRow<qxnoise::PlainNoise, Vector, Vector, float>(SqxPrimitive::CALL_PRIM_NOISE_POINT_4D, [](Vector& r, const Vector& p, float t) {
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
