// A report becomes an edit only if a single fix is likely: to insert a token, to replace a word or
// a sign, or to declare a variable. The title of an edit says what it changes.
//
// Tested by tests/sqxls/SqxLsActionsTest.cpp.

#include "sqxls/SqxLsActions.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiler/QxLanguage.h"
#include "sqxls/SqxLsCursor.h"
#include "sqxls/SqxLsDiagnostics.h"
#include "sqxls/SqxLsHover.h"
#include "sqxls/SqxLsTokens.h"

namespace {

using Kind = SqxLsToken::Kind;

struct Fix {
    std::string title;
    SqxLsSpan span;
    std::string text;
};

/// A word or sign that is wrong at its place, often from another language, and its replacement.
struct Replacement {
    std::string_view advice;  // part of the advice of the report
    std::string_view from;    // the text of one token or more
    std::string_view to;
};

constexpr Replacement k_replacements[] = {
    {"the language has no 'int'", "int", "float"},
    {"the language has no 'int'", "bool", "float"},
    {"the language has no 'int'", "double", "float"},
    {"there is no '++'", "++", " += 1"},
    {"there is no '--'", "--", " -= 1"},
    {"there is no '<>'", "<>", "!="},
    {"write '=' to assign", "==", "="},
};

/// Returns the text between the first `before` and the next `after`; empty if one of them is
/// missing.
std::string QuotedBetween(const std::string& text, std::string_view before, std::string_view after)
{
    const std::size_t begin = text.find(before);
    if (begin == std::string::npos)
        return "";
    const std::size_t end = text.find(after, begin + before.size());
    return end == std::string::npos
               ? ""
               : text.substr(begin + before.size(), end - begin - before.size());
}

/// Returns the index of the last token that ends at or before the offset, apart from comments and
/// directives; the number of tokens if there is none.
std::size_t TokenBefore(const std::vector<SqxLsToken>& tokens, std::size_t offset)
{
    std::size_t last = tokens.size();
    for (std::size_t i = 0; i < tokens.size() && tokens[i].span.end <= offset; ++i)
        if (tokens[i].kind != Kind::Comment && tokens[i].kind != Kind::Directive)
            last = i;
    return last;
}

/// Returns the character that is missing according to the report; empty if the report names none or
/// alternatives.
std::string MissingSign(const QxCompileReport& report)
{
    if (report.text.starts_with("';' expected"))
        return ";";
    for (const auto& [before, after] :
         {std::pair("a '", "' is missing"), std::pair("'", "' is missing")})
        if (const std::string sign = QuotedBetween(report.advice, before, after);
            sign.size() == 1 && report.advice.find(" or ") == std::string::npos)
            return sign;
    return "";
}

std::optional<Fix> InsertionFor(const QxCompileReport& report, const SqxLsSpan& place,
                                const std::vector<SqxLsToken>& tokens)
{
    const std::string sign = MissingSign(report);
    const std::size_t before = TokenBefore(tokens, place.begin);
    if (sign.empty() || before == tokens.size())
        return std::nullopt;
    const std::size_t at = tokens[before].span.end;
    return Fix{"Insert '" + sign + "'", {at, at}, (sign == "{" ? " " : "") + sign};
}

std::optional<Fix> ReplacementFor(const QxCompileReport& report, const SqxLsSpan& place,
                                  const SqxLsText& text, const std::vector<SqxLsToken>& tokens)
{
    constexpr std::size_t k_near = 2;  // tokens before or after the place
    for (const Replacement& row : k_replacements) {
        if (report.advice.find(row.advice) == std::string::npos)
            continue;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            const std::size_t first = tokens[i > k_near ? i - k_near : 0].span.begin;
            const std::size_t last = tokens[std::min(i + k_near, tokens.size() - 1)].span.end;
            const SqxLsSpan span{tokens[i].span.begin, tokens[i].span.begin + row.from.size()};
            const bool isNear = first <= place.begin && place.begin <= last;
            const bool isWhole = row.from.size() == 2 || tokens[i].text == row.from;
            if (!isNear || !isWhole || span.end > text.Bytes().size() ||
                text.Part(span) != row.from)
                continue;
            const bool isPostfix = i > 0 && tokens[i - 1].kind == Kind::Word;
            if (row.to.starts_with(' ') && !isPostfix)
                continue;
            return Fix{"Replace '" + std::string(row.from) + "' by '" +
                           std::string(row.to.substr(row.to.find_first_not_of(' '))) + "'",
                       span, std::string(row.to)};
        }
    }
    return std::nullopt;
}

/// Replaces the first '=' in the parentheses of a condition, such as `if (x = 1)`, by '=='. The
/// report is at the token after the parentheses.
std::optional<Fix> ComparisonFor(const QxCompileReport& report, const SqxLsSpan& place,
                                 const std::vector<SqxLsToken>& tokens)
{
    const std::size_t close = TokenBefore(tokens, place.begin);
    if (report.advice.find("a condition needs a comparison") == std::string::npos ||
        close == tokens.size() || tokens[close].text != ")")
        return std::nullopt;
    const std::size_t open = SqxLsPartnersOf(tokens)[close];
    for (std::size_t i = open; i < close; ++i)
        if (tokens[i].text == "=")
            return Fix{"Replace '=' by '=='", tokens[i].span, "=="};
    return std::nullopt;
}

/// Returns the index of the first token whose text is `name` from the place on in its line; the
/// number of tokens if there is none. If the name is in the argument of a macro, the place is that
/// of the macro.
std::size_t UseOf(std::string_view name, const SqxLsSpan& place, const SqxLsText& text,
                  const std::vector<SqxLsToken>& tokens)
{
    const SqxLsSpan line = text.LineAround(place.begin);
    for (std::size_t i = 0; i < tokens.size() && tokens[i].span.begin < line.end; ++i)
        if (tokens[i].text == name && tokens[i].span.begin >= place.begin)
            return i;
    return tokens.size();
}

/// Returns the index of the last token whose text is `name` before the place, the initializer of
/// the variable of that name; the number of tokens if there is none.
std::size_t InitializedVariable(std::string_view name, const SqxLsSpan& place,
                                const std::vector<SqxLsToken>& tokens)
{
    std::size_t variable = tokens.size();
    for (std::size_t i = 0; i < tokens.size() && tokens[i].span.begin < place.begin; ++i)
        if (tokens[i].text == name)
            variable = i;
    return variable;
}

/// True if the declaration of the variable at the index `variable` declares no further variable
/// after it. The callers check the tokens before the variable.
bool IsDeclaredAlone(const std::vector<SqxLsToken>& tokens,
                     const std::vector<std::size_t>& partners, std::size_t variable)
{
    for (std::size_t i = variable; i < tokens.size() && tokens[i].text != ";";
         i = std::max(i, partners[i]) + 1)
        if (tokens[i].text == ",")
            return false;
    return true;
}

bool IsPredefined(std::string_view name)
{
    for (const char* kind : {"surface", "light", "displacement", "volume", "imager"})
        for (const QxIndexedName& variable : QxPredefinedVariables(kind))
            if (variable.name == name)
                return true;
    return false;
}

/// Replaces `uniform` by `varying` in the declaration of a single variable whose initializer is
/// varying.
std::optional<Fix> VaryingFor(const QxCompileReport& report, const SqxLsSpan& place,
                              const std::vector<SqxLsToken>& tokens)
{
    const std::string name =
        QuotedBetween(report.text, "The expression initializing '", "' must be uniform");
    const std::size_t variable = InitializedVariable(name, place, tokens);
    if (name.empty() || variable == tokens.size() || variable < 2 ||
        tokens[variable - 2].text != "uniform" ||
        !IsDeclaredAlone(tokens, SqxLsPartnersOf(tokens), variable))
        return std::nullopt;
    return Fix{"Declare '" + name + "' varying", tokens[variable - 2].span, "varying"};
}

/// Declares an undefined variable as a float before the statement that uses it. Most variables are
/// floats, and the user can change the type.
std::optional<Fix> DeclarationFor(const QxCompileReport& report, const SqxLsSpan& place,
                                  const SqxLsText& text, const std::vector<SqxLsToken>& tokens)
{
    constexpr std::string_view k_report = "Undefined variable: ";
    if (!report.text.starts_with(k_report))
        return std::nullopt;
    const std::string name = report.text.substr(k_report.size());
    const std::size_t use = UseOf(name, place, text, tokens);
    if (use == tokens.size() || IsPredefined(name))  // in another shader type
        return std::nullopt;
    std::size_t statement = use;
    const auto partners = SqxLsPartnersOf(tokens);
    for (std::size_t i = use; i-- > 0;)  // the ';' in the head of a loop does not end a statement
        if (tokens[i].text == "(" && partners[i] > use)
            statement = i;
    constexpr std::string_view k_ends = "{};";
    while (statement > 0 && k_ends.find(tokens[statement].text) == std::string_view::npos)
        --statement;
    if (statement == 0)
        return std::nullopt;
    const std::size_t at = tokens[statement + 1].span.begin;
    const SqxLsSpan line = text.LineAround(at);
    const bool startsLine = line.begin == at;
    const std::size_t lineBreak = text.Bytes().rfind('\n', at);
    const std::string indent =
        startsLine ? "\n" + text.Bytes().substr(lineBreak + 1, at - lineBreak - 1) : " ";
    return Fix{"Declare 'float " + name + "'", {at, at}, "float " + name + " = 0;" + indent};
}

SqxJson ActionOf(const SqxLsText& text, const std::string& uri, const Fix& fix, const char* kind)
{
    SqxJson edits = SqxJson::array();
    edits.push_back({{"range", SqxLsWriteRange(text, fix.span)}, {"newText", fix.text}});
    SqxJson changes = SqxJson::object();
    changes[uri] = std::move(edits);
    return {{"title", fix.title}, {"kind", kind}, {"edit", {{"changes", std::move(changes)}}}};
}

/// Returns the diagnostics in the request whose range equals `range`, the range of a report.
SqxJson DiagnosticsAt(const SqxJson& params, const SqxJson& range)
{
    SqxJson list = SqxJson::array();
    const SqxJson& diagnostics = SqxLsMember(params, "context/diagnostics");
    if (diagnostics.is_array())
        for (const SqxJson& diagnostic : diagnostics)
            if (SqxLsMember(diagnostic, "range") == range)
                list.push_back(diagnostic);
    return list;
}

/// Adds actions that insert the detail that the compiler has derived into declarations in the
/// range, if they declare a single local.
void AddDetails(const SqxLsIndexed& indexed, const std::string& uri, const SqxLsSpan& range,
                const std::vector<SqxLsToken>& tokens, SqxJson& actions)
{
    const auto partners = SqxLsPartnersOf(tokens);
    for (const QxIndexedName& name : indexed.index->names) {
        const std::string detail = SqxLsDetailWord(name.inferred);
        if (name.kind != QxNameKind::Local || name.declaresDetail || detail.empty() ||
            name.place.file != indexed.file || indexed.file < 0)
            continue;
        const SqxLsSpan word = SqxLsIndexed::SpanOf(*indexed.text, name.place);
        if (word.end < range.begin || word.begin > range.end)
            continue;
        const std::size_t type = TokenBefore(tokens, word.begin);
        const std::size_t before =
            type < tokens.size() ? TokenBefore(tokens, tokens[type].span.begin) : tokens.size();
        const bool isAlone =
            before < tokens.size() && tokens[type].kind == Kind::Keyword &&
            std::string_view("{};").find(tokens[before].text) != std::string_view::npos &&
            IsDeclaredAlone(tokens, partners, TokenBefore(tokens, word.end));
        if (!isAlone)
            continue;  // several variables of one declaration share its detail
        const std::size_t at = tokens[type].span.begin;
        actions.push_back(ActionOf(
            *indexed.text, uri, {"Declare '" + name.name + "' " + detail, {at, at}, detail + " "},
            "refactor.rewrite"));
    }
}

}  // namespace

SqxJson SqxLsCodeActions(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsIndexed indexed = SqxLsIndexOf(workspace, params);
    const std::string& uri = SqxLsTextMember(params, "textDocument/uri");
    const SqxLsText& text = *indexed.text;
    const SqxLsSpan range = SqxLsReadRange(SqxLsMember(params, "range"), text);
    const std::string path = workspace.DocumentOf(params).path;
    const auto tokens = SqxLsTokensOf(text.Bytes());
    SqxJson actions = SqxJson::array();
    for (const QxCompileReport& report : indexed.analysis->result.reports) {
        const SqxLsReportPlace place = SqxLsPlaceOf(report, *indexed.analysis);
        if (!place.isExact || place.path != path || place.span.end < range.begin ||
            place.span.begin > range.end)
            continue;
        for (const auto& fix : {InsertionFor(report, place.span, tokens),
                                ReplacementFor(report, place.span, text, tokens),
                                ComparisonFor(report, place.span, tokens),
                                DeclarationFor(report, place.span, text, tokens),
                                VaryingFor(report, place.span, tokens)}) {
            if (!fix)
                continue;
            SqxJson action = ActionOf(text, uri, *fix, "quickfix");
            action["diagnostics"] = DiagnosticsAt(params, SqxLsWriteRange(text, place.span));
            actions.push_back(std::move(action));
        }
    }
    if (indexed.analysis->result.succeeded)  // an error may hide assignments that change details
        AddDetails(indexed, uri, range, tokens, actions);
    return actions;
}
