// The sections of the file in their order, and then the instructions in the blocks of numbers.

#include "sqx/SqxReader.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "sqx/SqxFileHead.h"
#include "sqx/SqxPredefined.h"

namespace {

constexpr int k_highestShaderType = 4;
constexpr std::streamsize k_readSize = 1 << 16;

SqxType ReadType(SqxCursor& cursor)
{
    const int code = cursor.ReadInt("Type");
    for (const SqxType type :
         {SqxType::Float, SqxType::Point, SqxType::Color, SqxType::String, SqxType::Int,
          SqxType::Matrix, SqxType::Vector, SqxType::Normal, SqxType::Bool})
        if (static_cast<int>(type) == code)
            return type;
    cursor.Fail("Unknown type " + std::to_string(code));
}

const SqxPredefined* FindPredefined(std::string_view name)
{
    for (const SqxPredefined& row : k_sqxPredefined)
        if (row.name == name)
            return &row;
    return nullptr;
}

}  // namespace

bool SqxReader::ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text;
    std::vector<char> part(k_readSize);
    while (file.read(part.data(), k_readSize) || file.gcount() > 0)
        text.append(part.data(), static_cast<std::size_t>(file.gcount()));
    if (!file.is_open() || file.bad()) {
        m_message = std::strerror(errno);
        return false;
    }
    return Read(text);
}

bool SqxReader::Read(std::string_view text)
{
    m_shader = SqxShader();
    SqxCursor cursor(text);
    try {
        ReadHeader(cursor);
        cursor.Expect("");
        ReadVariables(cursor);
        cursor.Expect("");
        ReadSpaces(cursor);
        cursor.Expect("");
        ReadInitializers(cursor, false);
        ReadInitializers(cursor, true);
        cursor.Expect("");
        ReadParameterFlags(cursor, &SqxVariable::needsObjectSpace);
        cursor.Expect("");
        ReadParameterFlags(cursor, &SqxVariable::output);
        cursor.Expect("");
        ReadLibraries(cursor);
        cursor.Expect("");
        m_shader.usesRaytracing = cursor.ReadBoolLine("Ray tracing flag");
        m_shader.modifiesP = cursor.ReadBoolLine("P modified flag");
        ReadBlock(cursor, m_shader.main, m_shader.mainCount);
        cursor.ExpectEnd();
        CheckShadeops(cursor, m_shader.main);
        for (const SqxInitializer& initializer : m_shader.initializers)
            CheckShadeops(cursor, initializer.code);
    } catch (const SqxMalformed&) {
        m_message = cursor.Message();
        return false;
    }
    return true;
}

void SqxReader::ReadHeader(SqxCursor& cursor)
{
    for (const std::string_view line : k_sqxFileHead)
        cursor.Expect(line);
    m_shader.shaderType = cursor.ReadCountLine("Shader type");
    if (m_shader.shaderType > k_highestShaderType)
        cursor.Fail("Unknown shader type " + std::to_string(m_shader.shaderType));
}

void SqxReader::ReadVariables(SqxCursor& cursor)
{
    const int total = cursor.ReadCountLine("Number of variables");
    const int predefined = cursor.ReadCountLine("Number of predefined variables");
    for (int i = 0; i < predefined; ++i)
        ReadPredefined(cursor);
    m_shader.predefinedCount = m_shader.variables.size();
    const int parameters = cursor.ReadCountLine("Number of parameters");
    for (int i = 0; i < parameters; ++i)
        ReadParameter(cursor);
    m_shader.parameterCount = static_cast<std::size_t>(parameters);
    ReadLocals(cursor);
    ReadConstants(cursor);
    m_shader.mainCount = m_shader.variables.size();
    if (m_shader.mainCount != static_cast<std::size_t>(total))
        cursor.Fail("The sections hold another number of variables than " + std::to_string(total));
}

void SqxReader::ReadPredefined(SqxCursor& cursor)
{
    SqxVariable variable;
    variable.kind = SqxVariableKind::Predefined;
    variable.name = cursor.ReadWord("Predefined variable");
    const SqxPredefined* row = FindPredefined(variable.name);
    if (!row)
        cursor.Fail("Unknown predefined variable " + variable.name);
    variable.type = row->type;
    variable.uniform = row->uniform;
    cursor.EndLine();
    m_shader.variables.push_back(variable);
}

void SqxReader::ReadParameter(SqxCursor& cursor)
{
    SqxVariable variable;
    variable.kind = SqxVariableKind::Parameter;
    variable.name = SqxUnquoted(cursor.ReadQuoted("Name of a parameter"));
    variable.text = SqxUnquoted(cursor.ReadQuoted("Type of a parameter"));
    variable.space = SqxUnquoted(cursor.ReadQuoted("Space of a parameter"));
    const int storage = cursor.ReadInt("Class of a parameter");
    if (storage != 2 && storage != 3)
        cursor.Fail("Unknown class " + std::to_string(storage));
    variable.uniform = storage == 2;
    variable.type = ReadType(cursor);
    variable.size = cursor.ReadCount("Size of a parameter");
    cursor.EndLine();
    m_shader.variables.push_back(variable);
}

void SqxReader::ReadLocals(SqxCursor& cursor)
{
    for (const bool uniform : {true, false}) {
        const int count = cursor.ReadCountLine("Number of locals");
        for (int i = 0; i < count; ++i) {
            SqxVariable variable;
            variable.uniform = uniform;
            variable.type = ReadType(cursor);
            variable.size = cursor.ReadCount("Size of a local");
            variable.reference = cursor.ReadBoolLine("Reference flag of a local");
            m_shader.variables.push_back(variable);
        }
    }
}

void SqxReader::ReadConstants(SqxCursor& cursor)
{
    const int count = cursor.ReadCountLine("Number of constants");
    for (int i = 0; i < count; ++i) {
        SqxVariable variable;
        variable.kind = SqxVariableKind::Constant;
        variable.type = ReadType(cursor);
        if (variable.type == SqxType::Float)
            variable.number = cursor.ReadFloat("Constant");
        else if (variable.type == SqxType::Int)
            variable.number = cursor.ReadInt("Constant");
        else if (variable.type == SqxType::Bool)
            variable.number = cursor.ReadBool("Constant") ? 1 : 0;
        else if (variable.type == SqxType::String)
            variable.text = cursor.ReadQuoted("Constant");
        else
            cursor.Fail("A constant cannot be a " + std::string(SqxTypeName(variable.type)));
        cursor.EndLine();
        m_shader.variables.push_back(variable);
    }
}

void SqxReader::ReadSpaces(SqxCursor& cursor)
{
    m_shader.spaces = {"object", "shader"};
    const int count = cursor.ReadCountLine("Number of coordinate spaces");
    for (int i = 0; i < count; ++i) {
        m_shader.spaces.push_back(SqxUnquoted(cursor.ReadQuoted("Coordinate space")));
        cursor.EndLine();
    }
}

void SqxReader::ReadInitializers(SqxCursor& cursor, bool perPoint)
{
    const int count = cursor.ReadCountLine("Number of initializers");
    const int total = cursor.ReadCountLine("Number of variables of initializers");
    const std::size_t before = m_shader.variables.size();
    ReadLocals(cursor);
    ReadConstants(cursor);
    if (m_shader.variables.size() - before != static_cast<std::size_t>(total))
        cursor.Fail("The group holds another number of variables than " + std::to_string(total));
    for (int i = 0; i < count; ++i) {
        SqxInitializer initializer;
        initializer.parameter = static_cast<std::size_t>(cursor.ReadCountLine("Parameter index"));
        if (initializer.parameter >= m_shader.parameterCount)
            cursor.Fail("There is no parameter " + std::to_string(initializer.parameter));
        initializer.perPoint = perPoint;
        ReadBlock(cursor, initializer.code, m_shader.variables.size());
        initializer.result = cursor.ReadCountLine("Variable of an initial value");
        if (static_cast<std::size_t>(initializer.result) >= m_shader.variables.size())
            cursor.Fail("There is no variable " + std::to_string(initializer.result));
        m_shader.initializers.push_back(std::move(initializer));
    }
}

void SqxReader::ReadParameterFlags(SqxCursor& cursor, bool SqxVariable::*flag)
{
    for (std::size_t i = 0; i < m_shader.parameterCount; ++i)
        m_shader.variables[m_shader.predefinedCount + i].*flag =
            cursor.ReadBoolLine("Flag of a parameter");
}

void SqxReader::ReadLibraries(SqxCursor& cursor)
{
    const int libraries = cursor.ReadCountLine("Number of libraries");
    for (int i = 0; i < libraries; ++i) {
        m_shader.libraries.push_back(SqxUnquoted(cursor.ReadQuoted("Library")));
        cursor.EndLine();
    }
    const int functions = cursor.ReadCountLine("Number of shadeops");
    for (int i = 0; i < functions; ++i) {
        SqxDSOFunction function;
        function.library = static_cast<std::size_t>(cursor.ReadCount("Library of a shadeop"));
        if (function.library >= m_shader.libraries.size())
            cursor.Fail("There is no library " + std::to_string(function.library));
        function.init = SqxUnquoted(cursor.ReadQuoted("Initialization of a shadeop"));
        function.method = SqxUnquoted(cursor.ReadQuoted("Method of a shadeop"));
        function.cleanup = SqxUnquoted(cursor.ReadQuoted("Cleanup of a shadeop"));
        cursor.EndLine();
        m_shader.functions.push_back(function);
    }
}

void SqxReader::ReadBlock(SqxCursor& cursor, SqxBlock& block, std::size_t names)
{
    const int count = cursor.ReadCountLine("Number of values");
    for (int i = 0; i < count; ++i) {
        const int value = cursor.ReadIntLine("Value");
        if (value != static_cast<std::int16_t>(value))
            cursor.Fail("Value " + std::to_string(value) + " does not fit into 16 bits");
        block.code.push_back(static_cast<std::int16_t>(value));
    }
    Decode(cursor, block);
    CheckValues(cursor, block, names);
}

void SqxReader::Decode(SqxCursor& cursor, SqxBlock& block)
{
    for (std::size_t position = 0; position < block.code.size();) {
        const int number = block.code[position];
        SqxInstruction instruction;
        instruction.layout = SqxLayout::Find(number);
        const std::string place = " at " + std::to_string(position);
        if (!instruction.layout)
            cursor.Fail("Unknown instruction " + std::to_string(number) + place);
        instruction.position = position;
        const std::string_view operands = instruction.layout->operands;
        instruction.count = operands.size();
        const auto counter = operands.find('n');
        if (counter != std::string::npos && position + 1 + counter < block.code.size()) {
            const int extra = block.Value(instruction, counter);
            if (extra < 0)
                cursor.Fail("Negative number of arguments" + place);
            instruction.count += static_cast<std::size_t>(extra) - 1;
        }
        position += 1 + instruction.count;
        if (position > block.code.size())
            cursor.Fail("Instruction " + std::string(instruction.layout->name) + place +
                        " goes beyond the end of its block");
        block.instructions.push_back(instruction);
    }
}

void SqxReader::CheckValues(SqxCursor& cursor, const SqxBlock& block, std::size_t names)
{
    for (const SqxInstruction& instruction : block.instructions)
        for (std::size_t i = 0; i < instruction.count; ++i)
            CheckValue(cursor, block, instruction, i, names);
}

void SqxReader::CheckValue(SqxCursor& cursor, const SqxBlock& block,
                           const SqxInstruction& instruction, std::size_t i, std::size_t names)
{
    const int value = block.Value(instruction, i);
    const auto number = static_cast<std::size_t>(value);
    bool good = true;
    switch (SqxBlock::Letter(instruction, i)) {
    case 'i':
    case 'n':
    case 'd':  // checked once the whole file is read
        break;
    case 'j': {
        const std::size_t target = block.IndexOf(number);
        const bool isStart =
            target < block.instructions.size() && block.instructions[target].position == number;
        good = value >= 0 && (isStart || number == block.code.size());
        break;
    }
    case 's':
        good = value >= 0 && number < m_shader.spaces.size();
        break;
    default:
        good = value >= 0 && number < names;
    }
    if (!good)
        FailAt(cursor, instruction, value);
}

void SqxReader::CheckShadeops(SqxCursor& cursor, const SqxBlock& block)
{
    for (const SqxInstruction& instruction : block.instructions) {
        if (!instruction.layout->operands.starts_with('d'))
            continue;
        const int value = block.Value(instruction, 0);
        if (value < 0 || static_cast<std::size_t>(value) >= m_shader.functions.size())
            FailAt(cursor, instruction, value);
    }
}

void SqxReader::FailAt(SqxCursor& cursor, const SqxInstruction& instruction, int value)
{
    cursor.Fail("Instruction " + std::string(instruction.layout->name) + " at " +
                std::to_string(instruction.position) + " has the bad value " +
                std::to_string(value));
}
