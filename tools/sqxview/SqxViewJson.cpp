// As little JSON as the page needs. Numbers are written so that they read back the same.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewJson.h"

#include <cmath>

#include "sqxshade/SqxShadeCommand.h"

std::string SqxJsonText(std::string_view text)
{
    constexpr char k_digits[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (quoted += '\\') += c;
        else if (c == '\n')
            quoted += "\\n";
        else if (byte < 0x20 || byte == 0x7F)
            ((quoted += "\\u00") += k_digits[byte >> 4]) += k_digits[byte & 15];
        else
            quoted += c;
    }
    return quoted + '"';
}

std::string SqxJsonNumber(float number)
{
    return std::isfinite(number) ? SqxNumberText(number) : "null";
}

std::string SqxJsonArray(const std::vector<std::string>& values)
{
    std::string text = "[";
    for (const std::string& value : values)
        text.append(text.size() > 1 ? "," : "").append(value);
    return text + "]";
}

std::string SqxJsonNumbers(const std::vector<float>& numbers)
{
    std::vector<std::string> values;
    values.reserve(numbers.size());
    for (const float number : numbers)
        values.push_back(SqxJsonNumber(number));
    return SqxJsonArray(values);
}

SqxJsonObject& SqxJsonObject::Add(std::string_view name, std::string_view value)
{
    if (!m_members.empty())
        m_members += ',';
    m_members += SqxJsonText(name);
    m_members.append(":").append(value);
    return *this;
}

SqxJsonObject& SqxJsonObject::AddText(std::string_view name, std::string_view text)
{
    return Add(name, SqxJsonText(text));
}

SqxJsonObject& SqxJsonObject::AddBool(std::string_view name, bool value)
{
    return Add(name, value ? "true" : "false");
}
