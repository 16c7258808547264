#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sqx/SqxLayout.h"
#include "sqx/SqxNumbers.h"
#include "sqx/SqxType.h"

/// A byte-code file as a structure. In a file that was read completely, every number in code that
/// refers to an item of the file has been checked: the item exists. Lines are counted from 1.

/// The number of shader type codes, which begin with 0.
inline constexpr int k_sqxShaderTypes = 5;

/// Returns the name of a shader type code, such as "surface".
[[nodiscard]] const char* SqxShaderTypeName(int code);

/// How far a file was read: up to the end of this section.
enum class SqxSection { None, Head, Variables, Spaces, Initializers, Flags, Shadeops, Facts, Main };

/// Where a variable's value comes from, in this order: from the renderer; from the user or an
/// initializer; from code; from the file.
enum class SqxVariableKind { Predefined, Parameter, Local, Constant };

/// A variable or constant of the file; its number is its index in the shader's list.
struct SqxVariable {
    SqxVariableKind kind = SqxVariableKind::Local;
    std::string name;  // for predefined variables and parameters
    SqxType type = SqxType::Float;
    bool uniform = true;
    int size = 1;                   // length of an array; 1 for any other variable
    bool reference = false;         // refers to an element of an array
    double number = 0;              // value of a float, int or bool constant
    std::string text;               // string constant with quotes; for a parameter: detail and type
    std::string space;              // of a parameter's default value, without quotes
    bool output = false;            // an output parameter
    bool needsObjectSpace = false;  // a parameter whose default value names the object space
    int line = 0;
};

/// One instruction of a block. Its values follow its number in the block's code.
struct SqxInstruction {
    const SqxLayout* layout = nullptr;
    std::size_t position = 0;  // in the code of the block
    std::size_t count = 0;     // number of values
};

/// A code block: the numbers as in the file, and where instructions begin among them.
struct SqxBlock {
    // Access to the instructions of this block; values are counted from 0.

    /// Returns value `i` of an instruction.
    [[nodiscard]] int Value(const SqxInstruction& instruction, std::size_t i) const
    {
        return code[instruction.position + 1 + i];
    }
    /// Returns the operation of an instruction, without its form.
    [[nodiscard]] static SqxPrimitive Primitive(const SqxInstruction& instruction)
    {
        return instruction.layout->primitive;
    }
    /// Returns the letter in `SqxLayout::operands` for value `i`; 'r' for the values of a list.
    [[nodiscard]] static char Letter(const SqxInstruction& instruction, std::size_t i);
    /// Returns the index of the first instruction that starts at a position or after it; the number
    /// of instructions if there is none. O(log n).
    [[nodiscard]] std::size_t IndexOf(std::size_t position) const;

    /// Returns the line of an instruction's number.
    [[nodiscard]] int Line(const SqxInstruction& instruction) const
    {
        return line + static_cast<int>(instruction.position);
    }
    /// Returns the line of value `i`.
    [[nodiscard]] int Line(const SqxInstruction& instruction, std::size_t i) const
    {
        return Line(instruction) + 1 + static_cast<int>(i);
    }
    /// Returns a text such as "Instruction GOTO at 12", for messages.
    [[nodiscard]] static std::string Place(const SqxInstruction& instruction);
    /// Returns a message that value `i` does not refer to anything, with the place.
    [[nodiscard]] std::string BadValue(const SqxInstruction& instruction, std::size_t i) const;

    int line = 0;  // of the first number in `code`
    std::vector<std::int16_t> code;
    std::vector<SqxInstruction> instructions;  // sorted by position
};

/// The code that computes the default value of a parameter.
struct SqxInitializer {
    std::size_t parameter = 0;  // index among the parameters
    bool perPoint = false;      // the value depends on shading data
    SqxBlock code;
    int result = -1;  // number of the variable that holds the value afterwards
    int line = 0;
    int resultLine = 0;
};

/// A function of a shadeop library, as the file names it.
struct SqxDSOFunction {
    std::size_t library = 0;  // index in `SqxShader::libraries`
    std::string init;
    std::string method;
    std::string cleanup;
    int line = 0;
};

/// The contents of a file. Parts that were not read are empty, 0 or false.
struct SqxShader {
    SqxSection reached = SqxSection::None;
    int shaderType = 0;
    std::vector<SqxVariable> variables;  // by number: of the main block, then of initializers
    std::size_t predefinedCount = 0;     // predefined variables come first
    std::size_t parameterCount = 0;      // then parameters
    std::size_t mainCount = 0;           // variables that the main block may use
    std::vector<std::string> spaces;     // without quotes; "object" and "shader" come first
    std::vector<SqxInitializer> initializers;
    std::vector<std::string> libraries;
    std::vector<SqxDSOFunction> functions;
    bool usesRaytracing = false;
    bool modifiesP = false;
    SqxBlock main;

    /// Returns the parameter with the given index among the parameters.
    [[nodiscard]] const SqxVariable& Parameter(std::size_t i) const
    {
        return variables[predefinedCount + i];
    }
    /// Returns the name of the section of an initializer in messages.
    [[nodiscard]] std::string SectionOf(const SqxInitializer& initializer) const
    {
        return "initializer of " + Parameter(initializer.parameter).name;
    }
};
