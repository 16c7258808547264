// The schema stands in docs/listing.md. It has a version, `k_version`: another one is due when what
// a program reads changes its meaning, not when something is added.
//
// Texts of a file may be no UTF-8, which JSON must be: what is no character becomes one that says
// so.
//
// Tested by tests/listing, which reads the objects with a reader that is not ours.

#include <cmath>

#include "sqxdump/SqxListing.h"

namespace {

using Facts = SqxShaderFacts;

constexpr int k_version = 1;
constexpr const char* k_null = "null";
constexpr const char* k_replacement = "\xEF\xBF\xBD";  // U+FFFD, for what is no character

/// How many bytes the character at the start of the text has; 0 if it is not well-formed UTF-8.
std::size_t CharacterSize(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < size)
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((byte(i) & 0xC0U) != 0x80)
            return 0;
    const bool isOverlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
    const bool isSurrogate = first == 0xED && byte(1) >= 0xA0;
    const bool isBeyond = first == 0xF4 && byte(1) >= 0x90;
    return isOverlong || isSurrogate || isBeyond ? 0 : size;
}

std::string Escaped(char c)
{
    static constexpr const char* k_digits = "0123456789abcdef";
    if (c == '"' || c == '\\')
        return {'\\', c};
    if (static_cast<unsigned char>(c) >= 0x20)
        return {c};
    const auto code = static_cast<unsigned char>(c);
    return {'\\', 'u', '0', '0', k_digits[code >> 4U], k_digits[code & 15U]};
}

std::string Text(std::string_view text)
{
    std::string json = "\"";
    while (!text.empty()) {
        const std::size_t size = CharacterSize(text);
        if (size == 1)
            json += Escaped(text[0]);
        else if (size == 0)
            json += k_replacement;
        else
            json += text.substr(0, size);
        text.remove_prefix(size == 0 ? 1 : size);
    }
    return json + '"';
}

std::string TextOrNull(std::string_view text)
{
    return text.empty() ? k_null : Text(text);
}

std::string Flag(std::optional<bool> flag)
{
    if (!flag)
        return k_null;
    return *flag ? "true" : "false";
}

/// JSON has no numbers beside the finite ones.
std::string Number(float number)
{
    return std::isfinite(number) ? SqxListedNumber(number) : Text(SqxListedNumber(number));
}

/// "[a,b,c]" of what `element` makes of each number below `count`.
template <class Element>
std::string List(std::size_t count, Element element)
{
    std::string json = "[";
    for (std::size_t i = 0; i < count; ++i)
        json.append(i == 0 ? "" : ",").append(element(i));
    return json + ']';
}

/// Its members, in the order in which they are added.
class Object {
public:
    Object& Add(const char* name, const std::string& json)
    {
        m_text.append(m_text.empty() ? "" : ",").append(Text(name)).append(":").append(json);
        return *this;
    }
    [[nodiscard]] std::string Json() const { return '{' + m_text + '}'; }

private:
    std::string m_text;
};

std::string Element(const QxHostValue& value, std::size_t element)
{
    if (value.type == QxValueType::String)
        return Text(value.texts[element]);
    const std::size_t width = QxFloatCount(value.type);
    const auto number = [&](std::size_t i) { return Number(value.numbers[element * width + i]); };
    return width == 1 ? number(0) : List(width, number);
}

std::string Value(const Facts::Parameter& parameter)
{
    if (!parameter.value)
        return k_null;
    const QxHostValue& value = *parameter.value;
    if (!parameter.arrayLength)
        return Element(value, 0);
    return List(value.Count(), [&](std::size_t i) { return Element(value, i); });
}

const char* DefaultName(Facts::Default defaultIs)
{
    switch (defaultIs) {
    case Facts::Default::Known:
        return "known";
    case Facts::Default::PerPoint:
        return "perPoint";
    case Facts::Default::ZeroOrPerPoint:
        return "zeroOrPerPoint";
    case Facts::Default::Unknown:
        break;
    }
    return "unknown";
}

std::string ParameterJson(const Facts::Parameter& parameter)
{
    const auto& length = parameter.arrayLength;
    return Object()
        .Add("name", Text(parameter.name))
        .Add("class", TextOrNull(SqxClassName(parameter)))
        .Add("detail", Text(parameter.varying ? "varying" : "uniform"))
        .Add("type", Text(QxTypeName(parameter.type)))
        .Add("arrayLength", length ? std::to_string(*length) : k_null)
        .Add("space", TextOrNull(parameter.space))
        .Add("output", Flag(parameter.output))
        .Add("default", Value(parameter))
        .Add("defaultIs", Text(DefaultName(parameter.defaultIs)))
        .Json();
}

std::string PredefinedJson(const Facts::Predefined& variable)
{
    return Object()
        .Add("name", Text(variable.name))
        .Add("read", Flag(variable.read))
        .Add("written", Flag(variable.written))
        .Json();
}

std::string FaultJson(const std::optional<Facts::Fault>& fault)
{
    if (!fault)
        return k_null;
    return Object()
        .Add("line", std::to_string(fault->line))
        .Add("message", Text(fault->message))
        .Json();
}

}  // namespace

std::string SqxListingJson(const SqxListed& listed, const std::vector<std::string>& wanted)
{
    const Facts& facts = listed.facts;
    const auto parameters = SqxWantedParameters(facts, wanted);
    const auto& libraries = facts.shadeopLibraries;
    const auto library = [&](std::size_t i) { return Text((*libraries)[i]); };
    const bool isByteCode = facts.kind == Facts::Kind::ByteCode;
    return Object()
               .Add("version", std::to_string(k_version))
               .Add("file", Text(listed.file))
               .Add("kind", Text(isByteCode ? "byte-code" : "shared object"))
               .Add("name", TextOrNull(listed.title))
               .Add("type", TextOrNull(facts.type))
               .Add("parameters",
                    List(parameters.size(),
                         [&](std::size_t i) { return ParameterJson(*parameters[i]); }))
               .Add("usesLights", Flag(facts.usesLights))
               .Add("tracesRays", Flag(facts.tracesRays))
               .Add("modifiesP", Flag(facts.modifiesP))
               .Add("predefined",
                    List(facts.predefined.size(),
                         [&](std::size_t i) { return PredefinedJson(facts.predefined[i]); }))
               .Add("shadeopLibraries", libraries ? List(libraries->size(), library) : k_null)
               .Add("fault", FaultJson(facts.fault))
               .Json() +
           '\n';
}
