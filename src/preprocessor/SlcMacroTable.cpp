// A definition is converted once into a form that can be substituted quickly:
//
//     #define PAIR(a, b) #a a ## b
//
// becomes the body {a, quoted} {a, joins next} {b}, each with the index of its parameter.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcMacroTable.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

using enum SlcSourceTokenKind;

constexpr std::string_view k_variadicName = "__VA_ARGS__";
constexpr std::string_view k_defined = "defined";

struct BuiltInRow {
    std::string_view name;
    SlcBuiltInMacro macro;
};

//   name                 macro
constexpr BuiltInRow k_builtIns[] = {
    {"__LINE__", SlcBuiltInMacro::Line},
    {"__FILE__", SlcBuiltInMacro::File},
    {"__BASE_FILE__", SlcBuiltInMacro::BaseFile},
    {"__INCLUDE_LEVEL__", SlcBuiltInMacro::IncludeLevel},
    {"__COUNTER__", SlcBuiltInMacro::Counter},
    {"__DATE__", SlcBuiltInMacro::Date},
    {"__TIME__", SlcBuiltInMacro::Time},
};

struct ConstantRow {
    std::string_view name;
    std::string_view value;
};

// Predefined macros of C compilers; these do not depend on the platform.
//   name               value
constexpr ConstantRow k_constants[] = {
    {"__STDC__", "1"},        {"__STDC_VERSION__", "201710L"}, {"__STDC_HOSTED__", "1"},
    {"__STDC_UTF_16__", "1"}, {"__STDC_UTF_32__", "1"},
};

bool IsJoin(const SlcSourceToken& token)
{
    return token.IsSign("##") || token.IsSign("%:%:");
}

bool IsHash(const SlcSourceToken& token)
{
    return token.IsSign("#") || token.IsSign("%:");
}

bool IsSameMacro(const SlcMacro& first, const SlcMacro& second)
{
    const auto isSame = [](const SlcMacro::BodyToken& a, const SlcMacro::BodyToken& b) {
        return a.token.text == b.token.text && a.token.spaceBefore == b.token.spaceBefore &&
               a.isQuoted == b.isQuoted && a.joinsNext == b.joinsNext;
    };
    return first.builtIn == second.builtIn && first.isFunction == second.isFunction &&
           first.isVariadic == second.isVariadic && first.parameters == second.parameters &&
           std::equal(first.body.begin(), first.body.end(), second.body.begin(), second.body.end(),
                      isSame);
}

}  // namespace

/// Reads the part of a definition after the macro's name, from left to right.
class SlcMacroTable::DefinitionReader {
public:
    DefinitionReader(SlcPreprocessorRun& run, const Tokens& line) : m_run(run), m_line(line) {}

    /// False after a report.
    [[nodiscard]] bool Read(SlcMacro& macro)
    {
        m_next = 1;
        macro.isFunction =
            m_next < m_line.size() && m_line[m_next].IsSign("(") && !m_line[m_next].spaceBefore;
        if (macro.isFunction && !ReadParameters(macro))
            return false;
        m_bodyBegin = m_next;
        return ReadBody(macro);
    }

    /// Returns the index of the replacement's first token in the line.
    [[nodiscard]] std::size_t BodyBegin() const { return m_bodyBegin; }

private:
    [[nodiscard]] const SlcSourceToken& Here() const
    {
        return m_next < m_line.size() ? m_line[m_next] : m_line.back();
    }
    [[nodiscard]] bool TakeSign(std::string_view sign)
    {
        const bool isHere = m_next < m_line.size() && m_line[m_next].IsSign(sign);
        m_next += isHere ? 1 : 0;
        return isHere;
    }
    [[nodiscard]] bool Fail(const SlcSourceToken& token, std::string text)
    {
        m_run.Error(token, std::move(text));
        return false;
    }

    [[nodiscard]] bool ReadParameters(SlcMacro& macro)
    {
        ++m_next;
        if (TakeSign(")"))
            return true;
        do {
            if (!ReadParameter(macro))
                return false;
        } while (!macro.isVariadic && TakeSign(","));
        return TakeSign(")") ||
               Fail(Here(),
                    "Parameters of a macro are names with ',' between them, and end in ')'");
    }

    [[nodiscard]] bool ReadParameter(SlcMacro& macro)
    {
        if (TakeSign("...")) {
            macro.isVariadic = true;
            macro.parameters.push_back(k_variadicName);
            return true;
        }
        if (m_next >= m_line.size() || m_line[m_next].kind != Name)
            return Fail(Here(),
                        "Parameters of a macro are names with ',' between them, and end in ')'");
        const std::string_view name = m_line[m_next].text;
        if (std::find(macro.parameters.begin(), macro.parameters.end(), name) !=
            macro.parameters.end())
            return Fail(Here(),
                        "Two parameters of the macro are called '" + std::string(name) + "'");
        macro.parameters.push_back(name);
        ++m_next;
        macro.isVariadic = TakeSign("...");
        return true;
    }

    [[nodiscard]] bool ReadBody(SlcMacro& macro)
    {
        const std::size_t begin = m_next;
        for (; m_next < m_line.size(); ++m_next)
            if (!ReadBodyToken(macro, m_next == begin))
                return false;
        if (!macro.body.empty())
            macro.body.front().token.spaceBefore = false;
        return true;
    }

    [[nodiscard]] bool ReadBodyToken(SlcMacro& macro, bool isFirst)
    {
        SlcMacro::BodyToken part = {.token = Here()};
        if (IsJoin(part.token)) {
            if (isFirst || m_next + 1 == m_line.size())
                return Fail(part.token, "'##' must stand between two tokens of a macro");
            macro.body.back().joinsNext = true;
            return true;
        }
        if (macro.isFunction && IsHash(part.token)) {
            ++m_next;
            part.parameter = ParameterOf(macro, m_next < m_line.size() ? Here().text : "");
            part.isQuoted = true;
            if (part.parameter == SlcMacro::k_noParameter)
                return Fail(part.token, "'#' in a macro must be followed by a parameter");
        } else if (part.token.kind == Name) {
            part.parameter = ParameterOf(macro, part.token.text);
        }
        macro.body.push_back(part);
        return true;
    }

    [[nodiscard]] static int ParameterOf(const SlcMacro& macro, std::string_view name)
    {
        const auto found = std::find(macro.parameters.begin(), macro.parameters.end(), name);
        return found == macro.parameters.end() ? SlcMacro::k_noParameter
                                               : static_cast<int>(found - macro.parameters.begin());
    }

    SlcPreprocessorRun& m_run;
    const Tokens& m_line;
    std::size_t m_next = 0;
    std::size_t m_bodyBegin = 0;
};

SlcMacroTable::SlcMacroTable(SlcPreprocessorRun& run) : m_run(run)
{
    for (const BuiltInRow& row : k_builtIns) {
        SlcMacro macro;
        macro.builtIn = row.macro;
        Set(row.name, std::move(macro));
    }
    for (const ConstantRow& row : k_constants) {
        SlcMacro macro;
        macro.body.resize(1);
        macro.body.front().token.kind = Number;
        macro.body.front().token.text = row.value;
        Set(row.name, std::move(macro));
    }
}

const SlcMacroTable::Entry* SlcMacroTable::Find(std::string_view name) const
{
    const auto found = m_entries.find(name);
    return found != m_entries.end() && found->second.macro ? &found->second : nullptr;
}

void SlcMacroTable::Set(std::string_view name, SlcMacro macro)
{
    const Entry fresh = {static_cast<std::uint32_t>(m_entries.size()), nullptr};
    m_entries.emplace(name, fresh).first->second.macro =
        std::make_shared<const SlcMacro>(std::move(macro));
}

void SlcMacroTable::Define(const SlcSourceToken& directive, const Tokens& line)
{
    if (line.empty() || line.front().kind != Name)
        return m_run.Error(line.empty() ? directive : line.front(),
                           "'#define' needs the name of a macro");
    const SlcSourceToken& name = line.front();
    if (name.text == k_defined)
        return m_run.Error(name, "A macro cannot be called 'defined'");
    SlcMacro macro;
    DefinitionReader reader(m_run, line);
    if (!reader.Read(macro))
        return;
    if (m_run.Trace())
        m_run.Trace()->Define(line, macro.isFunction, macro.parameters, reader.BodyBegin());
    if (const Entry* const before = Find(name.text); before && !IsSameMacro(*before->macro, macro))
        m_run.Warning(name, 2,
                      "Macro '" + std::string(name.text) + "' has been defined in another way");
    Set(name.text, std::move(macro));
}

void SlcMacroTable::Undefine(std::string_view name)
{
    const auto found = m_entries.find(name);
    if (found != m_entries.end())
        found->second.macro = nullptr;
}
