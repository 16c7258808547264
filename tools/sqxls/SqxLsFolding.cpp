// Tested by tests/sqxls/SqxLsFoldingTest.cpp.

#include "sqxls/SqxLsFolding.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "sqxls/SqxLsTokens.h"

namespace {

using Kind = SqxLsToken::Kind;

class Folds {
public:
    explicit Folds(const SqxLsText& text) : m_text(text) {}

    void Add(std::size_t begin, std::size_t last, const char* kind)
    {
        const std::size_t first = m_text.PositionOf(begin).line;
        const std::size_t end = m_text.PositionOf(last).line;
        if (end <= first)
            return;
        SqxJson fold = {{"startLine", first}, {"endLine", end}};
        if (kind)
            fold["kind"] = kind;
        m_folds.push_back(std::move(fold));
    }

    [[nodiscard]] SqxJson Take() { return std::move(m_folds); }

private:
    const SqxLsText& m_text;
    SqxJson m_folds = SqxJson::array();
};

void AddBrackets(const std::vector<SqxLsToken>& tokens, Folds& folds)
{
    const auto partners = SqxLsPartnersOf(tokens);
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (partners[i] > i)  // a line that begins with the closing bracket stays visible
            folds.Add(tokens[i].span.begin, tokens[partners[i] - 1].span.end, nullptr);
}

/// Adds one fold for each group of comments on consecutive lines.
void AddComments(const SqxLsText& text, const std::vector<SqxLsToken>& tokens, Folds& folds)
{
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Kind::Comment)
            continue;
        std::size_t last = i;
        while (last + 1 < tokens.size() && tokens[last + 1].kind == Kind::Comment &&
               text.PositionOf(tokens[last + 1].span.begin).line ==
                   text.PositionOf(tokens[last].span.end).line + 1)
            ++last;
        folds.Add(tokens[i].span.begin, tokens[last].span.end, "comment");
        i = last;
    }
}

void AddConditions(const std::vector<SqxLsToken>& tokens, Folds& folds)
{
    std::vector<std::size_t> open;
    for (const SqxLsToken& token : tokens) {
        if (token.kind != Kind::Directive)
            continue;
        const std::size_t begin = token.text.find_first_not_of("# \t");
        const std::string_view word = token.text.substr(std::min(begin, token.text.size()));
        const bool isMiddle = word.starts_with("el");
        if ((isMiddle || word.starts_with("endif")) && !open.empty()) {
            folds.Add(open.back(), token.span.begin - 1, "region");
            open.pop_back();
        }
        if (isMiddle || word.starts_with("if"))
            open.push_back(token.span.begin);
    }
}

/// Returns the ranges that contain an offset, from the innermost to the outermost.
std::vector<SqxLsSpan> Enclosing(const SqxLsText& text, const std::vector<SqxLsToken>& tokens,
                                 const std::vector<std::size_t>& partners, std::size_t offset)
{
    std::vector<SqxLsSpan> spans;
    const auto add = [&](const SqxLsSpan& span) {
        const bool grows = spans.empty() || (span.begin <= spans.back().begin &&
                                             span.end >= spans.back().end && span != spans.back());
        if (span.begin <= offset && offset <= span.end && grows)
            spans.push_back(span);
    };
    for (const SqxLsToken& token : tokens)
        if (token.span.begin <= offset && offset <= token.span.end &&
            (spans.empty() || token.kind == Kind::Word || token.kind == Kind::Keyword))
            spans.assign(1, token.span);
    // Brackets that open later are further inside.
    for (std::size_t i = tokens.size(); i-- > 0;) {
        if (partners[i] <= i || tokens[i].span.end > offset ||
            tokens[partners[i]].span.begin < offset)
            continue;
        std::size_t begin = i + 1;  // the part between separators, such as a statement
        std::size_t end = partners[i];
        for (std::size_t k = i + 1; k < partners[i]; k = std::max(k, partners[k]) + 1) {
            const bool isBlock = tokens[k].text == "{" && partners[k] > k;
            const bool separates = tokens[k].text == ";" || tokens[k].text == "," || isBlock;
            const SqxLsToken& last = tokens[std::max(k, partners[k])];
            if (!separates)
                continue;
            if (last.span.end < offset || (last.span.end == offset && !isBlock))
                begin = std::max(k, partners[k]) + 1;
            else if (tokens[k].span.begin >= offset || isBlock) {
                end = std::max(k, partners[k]) + (tokens[k].text == "," ? 0 : 1);
                break;
            }
        }
        if (begin < end)
            add({tokens[begin].span.begin, tokens[end - 1].span.end});
        add({tokens[i].span.end, tokens[partners[i]].span.begin});
        add({tokens[i].span.begin, tokens[partners[i]].span.end});
    }
    add({0, text.Bytes().size()});
    return spans;
}

}  // namespace

SqxJson SqxLsFoldingRanges(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    const auto tokens = SqxLsTokensOf(text.Bytes());
    Folds folds(text);
    AddBrackets(tokens, folds);
    AddComments(text, tokens, folds);
    AddConditions(tokens, folds);
    return folds.Take();
}

SqxJson SqxLsSelectionRanges(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    const SqxJson& positions = SqxLsMember(params, "positions");
    if (!positions.is_array())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "'positions' must be an array");
    const auto tokens = SqxLsTokensOf(text.Bytes());
    const auto partners = SqxLsPartnersOf(tokens);
    SqxJson answer = SqxJson::array();
    for (const SqxJson& position : positions) {
        const auto spans =
            Enclosing(text, tokens, partners, text.OffsetOf(SqxLsReadPosition(position)));
        SqxJson range = nullptr;
        for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
            SqxJson inner = {{"range", SqxLsWriteRange(text, *span)}};
            if (!range.is_null())
                inner["parent"] = std::move(range);
            range = std::move(inner);
        }
        answer.push_back(std::move(range));
    }
    return answer;
}
