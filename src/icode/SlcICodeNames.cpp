#include "icode/SlcICodeNames.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <string_view>

#include "symbols/SlcHiddenVariables.h"

namespace {

/// Returns the shortest text that reads back as the same number; for infinite values and NaN, a
/// word after "#".
std::string NumberText(double value)
{
    if (!std::isfinite(value))
        return std::isnan(value) ? "#nan" : value < 0 ? "#-inf" : "#inf";
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

std::string ConstantText(const SlcLexType& constant)
{
    if (constant.IsString())
        return constant.GetString();
    if (constant.IsFloat())
        return NumberText(constant.GetFloat());
    if (constant.IsBool())
        return constant.GetBool() ? "true" : "false";
    return '#' + std::to_string(constant.GetInt());
}

/// Returns the name in the source of a predefined variable, whose operand has the accessor in
/// generated C++ as its name, such as `i_hiddens.GetCs()`. Adds `light_` for a variable of the
/// current light. Returns other names unchanged.
std::string SourceName(const std::string& name)
{
    if (name.find('.') == std::string::npos)
        return name;
    for (const auto& variable : SlcHiddenVariables::All())
        if (name == variable.accessor)
            return variable.name;
    for (const auto& ofLight : SlcHiddenVariables::AllOfIlluminance())
        if (name == ofLight.accessor)
            return std::string("light_") + ofLight.name;
    return name;
}

bool IsNumbered(std::string_view name, std::string_view prefix)
{
    return name.starts_with(prefix) && name.size() > prefix.size() &&
           std::isdigit(static_cast<unsigned char>(name[prefix.size()])) != 0;
}

/// True for the names of labels that the lowering makes, or code motion for a loop's head.
bool IsGenerated(const std::string& label)
{
    return IsNumbered(label, "L") || IsNumbered(label, "LHead");
}

}  // namespace

std::string SlcICodeNames::Of(const SlcLabel& label)
{
    return IsGenerated(label->Name()) ? Numbered('L', label->Name()) : label->Name();
}

std::string SlcICodeNames::Of(const SlcOperand& operand)
{
    if (operand->IsConst())
        return ConstantText(*operand);
    const std::string& name = operand->GetName();
    if (!IsTemporary(*operand))
        return SourceName(name);
    const bool isFlag = operand->GetType()->IsBoolType();
    return Numbered(!isFlag ? 't' : operand->IsUniform() ? 'u' : 'f', name);
}

bool SlcICodeNames::IsTemporary(const SlcLexType& operand)
{
    // A parameter of a shader may have such a name, too.
    return operand.IsIdent() && operand.GetStorage()->IsLocal() &&
           IsNumbered(operand.GetName(), "T") && operand.GetName().back() == '_';
}

std::string SlcICodeNames::Numbered(char kind, const std::string& name)
{
    auto& numbers = m_numbers[kind];
    return kind + std::to_string(numbers.emplace(name, numbers.size()).first->second);
}
