#pragma once

#include "icode/SlcICode.h"

/// dest = source, with a promotion where the types differ: a float to a triple or matrix, a triple
/// to one of another kind. A uniform source may go to a varying dest, for each point; the other way
/// round only where all points have the same value.
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

/// An assignment that runs over all points by itself, outside parallel brackets. Both sides are
/// varying and of one type, which is none of strings or arrays: `x = y` under no varying condition.
class SlcAssignSIMDICode : public SlcICodeOf<SlcAssignSIMDICode, SlcAssignICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// dest = 0. Told, unused: no lowering makes it.
class SlcAssignToZeroICode : public SlcICodeOf<SlcAssignToZeroICode, SlcICode> {
public:
    explicit SlcAssignToZeroICode(SlcOperand dest) : m_dest(std::move(dest)) {}

    SlcOperand m_dest;
};
