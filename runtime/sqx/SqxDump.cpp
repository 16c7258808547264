// The text is meant for reading and for comparison: instead of its number, an item that is not a
// local is shown by its name or value, and an item missing from a damaged file as "?" and its
// number. Positions are kept, since jumps refer to them.
//
// Tested by the dumps of tests/golden and by tests/backends/SqxReaderTest.cpp.

#include "sqx/SqxDump.h"

#include <algorithm>

#include "sqx/SqxNumberText.h"
#include "sqx/SqxNumbers.h"

namespace {

/// Replaces newlines, which a string of the source may contain.
std::string OnOneLine(std::string text)
{
    for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2)
        text.replace(i, 1, "\\n");
    return text;
}

std::string ConstantText(const SqxVariable& constant)
{
    if (constant.type == SqxType::String)
        return OnOneLine(constant.text);
    if (constant.type == SqxType::Bool)
        return constant.number != 0 ? "true" : "false";
    return SqxNumberText(static_cast<float>(constant.number));
}

/// Formats "varying color[3]" or "uniform float reference".
std::string TypeText(const SqxVariable& variable)
{
    std::string text = variable.uniform ? "uniform " : "varying ";
    text += SqxTypeName(variable.type);
    if (variable.size != 1)
        text += '[' + std::to_string(variable.size) + ']';
    if (variable.reference)
        text += " reference";
    return text;
}

/// Returns the text for an item missing from a damaged file.
std::string UnknownText(std::size_t number)
{
    return '?' + std::to_string(number);
}

std::string ValueText(const SqxShader& shader, char letter, int value)
{
    const auto number = static_cast<std::size_t>(value);
    switch (letter) {
    case 'j':
        return "->" + std::to_string(value);
    case 's':
        return '"' + shader.spaces[number] + '"';
    case 'd':
        return number < shader.functions.size() ? shader.functions[number].method
                                                : UnknownText(number);
    case 'i':
        return '=' + std::to_string(value);
    case 'n':
        return '(' + std::to_string(value) + ')';
    case 'c':
        return "if " + SqxVariableText(shader, number);
    default:
        return SqxVariableText(shader, number);
    }
}

constexpr std::size_t k_deepestIndent = 20;  // levels; deeper brackets are not indented further

/// Returns a heading, and one line for each variable of this kind in a range of numbers; empty if
/// there is no such variable.
std::string VariablesText(const SqxShader& shader, SqxVariableKind kind, const char* heading,
                          std::size_t first, std::size_t end)
{
    std::string text;
    for (std::size_t i = first; i < end; ++i) {
        const SqxVariable& variable = shader.variables[i];
        if (variable.kind != kind)
            continue;
        text += "  " + std::to_string(i) + "  " + SqxVariableText(shader, i);
        if (kind == SqxVariableKind::Parameter)
            text += "  " + variable.text;
        else
            text += "  " + TypeText(variable);
        text += '\n';
    }
    return text.empty() ? text : std::string(heading) + '\n' + text;
}

std::string InitializerText(const SqxShader& shader, const SqxInitializer& initializer)
{
    std::string text = shader.SectionOf(initializer);
    text += initializer.perPoint ? " (per point)\n" : "\n";
    text += SqxDumpBlock(shader, initializer.code);
    if (initializer.result >= 0)
        text += "  value " + SqxVariableText(shader, static_cast<std::size_t>(initializer.result)) +
                '\n';
    return text;
}

std::string SpacesText(const SqxShader& shader)
{
    std::string text = "spaces";
    for (const std::string& space : shader.spaces)
        text += " \"" + space + '"';
    return text + '\n';
}

std::string LibrariesText(const SqxShader& shader)
{
    std::string text;
    for (const SqxDSOFunction& function : shader.functions)
        text += "shadeop " + function.method + " of " + shader.libraries[function.library] + '\n';
    return text;
}

}  // namespace

std::string SqxVariableText(const SqxShader& shader, std::size_t number)
{
    if (number >= shader.variables.size())
        return UnknownText(number);
    const SqxVariable& variable = shader.variables[number];
    switch (variable.kind) {
    case SqxVariableKind::Predefined:
    case SqxVariableKind::Parameter:
        return variable.name;
    case SqxVariableKind::Local:
        return '%' + std::to_string(number);
    case SqxVariableKind::Constant:
        return ConstantText(variable);
    }
    return {};
}

std::string SqxDumpBlock(const SqxShader& shader, const SqxBlock& block)
{
    std::string text;
    std::size_t depth = 0;
    for (const SqxInstruction& instruction : block.instructions) {
        const SqxPrimitive mark = SqxBlock::Primitive(instruction);
        if (SqxClosesBracket(mark) && depth > 0)
            --depth;
        const std::string position = std::to_string(instruction.position);
        text.append(6 - std::min<std::size_t>(position.size(), 6), ' ').append(position);
        text.append(2 + 2 * std::min(depth, k_deepestIndent), ' ').append(instruction.layout->name);
        for (std::size_t i = 0; i < instruction.count; ++i)
            text += ' ' + ValueText(shader, SqxBlock::Letter(instruction, i),
                                    block.Value(instruction, i));
        text += '\n';
        if (SqxOpensBracket(mark))
            ++depth;
    }
    return text;
}

std::string SqxDump(const SqxShader& shader)
{
    if (shader.reached == SqxSection::None)
        return {};
    std::string text = std::string(SqxShaderTypeName(shader.shaderType)) + " shader\n";
    using Kind = SqxVariableKind;
    const std::size_t main = shader.mainCount;
    text += VariablesText(shader, Kind::Predefined, "predefined", 0, main);
    text += VariablesText(shader, Kind::Parameter, "parameters", 0, main);
    text += VariablesText(shader, Kind::Local, "locals", 0, main);
    text += VariablesText(shader, Kind::Constant, "constants", 0, main);
    if (shader.reached >= SqxSection::Spaces)
        text += SpacesText(shader);
    text +=
        VariablesText(shader, Kind::Local, "locals of initializers", main, shader.variables.size());
    for (const SqxInitializer& initializer : shader.initializers)
        text += InitializerText(shader, initializer);
    text += LibrariesText(shader);
    if (shader.reached < SqxSection::Shadeops)
        return text;
    if (shader.reached >= SqxSection::Facts) {
        text += std::string("traces rays: ") + (shader.usesRaytracing ? "yes" : "no") + '\n';
        text += std::string("modifies P: ") + (shader.modifiesP ? "yes" : "no") + '\n';
    }
    return text + "main\n" + SqxDumpBlock(shader, shader.main);
}

std::string SqxDumpSection(const SqxShader& shader, std::string_view section)
{
    if (section == "main")
        return shader.reached < SqxSection::Shadeops ? ""
                                                     : "main\n" + SqxDumpBlock(shader, shader.main);
    for (const SqxInitializer& initializer : shader.initializers)
        if (shader.Parameter(initializer.parameter).name == section)
            return InitializerText(shader, initializer);
    return {};
}
