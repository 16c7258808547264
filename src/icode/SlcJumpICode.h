#pragma once

#include <string>

#include "icode/SlcICode.h"

/// A place that jumps go to. The name is unique over the whole compile. The instruction itself
/// stands in the list at that place, and jumps share it.
class SlcLabelICode : public SlcICodeOf<SlcLabelICode, SlcICode> {
public:
    explicit SlcLabelICode(std::string name) : m_name(std::move(name)) {}

    std::string m_name;
};

/// A label as instructions hold it.
using SlcLabel = SlcPtr<SlcLabelICode>;

/// Goes to the label, whatever stands between: the end of a loop's body, a `break` of all points.
class SlcGotoICode : public SlcICodeOf<SlcGotoICode, SlcICode> {
public:
    explicit SlcGotoICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Goes to the label if the flag is true; else on. Jumps test uniform flags only: points that
/// decide differently are a matter of flags, and jumps stand outside of parallel runs.
class SlcIfTrueGotoICode : public SlcICodeOf<SlcIfTrueGotoICode, SlcGotoICode> {
public:
    SlcIfTrueGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};

/// Goes on behind a uniform condition that does not hold, or behind a loop in which no point is
/// left.
class SlcIfFalseGotoICode : public SlcICodeOf<SlcIfFalseGotoICode, SlcGotoICode> {
public:
    SlcIfFalseGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};
