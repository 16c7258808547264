#pragma once

// Copies operands into blocks.
//
// A function of many operands, each uniform or varying, would need a separate loop for each
// combination. Instead its operands are copied into small arrays on the stack, one block of points
// after the other. Then all loops have the same form, nothing can alias, triples are stored
// component by component, and all data stay in the first-level cache. The result of a block is
// written after its operands have been copied, so it may share storage with an operand.

#include <algorithm>

#include "QxLitStrips.h"
#include "kernels/QxKernelForms.h"

namespace QX_KERNEL_SET {

constexpr unsigned int k_block = k_qxStrip;
using Numbers = QxNumbers;
using Triples = QxTriples;

/// At most `k_block` consecutive points, for which an instruction is computed together.
struct Block {
    unsigned int first;
    unsigned int count;
    const QxStopAndBool* mask;  // starts at the first point of the block; null for all points

    [[nodiscard]] bool Has(unsigned int j) const { return !mask || QxPoints::QxIsSet(mask[j]); }
    [[nodiscard]] bool IsEmpty() const
    {
        unsigned int any = mask ? 0 : 1;
        for (unsigned int j = 0; mask && j < count; ++j)
            any |= mask[j].value;
        return any == 0;
    }
};

inline void Load(Numbers& numbers, const GridOperand<float>& operand, const Block& block)
{
    if (operand.step == 0)
        std::fill_n(numbers.at, block.count, *operand.values);
    else
        std::copy_n(operand.values + block.first, block.count, numbers.at);
}

inline void Load(Triples& triples, const QxVector3* values, const Block& block)
{
    for (unsigned int j = 0; j < block.count; ++j)
        triples.Set(j, values[block.first + j]);
}

inline void Load(Triples& triples, const GridOperand<QxVector3>& operand, const Block& block)
{
    if (operand.step != 0)
        return Load(triples, operand.values, block);
    for (unsigned int j = 0; j < block.count; ++j)
        triples.Set(j, *operand.values);
}

/// Stores the values at the active points of the block; the other points keep their values.
inline void Store(const GridOperand<float>& result, const Numbers& numbers, const Block& block)
{
    if (result.step != 0 && !block.mask)
        std::copy_n(numbers.at, block.count, result.values + block.first);
    else
        for (unsigned int j = 0; j < block.count; ++j)
            if (block.Has(j))
                QxAt(result, block.first + j) = numbers.at[j];
}

inline void Store(const GridOperand<QxRGBColor>& result, const Triples& triples, const Block& block)
{
    const auto color = [&](unsigned int j) {
        return QxRGBColor{triples.x.at[j], triples.y.at[j], triples.z.at[j]};
    };
    if (result.step != 0 && !block.mask)
        for (unsigned int j = 0; j < block.count; ++j)
            result.values[block.first + j] = color(j);
    else
        for (unsigned int j = 0; j < block.count; ++j)
            if (block.Has(j))
                QxAt(result, block.first + j) = color(j);
}

/// Calls `work` for one block after the other, except for blocks without active points.
template <class Work>
inline void ForBlocks(const QxPoints& points, const Work& work)
{
    for (unsigned int first = points.first; first < points.End(); first += k_block) {
        const Block block = {first, std::min(k_block, points.End() - first),
                             points.mask ? points.mask + first : nullptr};
        if (!block.IsEmpty())
            work(block);
    }
}

}  // namespace QX_KERNEL_SET
