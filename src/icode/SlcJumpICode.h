#pragma once

#include <string>

#include "icode/SlcICode.h"

/// A jump target, or a mark that connects the two ends of a parallel run, a guard or a light loop.
/// The instructions that refer to it share the object. Only jump targets are also in the list, at
/// the target. The name is unique in the whole compilation.
class SlcLabelICode : public SlcICodeOf<SlcLabelICode, SlcICode> {
public:
    explicit SlcLabelICode(std::string name) : m_name(std::move(name)) {}
    /// The name is "L" and the number. It is made on demand, since most labels are never printed.
    explicit SlcLabelICode(int number) : m_number(number) {}

    [[nodiscard]] const std::string& Name() const
    {
        if (m_name.empty())
            m_name = 'L' + std::to_string(m_number);
        return m_name;
    }

    /// Scratch number for the current pass or writer, which must not rely on its old value.
    int m_place = -1;

private:
    mutable std::string m_name;
    int m_number = -1;
};

/// A label as instructions hold it.
using SlcLabel = SlcPtr<SlcLabelICode>;

/// Jumps to the label: as the back edge of a loop, or past code that must not run, such as an
/// `else`. In a list that runs without a grid (a default value that is computed once per shader
/// instance), it also leaves loops and functions.
class SlcGotoICode : public SlcICodeOf<SlcGotoICode, SlcICode> {
public:
    explicit SlcGotoICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Jumps to the label if the flag is true. Jumps test only uniform flags and are always outside
/// parallel runs; where the flag varies, guards select the points instead.
class SlcIfTrueGotoICode : public SlcICodeOf<SlcIfTrueGotoICode, SlcGotoICode> {
public:
    SlcIfTrueGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};

/// Jumps to the label if the flag is false, for example past the code of a uniform condition, or
/// out of a loop in which no point is active.
class SlcIfFalseGotoICode : public SlcICodeOf<SlcIfFalseGotoICode, SlcGotoICode> {
public:
    SlcIfFalseGotoICode(SlcOperand flag, SlcLabel label)
        : SlcICodeOf(std::move(label)),
          m_flag(std::move(flag))
    {
    }

    SlcOperand m_flag;
};
