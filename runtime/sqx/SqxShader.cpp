// Names of codes, access to the values of instructions, and messages about them. If the values of
// an instruction end with a list, the letters of its layout end with a star for the whole list.
// Instructions are sorted by position, so a position is found by binary search.

#include "sqx/SqxShader.h"

#include <algorithm>

const char* SqxTypeName(SqxType type)
{
    switch (type) {
    case SqxType::Float:
        return "float";
    case SqxType::Point:
        return "point";
    case SqxType::Color:
        return "color";
    case SqxType::String:
        return "string";
    case SqxType::Int:
        return "int";
    case SqxType::Matrix:
        return "matrix";
    case SqxType::Vector:
        return "vector";
    case SqxType::Normal:
        return "normal";
    case SqxType::Bool:
        return "bool";
    }
    return "";
}

const char* SqxShaderTypeName(int code)
{
    static constexpr const char* names[] = {"surface", "displacement", "volume", "light", "imager"};
    static_assert(std::size(names) == k_sqxShaderTypes);
    return names[code];
}

char SqxBlock::Letter(const SqxInstruction& instruction, std::size_t i)
{
    // The star, always last, stands for all values from its position on.
    const std::string_view operands = instruction.layout->operands;
    const char letter = operands[std::min(i, operands.size() - 1)];
    return letter == '*' ? 'r' : letter;
}

std::size_t SqxBlock::IndexOf(std::size_t position) const
{
    const auto found = std::lower_bound(
        instructions.begin(), instructions.end(), position,
        [](const SqxInstruction& code, std::size_t at) { return code.position < at; });
    return static_cast<std::size_t>(found - instructions.begin());
}

std::string SqxBlock::Place(const SqxInstruction& instruction)
{
    return "Instruction " + std::string(instruction.layout->name) + " at " +
           std::to_string(instruction.position);
}

std::string SqxBlock::BadValue(const SqxInstruction& instruction, std::size_t i) const
{
    return Place(instruction) + " has the bad value " + std::to_string(Value(instruction, i));
}
