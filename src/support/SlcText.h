#pragma once

#include <charconv>
#include <concepts>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

/// Text that grows at its end, with the operators of an output stream. The compiler does not use
/// the streams of the standard library: in the run of an empty shader, constructing them and their
/// locale took a sixth of the instructions.
class SlcText {
public:
    SlcText& operator<<(std::string_view part)
    {
        m_text += part;
        return *this;
    }
    SlcText& operator<<(char c)
    {
        m_text += c;
        return *this;
    }
    template <std::integral Number>
    SlcText& operator<<(Number number)
    {
        char digits[24];
        // The sign converts a bool to a number.
        m_text.append(digits, std::to_chars(digits, std::end(digits), +number).ptr);
        return *this;
    }

    [[nodiscard]] const std::string& Str() const { return m_text; }
    /// Returns the text, and leaves none.
    [[nodiscard]] std::string Take() { return std::exchange(m_text, {}); }

private:
    std::string m_text;
};
