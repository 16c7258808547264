// The text and the JSON object are written from the same facts, so that they cannot contradict each
// other. Facts that a file does not contain are listed as unknown. A default value of zero in a
// loaded shared object is listed as ambiguous: such an object also has zero in place of values that
// depend on the shading point.
//
// Tested by tests/run/SqxDumpToolTest.cpp and tests/listing.

#include "sqxdump/SqxListing.h"

#include <algorithm>

#include "sqx/SqxNumberText.h"

namespace {

using Facts = SqxShaderFacts;
using Row = std::vector<std::string>;

constexpr const char* k_unknown = "?";

/// Returns a table whose columns are as wide as their longest cells. Omits empty columns, and
/// blanks at the ends of lines.
std::string TableText(const std::vector<Row>& rows)
{
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (widths[i] == 0)
                continue;
            line.append("  ").append(row[i]).append(widths[i] - row[i].size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

/// Returns the text as a string literal of the shading language.
std::string QuotedText(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '\n')
            quoted += "\\n";
        else if (c == '\t')
            quoted += "\\t";
        else if (c == '"' || c == '\\')
            quoted.append("\\").append(1, c);
        else
            quoted += c;
    }
    return quoted + '"';
}

std::string ElementText(const QxHostValue& value, std::size_t element)
{
    if (value.type == QxValueType::String)
        return QuotedText(value.texts[element]);
    const std::size_t width = QxFloatCount(value.type);
    std::string text;
    for (std::size_t i = element * width; i < (element + 1) * width; ++i)
        text.append(text.empty() ? "" : " ").append(SqxNumberText(value.numbers[i]));
    return text;
}

std::string ValueText(const QxHostValue& value)
{
    std::string text;
    for (std::size_t i = 0; i < value.Count(); ++i)
        text.append(i == 0 ? "" : ", ").append(ElementText(value, i));
    return text;
}

/// Returns the value, with " in rgb" after a color that is given in another space, since files
/// contain all colors in rgb.
std::string KnownText(const Facts::Parameter& parameter)
{
    const bool isElsewhere = parameter.type == QxValueType::Color && !parameter.space.empty() &&
                             parameter.space != "rgb";
    return ValueText(*parameter.value) + (isElsewhere ? " in rgb" : "");
}

std::string DefaultText(const Facts::Parameter& parameter)
{
    switch (parameter.defaultIs) {
    case Facts::Default::Known:
        return KnownText(parameter);
    case Facts::Default::PerPoint:
        return "depends on the shading point";
    case Facts::Default::ZeroOrPerPoint:
        return KnownText(parameter) + " or depends on the shading point";
    case Facts::Default::Unknown:
        break;
    }
    return k_unknown;
}

Row ParameterRow(const Facts::Parameter& parameter)
{
    std::string type = QxTypeName(parameter.type);
    if (parameter.arrayLength)
        type += '[' + std::to_string(*parameter.arrayLength) + ']';
    const std::string itsClass = SqxClassName(parameter);
    return {parameter.name,
            itsClass.empty() ? k_unknown : itsClass,
            parameter.varying ? "varying" : "uniform",
            std::move(type),
            parameter.space.empty() ? "" : QuotedText(parameter.space),
            DefaultText(parameter)};
}

std::string YesOrNo(std::optional<bool> fact)
{
    if (!fact)
        return k_unknown;
    return *fact ? "yes" : "no";
}

std::string Joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text.empty() ? "none" : text;
}

/// Returns the names of the variables for which the fact is true, and then, each with a "?", those
/// for which it is unknown; "none" if there are neither.
std::string NamesWith(const std::vector<Facts::Predefined>& variables,
                      std::optional<bool> Facts::Predefined::*fact)
{
    std::vector<std::string> names;
    for (const Facts::Predefined& variable : variables)
        if ((variable.*fact).value_or(false))
            names.push_back(variable.name);
    for (const Facts::Predefined& variable : variables)
        if (!(variable.*fact))
            names.push_back(variable.name + k_unknown);
    return Joined(names);
}

std::vector<Row> ShaderRows(const Facts& facts)
{
    std::vector<Row> rows = {{"uses lights", YesOrNo(facts.usesLights)},
                             {"traces rays", YesOrNo(facts.tracesRays)},
                             {"modifies P", YesOrNo(facts.modifiesP)}};
    // A loaded shared object does not say which variables are read and which are written.
    const bool areKnown = facts.kind == Facts::Kind::ByteCode ||
                          std::ranges::all_of(facts.predefined, [](const auto& variable) {
                              return variable.read.has_value();
                          });
    if (areKnown) {
        rows.push_back({"reads", NamesWith(facts.predefined, &Facts::Predefined::read)});
        rows.push_back({"writes", NamesWith(facts.predefined, &Facts::Predefined::written)});
    } else {
        std::vector<std::string> names;
        for (const Facts::Predefined& variable : facts.predefined)
            names.push_back(variable.name);
        rows.push_back({"reads or writes", Joined(names)});
    }
    rows.push_back({"shadeop libraries",
                    facts.shadeopLibraries ? Joined(*facts.shadeopLibraries) : k_unknown});
    return rows;
}

}  // namespace

std::string SqxListingText(const SqxListed& listed, const std::vector<std::string>& wanted)
{
    const Facts& facts = listed.facts;
    if (facts.type.empty())
        return {};
    std::string text = facts.type + (listed.title.empty() ? "" : ' ' + listed.title) + '\n';
    std::vector<Row> rows = {{"Parameter", "Class", "Detail", "Type", "Space", "Default"}};
    for (const Facts::Parameter* parameter : SqxWantedParameters(facts, wanted))
        rows.push_back(ParameterRow(*parameter));
    if (rows.size() > 1)
        text += '\n' + TableText(rows);
    if (wanted.empty())
        text += '\n' + TableText(ShaderRows(facts));
    return text;
}

std::vector<const SqxShaderFacts::Parameter*>
SqxWantedParameters(const SqxShaderFacts& facts, const std::vector<std::string>& wanted)
{
    std::vector<const Facts::Parameter*> parameters;
    for (const Facts::Parameter& parameter : facts.parameters)
        if (wanted.empty() || std::ranges::find(wanted, parameter.name) != wanted.end())
            parameters.push_back(&parameter);
    return parameters;
}

const char* SqxClassName(const SqxShaderFacts::Parameter& parameter)
{
    if (!parameter.output)
        return "";
    return *parameter.output ? "output" : "input";
}
