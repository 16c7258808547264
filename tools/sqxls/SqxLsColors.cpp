// Tested by tests/sqxls/SqxLsActionsTest.cpp.

#include "sqxls/SqxLsColors.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "sqxls/SqxLsTokens.h"

namespace {

using Kind = SqxLsToken::Kind;

/// In as few digits as an editor's picker can tell apart.
std::string NumberText(double number)
{
    const long thousandths = std::lround(std::clamp(number, 0.0, 1.0) * 1000);
    std::string text = std::to_string(thousandths / 1000);
    if (thousandths % 1000 != 0) {
        const std::string digits = std::to_string(1000 + thousandths % 1000).substr(1);
        text += "." + digits.substr(0, digits.find_last_not_of('0') + 1);
    }
    return text;
}

double ComponentIn(const SqxJson& color, const char* name)
{
    const SqxJson& component = SqxLsMember(color, name);
    if (!component.is_number())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "A color has three numbers");
    return component.get<double>();
}

}  // namespace

SqxJson SqxLsDocumentColors(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    const auto tokens = SqxLsTokensOf(text.Bytes());
    SqxJson colors = SqxJson::array();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].text != "color")
            continue;
        std::size_t at = i + 1;
        if (at < tokens.size() && tokens[at].text == "\"rgb\"")
            ++at;
        constexpr std::string_view k_shape[] = {"(", "", ",", "", ",", "", ")"};
        double numbers[3] = {};
        std::size_t part = 0;
        for (; part < std::size(k_shape) && at + part < tokens.size(); ++part) {
            const SqxLsToken& token = tokens[at + part];
            if (part % 2 == 1 ? token.kind != Kind::Number : token.text != k_shape[part])
                break;
            if (part % 2 == 1)
                numbers[part / 2] =
                    std::clamp(std::strtod(std::string(token.text).c_str(), nullptr), 0.0, 1.0);
        }
        if (part == std::size(k_shape))
            colors.push_back(
                {{"range", SqxLsWriteRange(text, {tokens[i].span.begin, tokens[at + 6].span.end})},
                 {"color",
                  {{"red", numbers[0]},
                   {"green", numbers[1]},
                   {"blue", numbers[2]},
                   {"alpha", 1}}}});
    }
    return colors;
}

SqxJson SqxLsColorPresentations(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    const std::string_view now = text.Part(SqxLsReadRange(SqxLsMember(params, "range"), text));
    const SqxJson& color = SqxLsMember(params, "color");
    const std::size_t head = now.find('(');
    std::string label(head == std::string_view::npos ? "color " : now.substr(0, head));
    label += "(" + NumberText(ComponentIn(color, "red")) + ", " +
             NumberText(ComponentIn(color, "green")) + ", " +
             NumberText(ComponentIn(color, "blue")) + ")";
    SqxJson presentations = SqxJson::array();
    presentations.push_back({{"label", label}});
    return presentations;
}
