#pragma once

// Computes expensive functions for batches of points.
//
// A loop that branches on a mask at each point cannot be vectorized. So the active points are
// collected first, and the arguments of a batch of active points are stored component by component.
// Then one vectorized loop computes each component of the result:
//
//     operands p, t        numbers  x x x x ..  y y y y ..  z z z z ..  t t t t ..
//
// Nothing is computed for inactive points.

#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {

/// A multiple of the number of floats in a vector, for each instruction set of the kernels.
constexpr unsigned int k_lanes = 8;

/// For fewer points, calling the function for each point is faster than computing vectors that are
/// mostly unused.
constexpr unsigned int k_fewestPoints = 3;

/// The active points that are computed together.
struct Batch {
    unsigned int points[k_block];
    unsigned int count;

    /// Returns the count, rounded up to whole vectors.
    [[nodiscard]] unsigned int Padded() const { return (count + k_lanes - 1) / k_lanes * k_lanes; }
};

static_assert(k_block % k_lanes == 0);

template <class Value>
constexpr unsigned int k_numbers = sizeof(Value) / sizeof(float);

inline void Put(Numbers* numbers, unsigned int j, float value)
{
    numbers[0].at[j] = value;
}

inline void Put(Numbers* numbers, unsigned int j, const QxVector3& value)
{
    numbers[0].at[j] = value.x;
    numbers[1].at[j] = value.y;
    numbers[2].at[j] = value.z;
}

inline void Take(float& value, const Numbers* numbers, unsigned int j)
{
    value = numbers[0].at[j];
}

inline void Take(QxVector3& value, const Numbers* numbers, unsigned int j)
{
    value = {numbers[0].at[j], numbers[1].at[j], numbers[2].at[j]};
}

/// Copies the numbers of an operand, component by component, and fills the last vector by repeating
/// the last point.
template <class Value>
inline void Gather(Numbers* numbers, const GridOperand<Value>& operand, const Batch& batch)
{
    for (unsigned int j = 0; j < batch.count; ++j)
        Put(numbers, j, QxAt(operand, batch.points[j]));
    for (unsigned int j = batch.count; j < batch.Padded(); ++j)
        Put(numbers, j, QxAt(operand, batch.points[batch.count - 1]));
}

/// Fills a batch with active points, starting at point `next`. Returns the point at which the
/// following batch starts.
inline unsigned int Pick(Batch& batch, const QxPoints& points, unsigned int next)
{
    for (batch.count = 0; next < points.End() && batch.count < k_block; ++next) {
        batch.points[batch.count] = next;
        batch.count += points(next) ? 1u : 0u;
    }
    return next;
}

/// Computes a function for the active points. `Loops` computes the components of the results from
/// the components of the operands, for a count that is a multiple of `k_lanes`; `Function` computes
/// the same for one point.
template <class Loops, class Function, class Result, class... Types, std::size_t... k>
QX_KERNEL_CODE void RunPickedPoints(QxMachineState& state, const QxCode& code,
                                    const QxPoints& points, std::index_sequence<k...>)
{
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
        Numbers operands[(k_numbers<Types> + ...)];
        Numbers* place = operands;
        ((Gather(place, Operand<Types>(state, code, k + 1), batch), place += k_numbers<Types>),
         ...);
        Numbers results[k_numbers<Result>];
        Loops::Run(results, operands, batch.Padded());
        for (unsigned int j = 0; j < batch.count; ++j)
            Take(QxAt(result, batch.points[j]), results, j);
    }
}

template <class Loops, class Function, class Result, class... Types>
void PickedPoints(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    RunPickedPoints<Loops, Function, Result, Types...>(state, code, points,
                                                       std::index_sequence_for<Types...>());
}

// Without a mask, vectorized loops can read the operands in place, so batches are not needed.

/// The loops over all points for each combination of uniform and varying arguments, except the
/// combination in which all are uniform.
template <class Shapes, class Function, class Result, class... Types>
struct VaryingShapes;

template <std::size_t... i, class Function, class Result, class... Types>
struct VaryingShapes<std::index_sequence<i...>, Function, Result, Types...> {
    static constexpr QxKernel kernels[] = {
        Shaped<Function, i + 1, false, Result, Types...>::Run...};
};

/// Computes all points with the loop for the instruction's combination of uniform and varying
/// arguments, or with the loop for any combination if the result or all arguments are uniform.
template <class Function, class Result, class... Types>
void AllPoints(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    unsigned int shape = 0;
    for (unsigned int k = 0; k < sizeof...(Types); ++k)
        shape |= code.operands[k + 1].step != 0 ? 1u << k : 0;
    if (shape == 0 || code.operands[0].step == 0)
        return Any<Function, Where::All, Result&, Types...>(state, code, points);
    using Shapes = std::make_index_sequence<(std::size_t{1} << sizeof...(Types)) - 1>;
    VaryingShapes<Shapes, Function, Result, Types...>::kernels[shape - 1](state, code, points);
}

}  // namespace QX_KERNEL_SET
