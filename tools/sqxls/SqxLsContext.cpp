// Tested by tests/sqxls/SqxLsCompletionTest.cpp.

#include "sqxls/SqxLsContext.h"

#include <algorithm>
#include <string_view>

namespace {

using Kind = SqxLsContext::Kind;

/// Returns the start of the word that ends at the offset.
std::size_t WordBegin(std::string_view text, std::size_t offset)
{
    while (offset > 0 && SqxLsIsWordByte(text[offset - 1]))
        --offset;
    return offset;
}

bool ReadDirective(const SqxLsToken& token, std::size_t offset, SqxLsContext& context)
{
    const std::string_view line = token.text.substr(0, offset - token.span.begin);
    const std::size_t word = line.find_first_not_of("# \t");
    const std::size_t end =
        word == std::string_view::npos ? word : line.find_first_of(" \t\"<", word);
    if (end == std::string_view::npos) {
        context.kind = Kind::Directive;
        return true;
    }
    const std::size_t quote = line.find_first_of("\"<");
    const bool isOpen = quote != std::string_view::npos &&
                        line.find_first_of("\">", quote + 1) == std::string_view::npos;
    if (!line.substr(word).starts_with("include") || !isOpen)
        return false;
    context.kind = Kind::Include;
    context.typed.begin = token.span.begin + quote + 1;
    return true;
}

bool IsLightLoop(std::string_view word)
{
    return word == "illuminance";
}

bool IsAssignment(std::string_view sign)
{
    return sign == "=" || sign == "+=" || sign == "-=" || sign == "*=" || sign == "/=";
}

struct Open {
    std::string call;
    std::size_t argument = 0;
    std::size_t begin = 0;  // of the name
};

/// Derives the call, the assignment and the light loop around the word from the `count` tokens
/// before it.
void ReadCode(const std::vector<SqxLsToken>& tokens, std::size_t count, SqxLsContext& context)
{
    std::vector<Open> open;
    std::vector<bool> blocks;  // for each open brace: true if it opens the body of a light loop
    bool isHead = false;       // the body of a light loop comes next
    for (std::size_t i = 0; i < count; ++i) {
        const SqxLsToken& token = tokens[i];
        if (token.kind == SqxLsToken::Kind::Comment || token.kind == SqxLsToken::Kind::Directive)
            continue;
        const bool isNamed = i > 0 && (tokens[i - 1].kind == SqxLsToken::Kind::Word ||
                                       tokens[i - 1].kind == SqxLsToken::Kind::Keyword);
        if (token.text == "(")
            open.push_back(isNamed
                               ? Open{std::string(tokens[i - 1].text), 0, tokens[i - 1].span.begin}
                               : Open());
        else if (token.text == "[")
            open.push_back({});
        else if ((token.text == ")" || token.text == "]") && !open.empty()) {
            isHead = isHead || IsLightLoop(open.back().call);
            open.pop_back();
        } else if (token.text == "," && !open.empty())
            ++open.back().argument;
        const bool endsStatement = token.text == ";" || token.text == "{" || token.text == "}";
        if (token.text == "{")
            blocks.push_back(isHead);
        if (token.text == "}" && !blocks.empty())
            blocks.pop_back();
        if (token.text == "{" || token.text == "}")
            open.clear();
        isHead = isHead && !endsStatement;
        if (endsStatement)
            context.target.clear();
        else if (isNamed && open.empty() && IsAssignment(token.text))
            context.target = tokens[i - 1].text;
        context.before = token.text;
    }
    context.isInLightLoop = isHead || std::find(blocks.begin(), blocks.end(), true) != blocks.end();
    for (auto call = open.rbegin(); call != open.rend() && context.call.empty(); ++call) {
        context.call = call->call;
        context.argument = call->argument;
        context.callBegin = call->begin;
    }
}

}  // namespace

SqxLsContext SqxLsContextAt(const SqxLsText& text, std::size_t offset)
{
    const std::string_view before = std::string_view(text.Bytes()).substr(0, offset);
    const auto tokens = SqxLsTokensOf(before);
    SqxLsContext context;
    context.typed = {WordBegin(before, offset), offset};
    std::size_t count = tokens.size();
    const bool isOnLine = count > 0 && tokens.back().text.starts_with("//") &&
                          before.find('\n', tokens.back().span.end) == std::string_view::npos;
    const bool endsAtPlace = count > 0 && (tokens.back().span.end == offset || isOnLine);
    if (endsAtPlace) {
        const SqxLsToken& last = tokens.back();
        const bool isComment =
            last.kind == SqxLsToken::Kind::Comment && last.text.starts_with("//");
        if (isComment || (last.kind == SqxLsToken::Kind::Broken && last.text.starts_with("/*")))
            context.kind = Kind::Comment;
        else if (last.kind == SqxLsToken::Kind::Directive && ReadDirective(last, offset, context))
            return context;
        else if (last.kind == SqxLsToken::Kind::Broken && last.text.starts_with('"')) {
            context.kind = Kind::Text;
            context.typed.begin = last.span.begin + 1;
        }
        const bool isWord = last.kind == SqxLsToken::Kind::Word ||
                            last.kind == SqxLsToken::Kind::Keyword || context.kind == Kind::Text;
        count -= isWord ? 1 : 0;
    }
    ReadCode(tokens, count, context);
    return context;
}
