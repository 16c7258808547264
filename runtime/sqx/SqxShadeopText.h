#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "sqx/SqxType.h"

/// The type of a shadeop's argument, or of its result.
struct SqxShadeopType {
    SqxType type = SqxType::Float;
    bool array = false;
    int size = 0;  // length of an array; 0 for any length, or if it is not an array
};

/// Parses the text with which a library declares a shadeop: "float blend(color, float[4])". Only
/// the space character counts as blank. The compiler and the machine share this parser.
///
/// Each reading operation continues where the previous one stopped, and none reads past the end.
/// Call them in this order:
///
///     ReadReturnType, ReadName, ReadArgument(true), ReadArgument(false) until IsAtEnd, ReadEnd
///
/// None throws. If one returns no value, an empty name or, for `ReadEnd`, false, the text does not
/// declare a shadeop.
class SqxShadeopText {
public:
    /// The text must outlive the reader.
    explicit SqxShadeopText(std::string_view text) : m_rest(text) {}

    /// None unless the first word is a type that `TypeOf` accepts.
    [[nodiscard]] std::optional<SqxType> ReadReturnType();
    /// Empty if no name follows.
    [[nodiscard]] std::string_view ReadName();
    /// Reads one type with the "(" or "," before it. None if it is missing or malformed.
    [[nodiscard]] std::optional<SqxShadeopType> ReadArgument(bool first);
    /// True if the ")" after the last argument is next.
    [[nodiscard]] bool IsAtEnd() const { return m_rest.starts_with(')'); }
    /// True if the ")" follows, and after it only blanks.
    [[nodiscard]] bool ReadEnd();

    /// Returns one of the six types that a shadeop can use; none for any other word.
    [[nodiscard]] static std::optional<SqxType> TypeOf(std::string_view word);

private:
    void SkipBlanks()
    {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
    }
    /// Reads up to the first character that is in `ends`, or to the end of the text.
    [[nodiscard]] std::string_view ReadUpTo(std::string_view ends);
    /// Skips the character and returns true if it is next.
    [[nodiscard]] bool Skip(char wanted);
    [[nodiscard]] std::optional<int> ReadArraySize();

    std::string_view m_rest;
};

inline std::optional<SqxType> SqxShadeopText::TypeOf(std::string_view word)
{
    struct Row {
        std::string_view word;
        SqxType type;
    };
    constexpr Row rows[] = {
        {"float", SqxType::Float},   {"color", SqxType::Color},   {"point", SqxType::Point},
        {"vector", SqxType::Vector}, {"normal", SqxType::Normal}, {"string", SqxType::String},
    };
    for (const Row& row : rows)
        if (row.word == word)
            return row.type;
    return std::nullopt;
}

inline std::optional<SqxType> SqxShadeopText::ReadReturnType()
{
    SkipBlanks();
    return TypeOf(ReadUpTo(" "));
}

inline std::string_view SqxShadeopText::ReadName()
{
    SkipBlanks();
    if (m_rest.empty())
        return {};
    const char c = m_rest.front();
    const bool startsName = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    return startsName ? ReadUpTo(" (") : std::string_view();
}

inline std::optional<SqxShadeopType> SqxShadeopText::ReadArgument(bool first)
{
    SkipBlanks();
    if (!Skip(first ? '(' : ','))
        return std::nullopt;
    SkipBlanks();
    const std::optional<SqxType> type = TypeOf(ReadUpTo(" ,[)"));
    if (!type)
        return std::nullopt;
    SqxShadeopType argument = {*type};
    SkipBlanks();
    if (Skip('[')) {
        const std::optional<int> size = ReadArraySize();
        if (!size)
            return std::nullopt;
        argument.array = true;
        argument.size = *size;
        SkipBlanks();
    }
    return argument;
}

inline bool SqxShadeopText::ReadEnd()
{
    if (!Skip(')'))
        return false;
    SkipBlanks();
    return m_rest.empty();
}

inline std::string_view SqxShadeopText::ReadUpTo(std::string_view ends)
{
    const std::string_view word = m_rest.substr(0, m_rest.find_first_of(ends));
    m_rest.remove_prefix(word.size());
    return word;
}

inline bool SqxShadeopText::Skip(char wanted)
{
    if (!m_rest.starts_with(wanted))
        return false;
    m_rest.remove_prefix(1);
    return true;
}

/// Reads a decimal number and the "]" after it. Returns 0, which stands for any length, also if the
/// number is missing; none if the text is malformed.
inline std::optional<int> SqxShadeopText::ReadArraySize()
{
    SkipBlanks();
    const std::string_view digits = ReadUpTo(" ]");
    SkipBlanks();
    if (!Skip(']'))
        return std::nullopt;
    int size = 0;
    if (digits.empty())
        return size;
    const char* const digitsEnd = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), digitsEnd, size);
    if (error != std::errc() || end != digitsEnd || size < 0)
        return std::nullopt;
    return size;
}
