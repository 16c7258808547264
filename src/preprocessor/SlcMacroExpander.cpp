// Dave Prosser's algorithm (X3J11/86-196). The use T of a macro, with the hide set HS, is replaced:
//
//     object-like       by the body; HS + {T} is added to the hide set of each token
//     function-like     by the body with its arguments; (HS intersected with the hide set of the
//                       closing parenthesis) + {T} is added
//
// Expansion then continues at the start of the inserted body. Due to the intersection, a name at
// the end of a body may take its arguments from the text that follows:
//
//     #define f(a) a*g
//     #define g(a) f(a)
//     f(2)(9)             becomes 2*9*g
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcMacroExpander.h"

#include <algorithm>
#include <utility>

#include "preprocessor/SlcQuotedText.h"
#include "preprocessor/SlcSourceLexer.h"

namespace {

using enum SlcSourceTokenKind;

constexpr int k_mostCallDepth = 400;        // a level needs a kilobyte of stack
constexpr std::size_t k_mostHidden = 2000;  // size of a hide set
constexpr std::size_t k_workOfToken = 16;   // counted in addition to its characters
constexpr std::string_view k_tooMuchText = "Macros expand to too much text";

SlcSourceToken EmptyToken(bool spaceBefore)
{
    SlcSourceToken token;
    token.kind = Empty;
    token.spaceBefore = spaceBefore;
    return token;
}

}  // namespace

SlcMacroExpander::Tokens SlcMacroExpander::Expand(Tokens tokens)
{
    if (tokens.empty())
        return tokens;
    if (++m_depth > k_mostCallDepth)
        m_run.Stop(tokens.front(), "Calls of macros are nested too deeply");
    // Push an empty context first, so that the base is not 0, which stands for the source.
    m_contexts.push_back({});
    const std::size_t base = m_contexts.size();
    m_contexts.push_back({std::move(tokens)});
    Tokens expanded;
    for (;;) {
        const SlcSourceToken token = Next(base);
        if (token.kind == End)
            break;
        expanded.push_back(token);
    }
    m_contexts.resize(base - 1);
    --m_depth;
    return expanded;
}

SlcMacroExpander::Tokens SlcMacroExpander::ExpandCondition(Tokens tokens)
{
    m_inCondition = true;
    tokens = Expand(std::move(tokens));
    m_inCondition = false;
    return tokens;
}

SlcSourceToken SlcMacroExpander::Raw(std::size_t base)
{
    while (m_contexts.size() > base) {
        Context& context = m_contexts.back();
        if (context.next < context.tokens.size())
            return context.tokens[context.next++];
        m_contexts.pop_back();
    }
    return base == 0 ? m_source.NextToken() : SlcSourceToken();
}

SlcSourceToken SlcMacroExpander::Next(std::size_t base)
{
    for (;;) {
        SlcSourceToken token = Raw(base);
        if (token.kind != Name)
            return token;
        if (m_inCondition && token.text == "defined")
            return Defined(token, base);
        const SlcMacroTable::Entry* const entry = m_macros.Find(token.text);
        if (!entry || m_hideSets.Contains(token.hidden, entry->number) ||
            !Replace(token, *entry, base))
            return token;
    }
}

bool SlcMacroExpander::ParenthesisFollows(std::size_t base)
{
    for (std::size_t i = m_contexts.size(); i > base; --i) {
        const Context& context = m_contexts[i - 1];
        if (context.next < context.tokens.size())
            return context.tokens[context.next].IsSign("(");
    }
    return base == 0 && m_source.ParenthesisFollows();
}

SlcSourceToken SlcMacroExpander::Defined(const SlcSourceToken& word, std::size_t base)
{
    SlcSourceToken name = Raw(base);
    const bool inParentheses = name.IsSign("(");
    if (inParentheses)
        name = Raw(base);
    if (name.kind != Name || (inParentheses && !Raw(base).IsSign(")")))
        m_run.Error(word, "'defined' needs the name of a macro");
    if (m_run.Trace() && m_macros.Find(name.text))
        m_run.Trace()->Use(name, name, SlcPreprocessorTrace::UseKind::Asked);
    SlcSourceToken value = word;
    value.kind = Number;
    value.text = m_macros.Find(name.text) ? "1" : "0";
    return value;
}

void SlcMacroExpander::Spend(const SlcSourceToken& use, const SlcSourceToken& token)
{
    m_run.Spend(k_workOfToken + token.text.size(), use, k_tooMuchText);
}

bool SlcMacroExpander::Replace(const SlcSourceToken& use, const SlcMacroTable::Entry& entry,
                               std::size_t base)
{
    // Keep the macro alive: the source may undefine it while its arguments are read.
    const std::shared_ptr<const SlcMacro> macro = entry.macro;
    if (macro->builtIn != SlcBuiltInMacro::None) {
        NoteUse(use, use);
        ReplaceBuiltIn(use, macro->builtIn);
        return true;
    }
    SlcHideSet hidden = use.hidden;
    Arguments arguments;
    SlcSourceToken close = use;
    if (macro->isFunction) {
        if (!ParenthesisFollows(base))
            return false;
        if (!ReadArguments(use, *macro, base, arguments, close))
            return false;
        hidden = m_hideSets.Intersection(hidden, close.hidden);
    }
    NoteUse(use, close);
    if (m_hideSets.Size(hidden) > k_mostHidden)
        m_run.Stop(use, "Macros lead to each other over too many steps");
    m_run.Spend(k_workOfToken + m_hideSets.Size(hidden), use, k_tooMuchText);
    hidden = m_hideSets.With(hidden, entry.number);
    PushBody(Substitute(*macro, arguments, use), use, hidden);
    return true;
}

void SlcMacroExpander::NoteUse(const SlcSourceToken& use, const SlcSourceToken& end)
{
    if (m_run.Trace())
        m_run.Trace()->Use(use, end, SlcPreprocessorTrace::UseKind::Expanded);
}

void SlcMacroExpander::ReplaceBuiltIn(const SlcSourceToken& use, SlcBuiltInMacro macro)
{
    SlcSourceToken value = use;
    value.text = m_run.Keep(m_source.ValueOf(macro, use));
    value.kind = value.text.starts_with('"') ? Text : Number;
    Spend(use, value);
    PushBody({value}, use, use.hidden);
}

bool SlcMacroExpander::ReadArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                     std::size_t base, Arguments& arguments, SlcSourceToken& close)
{
    m_source.BeginArguments();
    const bool isClosed = CollectArguments(use, macro, base, arguments, close);
    m_source.EndArguments();
    if (isClosed)
        return MatchArguments(use, macro, arguments);
    m_run.Error(use, "The call of macro '" + std::string(use.text) + "' has no ')'");
    return false;
}

bool SlcMacroExpander::CollectArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                        std::size_t base, Arguments& arguments,
                                        SlcSourceToken& close)
{
    static_cast<void>(Raw(base));  // the opening parenthesis
    arguments.resize(1);
    for (int depth = 0;;) {
        SlcSourceToken token = Raw(base);
        Spend(use, token);
        if (token.kind == End)
            return false;
        if (token.IsSign(")") && depth-- == 0) {
            close = token;
            return true;
        }
        depth += token.IsSign("(") ? 1 : 0;
        const bool takesTheRest = macro.isVariadic && arguments.size() == macro.parameters.size();
        if (token.IsSign(",") && depth == 0 && !takesTheRest) {
            arguments.emplace_back();
            continue;
        }
        token.spaceBefore = token.spaceBefore || token.startsLine;
        token.startsLine = false;
        arguments.back().raw.push_back(token);
    }
}

bool SlcMacroExpander::MatchArguments(const SlcSourceToken& use, const SlcMacro& macro,
                                      Arguments& arguments)
{
    const std::size_t wanted = macro.parameters.size();
    if (wanted == 0 && arguments.size() == 1 && arguments.front().raw.empty())
        arguments.clear();
    if (macro.isVariadic && arguments.size() + 1 == wanted) {
        arguments.emplace_back();
        arguments.back().isMissing = true;
    }
    if (arguments.size() == wanted)
        return true;
    m_run.Error(use, "Macro '" + std::string(use.text) + "' takes " + std::to_string(wanted) +
                         " arguments, not " + std::to_string(arguments.size()));
    return false;
}

SlcMacroExpander::Tokens SlcMacroExpander::Substitute(const SlcMacro& macro, Arguments& arguments,
                                                      const SlcSourceToken& use)
{
    Tokens result;
    bool joins = false;
    for (std::size_t i = 0; i < macro.body.size(); ++i) {
        Tokens part = PartOf(macro, i, arguments);
        for (const SlcSourceToken& token : part)
            Spend(use, token);
        if (joins && !result.empty() && !part.empty())
            Join(result, part, use);
        else
            result.insert(result.end(), part.begin(), part.end());
        joins = macro.body[i].joinsNext;
    }
    return result;
}

/// Returns the tokens that replace the body's token at that index. Never empty: an empty argument
/// becomes a token of kind `Empty`.
SlcMacroExpander::Tokens SlcMacroExpander::PartOf(const SlcMacro& macro, std::size_t index,
                                                  Arguments& arguments)
{
    const SlcMacro::BodyToken& body = macro.body[index];
    const bool isJoined = body.joinsNext || (index > 0 && macro.body[index - 1].joinsNext);
    const auto isRest = [&](int parameter) {
        return macro.isVariadic && parameter + 1 == static_cast<int>(macro.parameters.size());
    };
    if (body.parameter == SlcMacro::k_noParameter) {
        // `, ## __VA_ARGS__`: without further arguments the comma is dropped too.
        const bool isComma =
            body.joinsNext && body.token.IsSign(",") && isRest(macro.body[index + 1].parameter);
        const bool isAlone = arguments.size() == 1 && arguments.back().raw.empty();
        return isComma && (arguments.back().isMissing || isAlone) ? Tokens{EmptyToken(false)}
                                                                  : Tokens{body.token};
    }
    Argument& argument = arguments[static_cast<std::size_t>(body.parameter)];
    if (body.isQuoted)
        return {Quote(body.token, argument.raw)};
    const bool followsComma = index > 0 && isJoined && isRest(body.parameter) &&
                              macro.body[index - 1].joinsNext &&
                              macro.body[index - 1].token.IsSign(",") && !body.joinsNext;
    Tokens part = isJoined ? argument.raw : Expanded(argument);
    if (part.empty())
        part.push_back(EmptyToken(false));
    part.front().spaceBefore = body.token.spaceBefore;
    // Let the "##" join the comma with an empty token, which leaves the comma unchanged.
    if (followsComma && part.front().kind != Empty)
        part.insert(part.begin(), EmptyToken(false));
    return part;
}

SlcMacroExpander::Tokens SlcMacroExpander::Expanded(Argument& argument)
{
    if (!argument.isExpanded)
        argument.expanded = Expand(argument.raw);
    argument.isExpanded = true;
    return argument.expanded;
}

SlcSourceToken SlcMacroExpander::Quote(const SlcSourceToken& hash, const Tokens& argument)
{
    std::string text;
    for (const SlcSourceToken& token : argument) {
        if (token.spaceBefore && !text.empty())
            text += ' ';
        const bool isQuoted = token.kind == Text || token.kind == Character;
        text += isQuoted ? SlcEscaped(token.text) : std::string(token.text);
    }
    // Drop half an escape, which would escape the closing quote.
    const std::size_t end = text.find_last_not_of('\\') + 1;
    text.resize(text.size() - (text.size() - end) % 2);
    SlcSourceToken quoted = hash;
    quoted.text = m_run.Keep('"' + text + '"');
    quoted.kind = Text;
    return quoted;
}

void SlcMacroExpander::Join(Tokens& result, const Tokens& part, const SlcSourceToken& use)
{
    SlcSourceToken& left = result.back();
    const SlcSourceToken& right = part.front();
    if (left.kind == Empty) {
        const bool spaceBefore = left.spaceBefore;
        left = right;
        left.spaceBefore = spaceBefore;
    } else if (right.kind != Empty) {
        const std::string_view text = m_run.Keep(std::string(left.text) + std::string(right.text));
        SlcSourceLexer lexer(text.data(), text.data() + text.size() + 1);
        const SlcSourceToken whole = lexer.Next();
        if (whole.text.size() == text.size()) {
            left.text = text;
            left.kind = whole.kind;
            left.hidden = m_hideSets.Intersection(left.hidden, right.hidden);
        } else {
            m_run.Error(use, "Pasting '" + std::string(left.text) + "' and '" +
                                 std::string(right.text) + "' makes no token");
            result.push_back(right);
        }
    }
    result.insert(result.end(), part.begin() + 1, part.end());
}

void SlcMacroExpander::PushBody(Tokens body, const SlcSourceToken& use, SlcHideSet hidden)
{
    bool spaceBefore = false;
    std::size_t kept = 0;
    for (SlcSourceToken& token : body) {
        spaceBefore = spaceBefore || token.spaceBefore;
        if (token.kind == Empty)
            continue;
        token.spaceBefore = kept == 0 ? use.spaceBefore : spaceBefore;
        token.startsLine = kept == 0 && use.startsLine;
        spaceBefore = false;
        token.hidden = m_hideSets.Union(token.hidden, hidden);
        token.at = use.at;
        token.line = use.line;
        token.column = use.column;
        token.fromMacro = true;
        body[kept++] = token;
    }
    body.resize(kept);
    if (kept > 0)
        m_contexts.push_back({std::move(body)});
}
