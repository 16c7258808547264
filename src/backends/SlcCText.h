#pragma once

#include <ostream>
#include <string_view>

/// Writes lines of a C++ file. Parts of a file derive from it and share the stream, which outlives
/// them; whether all could be written is asked once, at the end of the file.
class SlcCText {
protected:
    explicit SlcCText(std::ostream& out) : m_out(out) {}

    /// One line of the file.
    template <class... Parts>
    void Line(const Parts&... parts)
    {
        (m_out << ... << parts) << '\n';
    }

    /// A loop in which the statement sees one point after the other, as `polyCnt` of `numMp`; the
    /// function around it declares both.
    void LineForEachPoint(std::string_view statement)
    {
        Line("\tfor (polyCnt = 0; polyCnt < numMp; ++polyCnt) {");
        Line("\t", statement);
        Line("\t}");
    }

    std::ostream& m_out;
};
