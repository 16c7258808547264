// In an active part of a file, each line that begins with "#" is executed as a directive. In a
// skipped part only the conditional directives are read, to find its end.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcDirectiveReader.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <utility>

#include "preprocessor/SlcQuotedText.h"

namespace {

using enum SlcSourceTokenKind;

constexpr std::size_t k_mostLevels = 200;      // maximum nesting depth of includes
constexpr std::size_t k_workOfInclude = 4096;  // counted in addition to the file's characters
constexpr std::size_t k_mostOfLine = 8191;     // maximum length of a source line in a report

/// Returns the text of the tokens, with one blank where the source has white space.
std::string TextOf(const std::vector<SlcSourceToken>& tokens)
{
    std::string text;
    for (const SlcSourceToken& token : tokens) {
        if (token.spaceBefore && !text.empty())
            text += ' ';
        text += token.text;
    }
    return text;
}

/// Returns the time in SOURCE_DATE_EPOCH, for reproducible builds, as UTC; if not set, the current
/// local time.
std::tm TimeOfRun()
{
    std::tm parts = {};
    if (const char* const epoch = std::getenv("SOURCE_DATE_EPOCH")) {
        const std::time_t time = std::atoll(epoch);
        gmtime_r(&time, &parts);
    } else {
        const std::time_t time = std::time(nullptr);
        localtime_r(&time, &parts);
    }
    return parts;
}

/// Returns the date as `"Jan  1 2026"`, regardless of the locale.
std::string DateText()
{
    constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";
    const std::tm time = TimeOfRun();
    const auto month = static_cast<std::size_t>(time.tm_mon) % 12;
    const std::string day = std::to_string(time.tm_mday);
    return std::string("\"").append(months.substr(3 * month, 3)) + (day.size() < 2 ? "  " : " ") +
           day + " " + std::to_string(time.tm_year + 1900) + "\"";
}

std::string TimeText()
{
    const std::tm time = TimeOfRun();
    char text[16];
    std::strftime(text, sizeof text, "\"%H:%M:%S\"", &time);
    return text;
}

}  // namespace

struct SlcDirectiveReader::Row {
    std::string_view name;
    Effect effect;
    bool isCondition;  // also executed in a skipped part
};

SlcDirectiveReader::SlcDirectiveReader(SlcPreprocessorRun& run, SlcMacroTable& macros,
                                       SlcIncludedFiles& files, SlcPreprocessedText& output)
    : m_run(run),
      m_macros(macros),
      m_files(files),
      m_output(output),
      m_expander(run, macros, *this),
      m_listener{
          [&run](const SlcSourceToken& comment) { run.Error(comment, "Comment has no end"); },
          [&run](const SlcSourceToken& start) {
              run.Warning(start, 1, "Comment begins inside a comment");
          }}
{
}

void SlcDirectiveReader::Enter(const SlcSourceText& text)
{
    const int line = m_open.empty() ? 0 : File().lexer.Line() - 1;
    m_open.push_back({&text, SlcSourceLexer(text, &m_listener), text.Name(), {}, line});
}

SlcSourceToken SlcDirectiveReader::NextToken()
{
    for (;;) {
        const SlcSourceToken token = File().lexer.Next();
        if (token.kind == NewLine)
            continue;
        if (token.kind == End) {
            if (m_openCalls > 0 || !LeaveFile())
                return token;
        } else if (token.startsLine && (token.IsSign("#") || token.IsSign("%:"))) {
            Directive();
        } else if (!IsSkipping()) {
            return token;
        } else {
            SkipLine();
        }
    }
}

bool SlcDirectiveReader::ParenthesisFollows()
{
    SlcSourceLexer ahead = File().lexer;
    ahead.BeSilent();
    SlcSourceToken token = ahead.Next();
    while (token.kind == NewLine)
        token = ahead.Next();
    return token.IsSign("(");
}

std::string SlcDirectiveReader::ValueOf(SlcBuiltInMacro macro, const SlcSourceToken& use)
{
    switch (macro) {
    case SlcBuiltInMacro::Line:
        return std::to_string(use.line);
    case SlcBuiltInMacro::File:
        return SlcQuoted(File().name);
    case SlcBuiltInMacro::BaseFile:
        return SlcQuoted(m_open.front().text->Name());
    case SlcBuiltInMacro::IncludeLevel:
        return std::to_string(m_open.size() - 1);
    case SlcBuiltInMacro::Counter:
        return std::to_string(m_counter++);
    case SlcBuiltInMacro::Date:
        return DateText();
    case SlcBuiltInMacro::Time:
        return TimeText();
    case SlcBuiltInMacro::None:
        break;
    }
    return {};
}

void SlcDirectiveReader::CompleteReport(const SlcSourceToken& token,
                                        SlcPreprocessorReport& report) const
{
    report.line = token.line;
    report.column = token.column;
    report.length = std::max(1, static_cast<int>(token.fromMacro ? 1 : token.text.size()));
    if (m_open.empty())
        return;
    const OpenFile& file = m_open.back();
    report.file = file.name;
    for (std::size_t i = m_open.size() - 1; i > 0; --i)
        report.includers.push_back({m_open[i - 1].name, m_open[i].includeLine});
    if (token.at < file.text->Begin() || token.at >= file.text->End())
        return;
    const std::string_view rest(token.at - (token.column - 1), file.text->End());
    report.sourceLine = rest.substr(0, std::min(rest.find('\n'), k_mostOfLine));
}

void SlcDirectiveReader::SkipLine()
{
    while (!File().lexer.Next().EndsLine()) {
    }
}

SlcDirectiveReader::Tokens SlcDirectiveReader::RestOfLine()
{
    Tokens tokens;
    for (SlcSourceToken token = File().lexer.Next(); !token.EndsLine(); token = File().lexer.Next())
        tokens.push_back(token);
    return tokens;
}

bool SlcDirectiveReader::LeaveFile()
{
    if (!File().groups.empty()) {
        const SlcSourceToken& start = File().groups.back().start;
        m_run.Error(start, "'#" + std::string(start.text) + "' has no '#endif'");
        File().groups.clear();
    }
    if (m_open.size() == 1)
        return false;
    m_open.pop_back();
    m_output.ReturnToFile(File().name, File().lexer.Line());
    return true;
}

void SlcDirectiveReader::Directive()
{
    using Reader = SlcDirectiveReader;
    //   name       effect                condition
    static constexpr Row k_rows[] = {
        {"if", &Reader::If, true},
        {"ifdef", &Reader::IfDefined, true},
        {"ifndef", &Reader::IfDefined, true},
        {"elif", &Reader::Elif, true},
        {"else", &Reader::Else, true},
        {"endif", &Reader::EndIf, true},
        {"define", &Reader::Define, false},
        {"undef", &Reader::Undefine, false},
        {"include", &Reader::Include, false},
        {"line", &Reader::Line, false},
        {"pragma", &Reader::Pragma, false},
        {"error", &Reader::Error, false},
        {"warning", &Reader::Warning, false},
        {"ident", &Reader::Identify, false},
        {"sccs", &Reader::Identify, false},
    };
    const SlcSourceToken name = File().lexer.Next();
    if (name.EndsLine())
        return;
    const auto row = std::find_if(std::begin(k_rows), std::end(k_rows),
                                  [&](const Row& r) { return name.Is(Name, r.name); });
    if (row != std::end(k_rows) && (row->isCondition || !IsSkipping()))
        return (this->*row->effect)(name);
    if (!IsSkipping() && name.kind == Number) {
        // A line marker, in the form that this preprocessor writes.
        Tokens line = RestOfLine();
        line.insert(line.begin(), name);
        return SetPlace(name, line);
    }
    if (!IsSkipping())
        m_run.Error(name, "There is no directive '#" + std::string(name.text) + "'");
    SkipLine();
}

void SlcDirectiveReader::Define(const SlcSourceToken& name)
{
    m_macros.Define(name, RestOfLine());
}

void SlcDirectiveReader::Undefine(const SlcSourceToken& name)
{
    const Tokens line = RestOfLine();
    if (line.empty() || line.front().kind != Name)
        return m_run.Error(line.empty() ? name : line.front(),
                           "'#undef' needs the name of a macro");
    NoteUse(line.front(), SlcPreprocessorTrace::UseKind::Undefined);
    m_macros.Undefine(line.front().text);
}

std::string SlcDirectiveReader::HeaderOf(const SlcSourceToken& name, SlcSourceToken& place)
{
    place = File().lexer.HeaderName();
    if (place.kind == Text) {
        SkipLine();
        return std::string(place.text);
    }
    const Tokens line = RestOfLine();
    place = line.empty() ? name : line.front();
    const Tokens expanded = m_expander.Expand(line);
    std::string header = TextOf(expanded);
    if (!expanded.empty() && expanded.front().kind == Text)
        header = expanded.front().text;
    const std::size_t close = header.find('>');
    if (header.starts_with('<') && close != std::string::npos)
        header.resize(close + 1);
    else if (!header.starts_with('"') || header.size() < 2 || !header.ends_with('"'))
        header.clear();
    return header;
}

void SlcDirectiveReader::Include(const SlcSourceToken& name)
{
    SlcSourceToken place;
    const std::string header = HeaderOf(name, place);
    if (header.size() <= 2)
        return m_run.Error(place, "'#include' needs the name of a file in \"\" or <>");
    if (m_openCalls > 0)
        return m_run.Error(name, "'#include' cannot stand between the arguments of a macro");
    IncludeFile(place, header);
}

void SlcDirectiveReader::IncludeFile(const SlcSourceToken& place, const std::string& header)
{
    const std::string name = header.substr(1, header.size() - 2);
    const auto found =
        m_files.Find(name, header.starts_with('"'), SlcFolderOf(File().text->Name()));
    if (found.outcome == SlcIncludedFiles::Outcome::Missing)
        return m_run.Error(place, "Cannot find the included file '" + name + "'");
    if (found.outcome == SlcIncludedFiles::Outcome::Unreadable)
        return m_run.Error(place, "Cannot read the included file '" + name + "'");
    if (m_run.Trace())
        m_run.Trace()->IncludeFile(place, *found.text);
    if (m_files.IsFinished(*found.text))
        return;
    if (m_open.size() >= k_mostLevels)
        m_run.Stop(place, "Files are included over more than " + std::to_string(k_mostLevels) +
                              " levels (do they include each other?)");
    const auto size = static_cast<std::size_t>(found.text->End() - found.text->Begin());
    m_run.AllowFor(m_files.IsFirstUse(*found.text) ? size : 0);
    m_run.Spend(k_workOfInclude + size, place, "Files are included over and over");
    Enter(*found.text);
    m_output.EnterFile(found.text->Name());
}

void SlcDirectiveReader::Line(const SlcSourceToken& name)
{
    SetPlace(name, m_expander.Expand(RestOfLine()));
}

void SlcDirectiveReader::SetPlace(const SlcSourceToken& place, const Tokens& line)
{
    const std::string_view digits = line.empty() ? std::string_view() : line.front().text;
    int number = 0;
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool hasNumber = !line.empty() && line.front().kind == Number && fault == std::errc() &&
                           end == digits.data() + digits.size();
    if (!hasNumber || (line.size() > 1 && line[1].kind != Text))
        return m_run.Error(place,
                           "A line marker needs a number up to 2147483647, and a name in \"\"");
    if (line.size() > 1)
        File().name = SlcUnquoted(line[1].text);
    File().lexer.SetLine(number);
    m_output.SetPlace(File().name, number);
}

void SlcDirectiveReader::Pragma(const SlcSourceToken& name)
{
    const Tokens line = RestOfLine();
    if (!line.empty() && line.front().Is(Name, "once"))
        return m_files.IncludeOnce(*File().text);
    m_output.AddLine("#pragma " + TextOf(line), name.line);
}

void SlcDirectiveReader::Identify(const SlcSourceToken& name)
{
    m_output.AddLine("#" + std::string(name.text) + " " + TextOf(RestOfLine()), name.line);
}

void SlcDirectiveReader::Error(const SlcSourceToken& name)
{
    m_run.Error(name, "#error " + TextOf(RestOfLine()));
}

void SlcDirectiveReader::Warning(const SlcSourceToken& name)
{
    m_run.Warning(name, 1, "#warning " + TextOf(RestOfLine()));
}
