#pragma once

#include <ostream>
#include <string_view>

/// Writes lines of a C++ file. The writers of parts of a file derive from it and share the stream,
/// which outlives them. Write errors are checked once, at the end of the file.
class SlcCText {
protected:
    explicit SlcCText(std::ostream& out) : m_out(out) {}

    /// Writes one line of the file.
    template <class... Parts>
    void Line(const Parts&... parts)
    {
        (m_out << ... << parts) << '\n';
    }

    /// Writes a loop that runs the statement for each point, `polyCnt` of `numMp`; the enclosing
    /// function must declare both.
    void LineForEachPoint(std::string_view statement)
    {
        Line("\tfor (polyCnt = 0; polyCnt < numMp; ++polyCnt) {");
        Line("\t", statement);
        Line("\t}");
    }

    std::ostream& m_out;
};
