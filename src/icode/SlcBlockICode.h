#pragma once

#include <deque>
#include <string>

#include "icode/SlcICode.h"
#include "icode/SlcJumpICode.h"

/// A note that ties the code to a place in the source; back ends print or skip it. Told, unused: no
/// lowering makes one.
class SlcCommentICode : public SlcICodeOf<SlcCommentICode, SlcICode> {
public:
    SlcCommentICode(std::string text, int line, const std::string* file)
        : m_text(std::move(text)),
          m_line(line),
          m_file(file)
    {
    }

    std::string m_text;
    int m_line;
    const std::string* m_file;  // in the scanner's list of names
};

/// Opens a parallel run: what follows runs once for each shading point. Runs do not nest, and no
/// jump leads into one or out of it.
class SlcBeginParallelICode : public SlcICodeOf<SlcBeginParallelICode, SlcICode> {
public:
    explicit SlcBeginParallelICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Closes it: what follows runs for the grid again.
class SlcEndParallelICode : public SlcICodeOf<SlcEndParallelICode, SlcICode> {
public:
    explicit SlcEndParallelICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Base of the brackets that guard code: inside a parallel run for the points where a varying flag
/// has the wanted value, outside for the whole grid by a uniform flag.
///
/// A guard opened in a run is closed in it. The label ties it to its `SlcEndIfICode`.
class SlcIfICode : public SlcICode {
public:
    SlcIfICode(SlcOperand flag, SlcLabel label) : m_flag(std::move(flag)), m_label(std::move(label))
    {
    }

    SlcOperand m_flag;
    SlcLabel m_label;
};

/// Guards for the points, or the grid, with the flag: the `then` of a varying condition, and what
/// follows where some points have left.
class SlcIfTrueICode : public SlcICodeOf<SlcIfTrueICode, SlcIfICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// Guards for those without it.
class SlcIfFalseICode : public SlcICodeOf<SlcIfFalseICode, SlcIfICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// Closes the innermost guard.
class SlcEndIfICode : public SlcICodeOf<SlcEndIfICode, SlcICode> {
public:
    explicit SlcEndIfICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Clears the flags at the active points, which then take no further part in the loop: `break`, and
/// the `return` of a body that some points leave early.
class SlcBreakICode : public SlcICodeOf<SlcBreakICode, SlcICode> {
public:
    explicit SlcBreakICode(SlcLabel label) : m_label(std::move(label)) {}

    std::deque<SlcOperand> m_flags;
    SlcLabel m_label;  // where the points go on
};

/// Clears the flags at the active points, which then wait for the next round: `continue`.
class SlcContinueICode : public SlcICodeOf<SlcContinueICode, SlcICode> {
public:
    explicit SlcContinueICode(SlcLabel label) : m_label(std::move(label)) {}

    std::deque<SlcOperand> m_flags;
    SlcLabel m_label;  // where the points go on
};

/// Base of the marks that no back end translates.
class SlcInvisibleICode : public SlcICode {};

/// Here predefined variables and parameters have the values that the renderer gave: what the
/// data-flow passes count as written in front of all code.
class SlcBeginShaderICode : public SlcICodeOf<SlcBeginShaderICode, SlcInvisibleICode> {};

/// Here the renderer reads the outputs: what they count as read behind all code.
class SlcEndShaderICode : public SlcICodeOf<SlcEndShaderICode, SlcInvisibleICode> {};
