// Whether the next word is the value of an option is known only when the option is read, so the
// iteration does not look ahead. '--' ends the options unless it is the value of an option.
//
// Tested by tests/options/SqxOptionWordsTest.cpp.

#include "options/SqxOptionWords.h"

#include <algorithm>
#include <charconv>

bool SqxOptionWords::Next()
{
    if (m_isBegun)
        ++m_position;
    m_isBegun = true;
    if (!m_optionsEnd && m_position < m_words.size() && Word() == "--") {
        m_optionsEnd = true;
        ++m_position;
    }
    return m_position < m_words.size();
}

bool SqxOptionWords::IsOption() const
{
    return !m_optionsEnd && Word().size() > 1 && Word().starts_with('-');
}

bool SqxOptionWords::Is(std::string_view spellings) const
{
    const std::vector<std::string_view> all = SqxSpellings(spellings);
    return std::find(all.begin(), all.end(), Word()) != all.end();
}

std::optional<std::string> SqxOptionWords::Value(std::string_view option, std::string_view what)
{
    if (!Word().starts_with(option))
        return std::nullopt;
    std::string value = Word().substr(option.size());
    const bool isLong = option.starts_with("--");
    if (isLong && value.starts_with('='))
        value.erase(0, 1);
    else if (isLong && !value.empty())
        return std::nullopt;  // a longer option that starts with the same letters
    else if (value.empty() && m_position + 1 < m_words.size())
        value = m_words[++m_position];
    if (value.empty())
        throw SqxUsageError("Option '" + std::string(option) + "' needs " + std::string(what) +
                            " after it");
    return value;
}

bool SqxOptionWords::AsksFor(SqxInformation& information) const
{
    if (Is("-h, --help"))
        information = SqxInformation::Help;
    else if (Is("--version"))
        information = SqxInformation::Version;
    else
        return false;
    return true;
}

void SqxOptionWords::RefuseWord() const
{
    throw SqxUsageError("Unknown option '" + Word() + "'");
}

void SqxReadWords(const std::vector<std::string>& arguments,
                  const std::function<void(SqxOptionWords&)>& readOption,
                  const std::function<void(const std::string&)>& readFile)
{
    SqxOptionWords words(arguments);
    while (words.Next())
        if (words.IsOption())
            readOption(words);
        else
            readFile(words.Word());
}

int SqxReadNumber(const std::string& text, int most, const std::string& what)
{
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc() || rest != end || number < 1 || number > most)
        throw SqxUsageError("The " + what + " must be from 1 to " + std::to_string(most) +
                            ", but is '" + text + "'");
    return number;
}
