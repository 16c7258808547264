#pragma once

#include "icode/SlcICode.h"

/// dest = source, with a promotion if the types differ: a float to a triple or matrix, a triple to
/// another kind of triple. A uniform source may be assigned to a varying dest, for each point. A
/// varying source may be assigned to a uniform dest only if all points have the same value.
class SlcAssignICode : public SlcICodeOf<SlcAssignICode, SlcICode> {
public:
    SlcAssignICode(SlcOperand dest, SlcOperand source)
        : m_dest(std::move(dest)),
          m_source(std::move(source))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
};

/// A whole-grid assignment, outside parallel brackets. Both sides are varying and of the same type,
/// which is neither a string nor an array: for example `x = y` without a varying condition.
class SlcAssignSIMDICode : public SlcICodeOf<SlcAssignSIMDICode, SlcAssignICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// dest = 0. Part of the instruction set; the lowering never emits it.
class SlcAssignToZeroICode : public SlcICodeOf<SlcAssignToZeroICode, SlcICode> {
public:
    SlcAssignToZeroICode() = default;
    explicit SlcAssignToZeroICode(SlcOperand dest) : m_dest(std::move(dest)) {}

    SlcOperand m_dest;
};
