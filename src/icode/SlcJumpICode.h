#pragma once

#include <string>

#include "icode/SlcICode.h"

/// A place that jumps go to. The name is unique over the whole compile.
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

/// Jumps test uniform flags only.
class SlcIfTrueGotoICode : public SlcICodeOf<SlcIfTrueGotoICode, SlcGotoICode> {
public:
    SlcIfTrueGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};

/// Goes on behind a uniform condition that does not hold.
class SlcIfFalseGotoICode : public SlcICodeOf<SlcIfFalseGotoICode, SlcGotoICode> {
public:
    SlcIfFalseGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};
