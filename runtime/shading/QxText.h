#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "QxFloatMath.h"
#include "QxValues.h"

/// The maximum length of a text that a shader builds: without it, `concat` in a loop could double a
/// text each time.
constexpr std::size_t k_qxTextLength = 65535;

/// A text that can grow up to `k_qxTextLength` characters; the excess is cut off. It replaces
/// std::string, since compiling <string> costs more than the rest of a small shader.
class QxText {
public:
    QxText() = default;
    QxText(QxText&& other) noexcept
        : m_characters(other.m_characters),
          m_length(other.m_length),
          m_room(other.m_room)
    {
        other.m_characters = nullptr;
        other.m_length = other.m_room = 0;
    }
    QxText& operator=(QxText&&) = delete;
    ~QxText() { std::free(m_characters); }

    // `Add` appends. It ends the process if there is no memory, since a shader cannot report a
    // failure.
    void Add(char character) { Add(&character, 1); }
    void Add(const char* text) { Add(text, std::strlen(text)); }
    /// The text so far, with a null at the end; valid until the next addition.
    const char* Characters() const { return m_characters ? m_characters : ""; }
    std::size_t Length() const { return m_length; }

private:
    void Add(const char* text, std::size_t length)
    {
        if (length > k_qxTextLength - m_length)
            length = k_qxTextLength - m_length;
        if (m_length + length >= m_room) {
            m_room = 2 * (m_length + length) + 32;
            m_characters = static_cast<char*>(std::realloc(m_characters, m_room));
            if (!m_characters)
                std::abort();
        }
        std::memcpy(m_characters + m_length, text, length);
        m_length += length;
        m_characters[m_length] = '\0';
    }

    char* m_characters = nullptr;
    std::size_t m_length = 0;
    std::size_t m_room = 0;
};

/// An argument of `format` or `printf`, with its type.
struct QxTextArgument {
    enum Type { Float, Triple, Matrix, String };

    Type type;
    const void* value;  // float*, three floats, QxMatrix44*, or a const char* const*
};

namespace qxtext {

inline void AddNumber(QxText& text, float value)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%g", static_cast<double>(value));
    text.Add(buffer);
}

/// Adds the whole part of `value` with all its digits; a fraction is cut off.
inline void AddWholeNumber(QxText& text, float value)
{
    char buffer[64];
    // Adding 0 turns minus zero into zero.
    std::snprintf(buffer, sizeof buffer, "%.0f", qxmath::Trunc(static_cast<double>(value)) + 0.0);
    text.Add(buffer);
}

inline void AddNumbers(QxText& text, const void* values, int count, bool whole)
{
    const float* numbers = static_cast<const float*>(values);
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            text.Add(' ');
        if (whole)
            AddWholeNumber(text, numbers[i]);
        else
            AddNumber(text, numbers[i]);
    }
}

inline void AddValue(QxText& text, const QxTextArgument& argument, bool whole)
{
    switch (argument.type) {
    case QxTextArgument::Float:
        return AddNumbers(text, argument.value, 1, whole);
    case QxTextArgument::Triple:
        return AddNumbers(text, argument.value, 3, whole);
    case QxTextArgument::Matrix:
        return AddNumbers(text, argument.value, 16, whole);
    case QxTextArgument::String:
        break;
    }
    if (const char* value = *static_cast<const char* const*>(argument.value))
        text.Add(value);
}

/// The letters of conversions
inline constexpr char k_conversions[] = "fdpcms";

inline bool IsConversion(char letter)
{
    return letter != '\0' && std::strchr(k_conversions, letter);
}

}  // namespace qxtext

/// Returns the pattern with each of %f, %d, %p, %c, %m and %s replaced by the next argument,
/// formatted according to the argument's type; %d omits the fractions of numbers, and %% becomes a
/// percent sign. Conversions without an argument are unchanged, and so are all other characters.
inline QxText QxFormat(const char* pattern, const QxTextArgument* arguments, int count)
{
    QxText text;
    int next = 0;
    for (const char* c = pattern; *c; ++c) {
        const char conversion = *c == '%' ? c[1] : '\0';
        if (conversion == '%') {
            text.Add(*++c);
        } else if (qxtext::IsConversion(conversion) && next < count) {
            qxtext::AddValue(text, arguments[next++], conversion == 'd');
            ++c;
        } else {
            text.Add(*c);
        }
    }
    return text;
}

/// Adds the letters of the conversions in a pattern, in order.
inline void QxAddFormatTypes(QxText& types, const char* pattern)
{
    for (const char* c = pattern; *c; ++c) {
        if (*c != '%' || c[1] == '\0')
            continue;
        ++c;
        if (qxtext::IsConversion(*c))
            types.Add(*c);
        else if (*c != '%')
            --c;
    }
}

/// Returns the report about an index outside an array.
inline QxText QxBadArrayIndexText(const char* file, int line, const char* array, float index)
{
    char place[64];
    std::snprintf(place, sizeof place, ":%d: index %g", line, static_cast<double>(index));
    QxText text;
    text.Add(file);
    text.Add(place);
    text.Add(" is outside of array '");
    text.Add(array);
    text.Add("'");
    return text;
}
