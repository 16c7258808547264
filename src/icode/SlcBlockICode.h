#pragma once

#include <deque>
#include <string>

#include "icode/SlcICode.h"
#include "icode/SlcJumpICode.h"

/// A comment that refers to a place in the source. The C++ writer prints it, and both writers use
/// its place for their reports. Part of the instruction set; the lowering never emits it.
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

/// Opens a parallel run: the instructions up to its end run once for each shading point. Runs do
/// not nest, and no jump enters or leaves one.
class SlcBeginParallelICode : public SlcICodeOf<SlcBeginParallelICode, SlcICode> {
public:
    explicit SlcBeginParallelICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Closes a parallel run: the instructions after it run once for the grid.
class SlcEndParallelICode : public SlcICodeOf<SlcEndParallelICode, SlcICode> {
public:
    explicit SlcEndParallelICode(SlcLabel label) : m_label(std::move(label)) {}

    SlcLabel m_label;
};

/// Base of the guards. Inside a parallel run, the guarded code runs for the points where the flag
/// has the required value; outside, the flag is uniform and decides for the whole grid.
///
/// A guard that opens in a run closes in the same run. The label connects it to its
/// `SlcEndIfICode`.
class SlcIfICode : public SlcICode {
public:
    SlcIfICode(SlcOperand flag, SlcLabel label) : m_flag(std::move(flag)), m_label(std::move(label))
    {
    }

    SlcOperand m_flag;
    SlcLabel m_label;
};

/// Runs the guarded code where the flag is true, for example the branches of a varying condition,
/// and code that some points may skip because they have left the loop or function.
class SlcIfTrueICode : public SlcICodeOf<SlcIfTrueICode, SlcIfICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// Runs the guarded code where the flag is false.
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

/// `break` and `return`: clears the flags at the active points, which then skip the rest of the
/// loops or of the function. In a list that runs without a grid, a jump is used instead.
class SlcBreakICode : public SlcICodeOf<SlcBreakICode, SlcICode> {
public:
    explicit SlcBreakICode(SlcLabel label) : m_label(std::move(label)) {}

    std::deque<SlcOperand> m_flags;
    SlcLabel m_label;  // where these points continue
};

/// `continue`: clears the flags at the active points, which then skip the rest of the iteration. In
/// a list that runs without a grid, a jump is used instead.
class SlcContinueICode : public SlcICodeOf<SlcContinueICode, SlcICode> {
public:
    explicit SlcContinueICode(SlcLabel label) : m_label(std::move(label)) {}

    std::deque<SlcOperand> m_flags;
    SlcLabel m_label;  // where these points continue
};

/// Base of the marker instructions that no back end translates.
class SlcInvisibleICode : public SlcICode {};

/// Marks the entry of the shader. The predefined variables have the renderer's values here, so data
/// flow treats them as defined before all code.
class SlcBeginShaderICode : public SlcICodeOf<SlcBeginShaderICode, SlcInvisibleICode> {};

/// Marks the end of the shader. The renderer reads the predefined variables that a shader may write
/// here, so data flow treats them as used after all code.
class SlcEndShaderICode : public SlcICodeOf<SlcEndShaderICode, SlcInvisibleICode> {};
