#pragma once

// Points in batches, for costly functions.
//
// A loop that branches at each point of a mask is none of vectors. So the points that are to be
// computed are picked first, and what a call takes is laid out number by number for a batch of
// them, so that one loop of vectors computes each component of the result:
//
//     operands p, t        numbers  x x x x ..  y y y y ..  z z z z ..  t t t t ..
//
// No vector is computed for points that are not active.

#include "kernels/QxBlocks.h"

namespace QX_KERNEL_SET {

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

/// Copies the numbers of an operand, component by component. Places past the last point repeat it.
template <class Value>
inline void Gather(Numbers* numbers, const GridOperand<Value>& operand, const Batch& batch)
{
    for (unsigned int j = 0; j < batch.count; ++j)
        Put(numbers, j, QxAt(operand, batch.points[j]));
    for (unsigned int j = batch.count; j < batch.Padded(); ++j)
        Put(numbers, j, QxAt(operand, batch.points[batch.count - 1]));
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

/// Runs a function at the points of a mask. `Loops` computes the numbers of the results from those
/// of the operands, for a count that vectors divide; `Function` is the same for one point.
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

}  // namespace QX_KERNEL_SET
