#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sqx/SqxLayout.h"
#include "sqx/SqxNumbers.h"
#include "sqx/SqxType.h"

/// A byte-code file as a structure. Every number in the code of a file that was read whole has been
/// checked: it refers to something that the file holds. Lines are those of the file, from 1.

/// Name of a shader type code, 0 to 4: "surface". No other code may be asked for.
[[nodiscard]] const char* SqxShaderTypeName(int code);

/// How far a file was read: up to the end of this section.
enum class SqxSection { None, Head, Variables, Spaces, Initializers, Flags, Shadeops, Facts, Main };

/// Where a variable's value comes from: the grid, the user, the code, the file.
enum class SqxVariableKind { Predefined, Parameter, Local, Constant };

/// A variable or constant of the file; its number is its place in the shader's list.
struct SqxVariable {
    SqxVariableKind kind = SqxVariableKind::Local;
    std::string name;  // of a predefined variable or parameter
    SqxType type = SqxType::Float;
    bool uniform = true;
    int size = 1;            // of an array
    bool reference = false;  // stands for an element of an array
    double number = 0;       // value of a float, int or bool constant
    std::string text;        // of a string constant, with quotes; of a parameter: detail and type
    std::string space;       // of a parameter, without quotes
    bool output = false;     // a parameter that the shader hands back
    bool needsObjectSpace = false;  // a parameter whose default value is given in object space
    int line = 0;
};

/// One instruction of a block. Its values stand behind its number in the block's code.
struct SqxInstruction {
    const SqxLayout* layout = nullptr;
    std::size_t position = 0;  // in the code of the block
    std::size_t count = 0;     // of values
};

/// A code block: the numbers as they stand, and where instructions begin among them.
struct SqxBlock {
    // Of the instructions of this block, whose values `i` are counted from 0.

    /// Value `i` of an instruction.
    [[nodiscard]] int Value(const SqxInstruction& instruction, std::size_t i) const
    {
        return code[instruction.position + 1 + i];
    }
    /// The number of an instruction, for comparison with the marks.
    [[nodiscard]] SqxMark Mark(const SqxInstruction& instruction) const
    {
        return static_cast<SqxMark>(code[instruction.position]);
    }
    /// The letter of the layout that value `i` belongs to.
    [[nodiscard]] static char Letter(const SqxInstruction& instruction, std::size_t i);
    /// The instruction that starts at a position, or else the first one behind it; the count of
    /// instructions for the end. O(log n).
    [[nodiscard]] std::size_t IndexOf(std::size_t position) const;

    /// Line of an instruction's number.
    [[nodiscard]] int Line(const SqxInstruction& instruction) const
    {
        return line + static_cast<int>(instruction.position);
    }
    /// Line of value `i`.
    [[nodiscard]] int Line(const SqxInstruction& instruction, std::size_t i) const
    {
        return Line(instruction) + 1 + static_cast<int>(i);
    }
    /// "Instruction GOTO at 12", for messages.
    [[nodiscard]] static std::string Place(const SqxInstruction& instruction);
    /// The place, and that value `i` refers to nothing.
    [[nodiscard]] std::string BadValue(const SqxInstruction& instruction, std::size_t i) const;

    int line = 0;  // of the first value
    std::vector<std::int16_t> code;
    std::vector<SqxInstruction> instructions;  // in the order of their positions
};

/// Computes the default value of a parameter.
struct SqxInitializer {
    std::size_t parameter = 0;  // by position among the parameters
    bool perPoint = false;      // depends on the shading context
    SqxBlock code;
    int result = -1;  // number of the variable that then holds the value
    int line = 0;
    int resultLine = 0;
};

/// A function of a shadeop library, as the file names it.
struct SqxDSOFunction {
    std::size_t library = 0;
    std::string init;
    std::string method;
    std::string cleanup;
    int line = 0;
};

/// All of a file. What was not reached is empty or 0.
struct SqxShader {
    SqxSection reached = SqxSection::None;
    int shaderType = 0;
    std::vector<SqxVariable> variables;  // by number: those of the main block, then initializers'
    std::size_t predefinedCount = 0;     // they come first
    std::size_t parameterCount = 0;      // and stand behind them
    std::size_t mainCount = 0;           // variables that the main block may name
    std::vector<std::string> spaces;     // without quotes; "object" and "shader" come first
    std::vector<SqxInitializer> initializers;
    std::vector<std::string> libraries;
    std::vector<SqxDSOFunction> functions;
    bool usesRaytracing = false;
    bool modifiesP = false;
    SqxBlock main;

    /// By position among the parameters.
    [[nodiscard]] const SqxVariable& Parameter(std::size_t i) const
    {
        return variables[predefinedCount + i];
    }
    /// The name of the section that holds it, as messages have it.
    [[nodiscard]] std::string SectionOf(const SqxInitializer& initializer) const
    {
        return "initializer of " + Parameter(initializer.parameter).name;
    }
};
