#pragma once

#include <ostream>

/// What writes lines of a C++ file.
class SlcCText {
protected:
    explicit SlcCText(std::ostream& out) : m_out(out) {}

    /// One line of the file.
    template <class... Parts>
    void Line(const Parts&... parts)
    {
        (m_out << ... << parts) << '\n';
    }

    std::ostream& m_out;
};
