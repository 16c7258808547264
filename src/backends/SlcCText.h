#pragma once

#include <string_view>

#include "support/SlcText.h"

/// Writes lines of a C++ file. The writers of parts of a file derive from it and share the text,
/// which outlives them.
class SlcCText {
protected:
    explicit SlcCText(SlcText& out) : m_out(out) {}

    /// Writes one line of the file.
    template <class... Parts>
    void Line(const Parts&... parts)
    {
        (m_out << ... << parts) << '\n';
    }

    /// Writes a loop that runs the statement for each point: `polyCnt` counts to `numMp`. The
    /// enclosing function must declare both.
    void LineForEachPoint(std::string_view statement)
    {
        Line("\tfor (polyCnt = 0; polyCnt < numMp; ++polyCnt) {");
        Line("\t", statement);
        Line("\t}");
    }

    SlcText& m_out;
};
