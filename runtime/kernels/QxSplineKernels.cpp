// Splines. For a block of points at a time, vectorized loops compute the position of each point on
// the spline and the weights of its four control values. Then the weighted control values are
// summed for each point. If all control values are uniform, they are first copied to one array. If
// there are fewer than four, the basis is varying, or there is only one point, each point is
// computed separately.

#include "QxSplines.h"
#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {
namespace {

using Vector = QxVector3;
using Text = const char*;

/// Control values that are the same for all points.
template <class Value>
class UniformControls {
public:
    explicit UniformControls(std::span<const GridOperand<Value>> operands)
    {
        m_values.reserve(operands.size());
        for (const GridOperand<Value>& operand : operands)
            m_values.push_back(*operand.values);
    }
    [[nodiscard]] auto At(unsigned int) const
    {
        return [values = m_values.data()](int k) -> const Value& { return values[k]; };
    }

private:
    std::vector<Value> m_values;
};

/// Control values, each of which may be varying.
template <class Value>
class AnyControls {
public:
    explicit AnyControls(std::span<const GridOperand<Value>> operands) : m_operands(operands.data())
    {
    }
    [[nodiscard]] auto At(unsigned int point) const
    {
        return [operands = m_operands, point](int k) -> const Value& {
            return QxAt(operands[k], point);
        };
    }

private:
    const GridOperand<Value>* m_operands;
};

/// The positions of the points of a block on a spline: for each point, the index of its first
/// control value, and the weights of this one and the next three.
struct Places {
    int firsts[k_block];
    Numbers weights[4];

    Places(const QxSplineBasis& basis, const Numbers& positions, int count, const Block& block)
    {
        for (unsigned int j = 0; j < block.count; ++j) {
            const QxSplinePlace place = QxPlaceOnSpline(basis, positions.at[j], count);
            firsts[j] = place.first;
            for (int k = 0; k < 4; ++k)
                weights[k].at[j] = QxSplineWeight(basis, k, place.at);
        }
    }
};

template <class Value, class Controls>
QX_KERNEL_CODE void
EvaluateWithOneBasis(const QxSplineBasis& basis, const GridOperand<Value>& result,
                     const GridOperand<float>& position, const Controls& controls, int count,
                     const QxPoints& points)
{
    ForBlocks(points, [&](const Block& block) {
        Numbers positions;
        Load(positions, position, block);
        const Places places(basis, positions, count, block);
        const auto& weights = places.weights;
        for (unsigned int j = 0; j < block.count; ++j)
            if (block.Has(j))
                QxAt(result, block.first + j) =
                    QxWeigh<Value>(controls.At(block.first + j), places.firsts[j], weights[0].at[j],
                                   weights[1].at[j], weights[2].at[j], weights[3].at[j]);
    });
}

/// The operands are the result, the name of the basis if `named`, the position, and at least one
/// control value.
template <class Value, bool named>
void Spline(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    constexpr std::size_t first = named ? 3 : 2;
    const auto result = Operand<Value>(state, code, 0);
    const auto position = Operand<float>(state, code, first - 1);
    std::vector<GridOperand<Value>> operands;
    operands.reserve(code.count);
    state.work->CountInner(code.count);
    bool uniform = true;
    for (std::size_t k = first; k < code.count; ++k) {
        operands.push_back(Operand<Value>(state, code, k));
        uniform = uniform && operands.back().step == 0;
    }
    const auto basisAt = [&](unsigned int point) -> const QxSplineBasis& {
        const Text name = named ? QxAt(Operand<Text>(state, code, 1), point) : nullptr;
        return QxFindSplineBasis(name ? name : "");
    };
    const auto count = static_cast<int>(operands.size());
    const AnyControls<Value> controls(operands);
    const bool severalBases = named && code.operands[1].step != 0;
    if (count < 4 || severalBases || points.count == 1) {
        for (unsigned int i = points.first; i < points.End(); ++i)
            if (points(i))
                QxAt(result, i) =
                    QxSpline<Value>(basisAt(i), QxAt(position, i), count, controls.At(i));
    } else if (uniform) {
        EvaluateWithOneBasis(basisAt(points.first), result, position,
                             UniformControls<Value>(operands), count, points);
    } else {
        EvaluateWithOneBasis(basisAt(points.first), result, position, controls, count, points);
    }
}

template <class Rest, class... Types>
constexpr QxKernelRow SplineRow(SqxPrimitive primitive, QxKernel kernel)
{
    QxKernelRow row = ListRow<Rest, Types...>(primitive, kernel);
    row.perPoint = true;
    return row;
}

constexpr QxKernelRow k_rows[] = {
    SplineRow<float, float, float>(SqxPrimitive::CALL_PRIM_SPLINE_1D, Spline<float, false>),
    SplineRow<Vector, Vector, float>(SqxPrimitive::CALL_PRIM_SPLINE_3D, Spline<Vector, false>),
    SplineRow<float, float, Text, float>(SqxPrimitive::CALL_PRIM_SPLINE_BASIS_1D,
                                         Spline<float, true>),
    SplineRow<Vector, Vector, Text, float>(SqxPrimitive::CALL_PRIM_SPLINE_BASIS_3D,
                                           Spline<Vector, true>),
};

}  // namespace

QxKernelRows SplineKernels()
{
    return k_rows;
}

}  // namespace QX_KERNEL_SET
