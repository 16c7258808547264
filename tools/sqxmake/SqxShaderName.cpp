// A shader is declared outside all braces, as `surface NAME(`. If preprocessing might change the
// name or the number of declarations, no name is returned; the build then notices shaders with the
// same name only after compiling them. Names that macros of included files or of `-D` would change
// are recognized only by a convention.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxShaderName.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>

#include "frontend/SlcScanner.h"

namespace {

[[nodiscard]] bool IsWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

[[nodiscard]] bool IsShaderType(std::string_view word)
{
    const auto keywords = SlcKeywords();
    return std::any_of(keywords.begin(), keywords.end(), [&](const SlcKeyword& keyword) {
        return keyword.kind == SlcWordKind::Shader && keyword.word == word;
    });
}

class Declarations {
public:
    explicit Declarations(std::string_view text) : m_rest(text)
    {
        while (!m_rest.empty())
            Step();
    }

    [[nodiscard]] std::optional<std::string> OnlyName() const
    {
        if (m_isUnclear || m_names.size() != 1)
            return std::nullopt;
        const std::string_view name = *m_names.begin();
        // By convention, macros of headers and `-D` have no lower-case letters.
        const bool mayBeMacro =
            m_macros.contains(name) ||
            std::none_of(name.begin(), name.end(), [](unsigned char c) { return std::islower(c); });
        return mayBeMacro ? std::nullopt : std::optional<std::string>(name);
    }

private:
    /// Skips and returns the characters before index `end`; all of them if it is `npos`.
    std::string_view Take(std::size_t end)
    {
        const std::string_view taken = m_rest.substr(0, end);
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view TakeWord()
    {
        return Take(std::find_if_not(m_rest.begin(), m_rest.end(), IsWordCharacter) -
                    m_rest.begin());
    }

    void SkipBlanks() { Take(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size())); }

    void Step()
    {
        const char c = m_rest.front();
        const bool beginsLine = m_beginsLine;
        m_beginsLine = c == '\n' || (beginsLine && (c == ' ' || c == '\t'));
        if (m_rest.starts_with("//"))
            Take(m_rest.find('\n'));
        else if (m_rest.starts_with("/*"))
            SkipTo("*/", 2);
        else if (c == '"')
            SkipString();
        else if (c == '#' && beginsLine)
            ReadDirective();
        else if (IsWordCharacter(c))
            ReadWord();
        else {
            m_depth += c == '{' ? 1 : c == '}' ? -1 : 0;
            m_rest.remove_prefix(1);
        }
    }

    void SkipTo(std::string_view end, std::size_t from)
    {
        const std::size_t found = m_rest.find(end, from);
        Take(found == std::string_view::npos ? found : found + end.size());
    }

    void SkipString()
    {
        std::size_t end = 1;
        while (end < m_rest.size() && m_rest[end] != '"' && m_rest[end] != '\n')
            end += m_rest[end] == '\\' ? 2 : 1;
        Take(end + 1);
    }

    void ReadDirective()
    {
        m_rest.remove_prefix(1);
        SkipBlanks();
        const std::string_view directive = TakeWord();
        if (directive.starts_with("if"))
            ++m_conditions;
        else if (directive == "endif")
            --m_conditions;
        else if (directive == "define") {
            SkipBlanks();
            m_macros.insert(TakeWord());
        }
        std::size_t end = m_rest.find('\n');
        while (end != std::string_view::npos && end > 0 && m_rest[end - 1] == '\\')
            end = m_rest.find('\n', end + 1);
        Take(end);
    }

    void ReadWord()
    {
        if (!IsShaderType(TakeWord()) || m_depth != 0)
            return;
        SkipBlanks();
        const std::string_view name = TakeWord();
        SkipBlanks();
        if (!m_rest.starts_with('('))
            return;
        m_names.insert(name);
        m_isUnclear = m_isUnclear || m_conditions > 0;
    }

    std::string_view m_rest;
    bool m_beginsLine = true;
    int m_depth = 0;       // of braces
    int m_conditions = 0;  // open conditions of the preprocessor
    std::set<std::string_view> m_names;
    std::set<std::string_view> m_macros;
    bool m_isUnclear = false;
};

}  // namespace

std::optional<std::string> SqxShaderName(const std::string& source)
{
    return Declarations(source).OnlyName();
}
