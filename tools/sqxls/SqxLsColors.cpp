// Tested by tests/sqxls/SqxLsActionsTest.cpp.

#include "sqxls/SqxLsColors.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "shading/QxColorSpaces.h"
#include "sqxls/SqxLsTokens.h"

namespace {

using Kind = SqxLsToken::Kind;

/// Returns the number with at most three decimals: a color picker cannot distinguish more.
std::string NumberText(double number)
{
    const long thousandths = std::lround(number * 1000);
    const long size = std::labs(thousandths);
    std::string text = (thousandths < 0 ? "-" : "") + std::to_string(size / 1000);
    if (size % 1000 != 0) {
        const std::string digits = std::to_string(1000 + size % 1000).substr(1);
        text += "." + digits.substr(0, digits.find_last_not_of('0') + 1);
    }
    return text;
}

double ComponentIn(const SqxJson& color, const char* name)
{
    const SqxJson& component = SqxLsMember(color, name);
    if (!component.is_number())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "A color has three numbers");
    return std::clamp(component.get<double>(), 0.0, 1.0);
}

/// Returns the color space that a token names, without its quotes.
std::string SpaceOf(std::string_view token)
{
    return token.size() < 2 ? std::string() : std::string(token.substr(1, token.size() - 2));
}

/// A color whose components are written as numbers.
struct Written {
    std::string space = "rgb";
    float numbers[3] = {};
    std::size_t end = 0;  // index after its last token; 0 if it is not such a color
};

/// Reads a color from the tokens after the word `color`; `at` is the index of the first of them.
Written ReadColor(const std::vector<SqxLsToken>& tokens, std::size_t at)
{
    const auto is = [&](std::string_view text) {
        return at < tokens.size() && tokens[at].text == text;
    };
    Written color;
    if (at < tokens.size() && tokens[at].kind == Kind::Text)
        color.space = SpaceOf(tokens[at++].text);
    constexpr std::string_view k_before[] = {"(", ",", ","};
    for (std::size_t i = 0; i < std::size(k_before); ++i) {
        if (!is(k_before[i]))
            return {};
        ++at;
        const float sign = is("-") ? -1 : 1;
        at += is("-") ? 1 : 0;
        if (at >= tokens.size() || tokens[at].kind != Kind::Number)
            return {};
        color.numbers[i] = sign * std::strtof(std::string(tokens[at++].text).c_str(), nullptr);
    }
    if (!is(")") || !QxIsColorSpace(color.space.c_str()))
        return {};
    color.end = at + 1;
    return color;
}

double Shown(float component)
{
    return std::isfinite(component) ? std::clamp(component, 0.0F, 1.0F) : 0;
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
        const Written written = ReadColor(tokens, i + 1);
        if (written.end == 0)
            continue;
        const QxRGBColor rgb = QxColorToRgb(
            {written.numbers[0], written.numbers[1], written.numbers[2]}, written.space.c_str());
        colors.push_back({{"range", SqxLsWriteRange(text, {tokens[i].span.begin,
                                                           tokens[written.end - 1].span.end})},
                          {"color",
                           {{"red", Shown(rgb.r)},
                            {"green", Shown(rgb.g)},
                            {"blue", Shown(rgb.b)},
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
    const std::size_t quote = label.find('"');
    const std::string space =
        quote == std::string::npos ? "rgb" : label.substr(quote + 1, label.rfind('"') - quote - 1);
    const QxRGBColor there = QxColorFromRgb({static_cast<float>(ComponentIn(color, "red")),
                                             static_cast<float>(ComponentIn(color, "green")),
                                             static_cast<float>(ComponentIn(color, "blue"))},
                                            space.c_str());
    label +=
        "(" + NumberText(there.r) + ", " + NumberText(there.g) + ", " + NumberText(there.b) + ")";
    SqxJson presentations = SqxJson::array();
    presentations.push_back({{"label", label}});
    return presentations;
}
