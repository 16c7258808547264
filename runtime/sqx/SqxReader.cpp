// Reads the sections in order. The cursor reads each item, tracks the line and throws if the item
// is wrong. Counts are not trusted: no memory is reserved for items that have not been read.
//
// References to a later section are checked when that section has been read: the code of
// initializers contains numbers of shadeops, but precedes the list of shadeops.
//
// Tested by tests/backends/SqxReaderTest.cpp and the fuzz target `bytecode`.

#include "sqx/SqxReader.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "sqx/SqxBlockReader.h"
#include "sqx/SqxFileHead.h"
#include "sqx/SqxPredefined.h"

namespace {

constexpr std::streamsize k_readSize = 1 << 16;

// Far larger than any file of the compiler; an endless file must not fill the memory.
constexpr std::size_t k_largestFile = std::size_t{1} << 26;
// Code refers to variables by signed numbers of 16 bits.
constexpr std::size_t k_mostNames = std::size_t{1} << 15;

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

std::string SqxReader::Bytes(std::istream& file)
{
    std::string bytes;
    std::vector<char> part(k_readSize);
    while (bytes.size() <= k_largestFile &&
           (file.read(part.data(), k_readSize) || file.gcount() > 0))
        bytes.append(part.data(), static_cast<std::size_t>(file.gcount()));
    return bytes;
}

void SqxReader::Forget()
{
    m_shader = SqxShader();
    m_message.clear();
    m_faultLine = 0;
}

bool SqxReader::ReadFile(const std::string& path)
{
    Forget();
    std::ifstream file(path, std::ios::binary);
    const std::string text = Bytes(file);
    if (!file.is_open() || file.bad()) {
        m_message = std::strerror(errno);
        return false;
    }
    return Read(text);
}

bool SqxReader::Read(std::string_view text)
{
    Forget();
    SqxCursor cursor(text);
    try {
        if (text.size() > k_largestFile)
            cursor.Fail("The file is too large");
        ReadSections(cursor);
    } catch (const SqxMalformed&) {
        m_message = cursor.Message();
        m_faultLine = cursor.FaultLine();
        return false;
    }
    return true;
}

void SqxReader::ReadSections(SqxCursor& cursor)
{
    ReadHeader(cursor);
    cursor.Expect("");
    m_shader.reached = SqxSection::Head;
    ReadVariables(cursor);
    cursor.Expect("");
    m_shader.reached = SqxSection::Variables;
    ReadSpaces(cursor);
    cursor.Expect("");
    m_shader.reached = SqxSection::Spaces;
    ReadInitializers(cursor, false);
    ReadInitializers(cursor, true);
    cursor.Enter("flags of parameters");
    cursor.Expect("");
    m_shader.reached = SqxSection::Initializers;
    ReadParameterFlags(cursor, &SqxVariable::needsObjectSpace);
    cursor.Expect("");
    ReadParameterFlags(cursor, &SqxVariable::output);
    cursor.Expect("");
    m_shader.reached = SqxSection::Flags;
    ReadLibraries(cursor);
    cursor.Expect("");
    m_shader.reached = SqxSection::Shadeops;
    for (const SqxInitializer& initializer : m_shader.initializers) {
        cursor.Enter(m_shader.SectionOf(initializer));
        SqxBlockReader(cursor, m_shader).CheckShadeops(initializer.code);
    }
    cursor.Enter("main");
    m_shader.usesRaytracing = cursor.ReadBoolLine("Ray tracing flag");
    m_shader.modifiesP = cursor.ReadBoolLine("P modified flag");
    m_shader.reached = SqxSection::Facts;
    SqxBlockReader blocks(cursor, m_shader);
    blocks.Read(m_shader.main, m_shader.mainCount);
    blocks.CheckShadeops(m_shader.main);
    cursor.ExpectEnd();
    m_shader.reached = SqxSection::Main;
}

void SqxReader::ReadHeader(SqxCursor& cursor)
{
    for (const std::string_view line : k_sqxFileHead)
        cursor.Expect(line);
    const int line = cursor.Line();
    m_shader.shaderType = cursor.ReadCountLine("Shader type");
    if (m_shader.shaderType >= k_sqxShaderTypes)
        cursor.FailAt(line, "Unknown shader type " + std::to_string(m_shader.shaderType));
}

void SqxReader::ReadVariables(SqxCursor& cursor)
{
    cursor.Enter("variables");
    const int line = cursor.Line();
    const int total = cursor.ReadCountLine("Number of variables");
    const int predefined = cursor.ReadCountLine("Number of predefined variables");
    for (int i = 0; i < predefined; ++i)
        ReadPredefined(cursor);
    const int parameters = cursor.ReadCountLine("Number of parameters");
    for (int i = 0; i < parameters; ++i)
        ReadParameter(cursor);
    ReadLocals(cursor);
    ReadConstants(cursor);
    if (m_shader.mainCount != static_cast<std::size_t>(total))
        cursor.FailAt(line, "The sections hold another number of variables than " +
                                std::to_string(total));
}

void SqxReader::ReadPredefined(SqxCursor& cursor)
{
    SqxVariable variable;
    variable.kind = SqxVariableKind::Predefined;
    variable.line = cursor.Line();
    variable.name = cursor.ReadWord("Predefined variable");
    const SqxPredefined* row = FindPredefined(variable.name);
    if (!row)
        cursor.Fail("Unknown predefined variable " + variable.name);
    variable.type = row->type;
    variable.uniform = row->uniform;
    cursor.EndLine();
    Add(cursor, std::move(variable));
    m_shader.predefinedCount = m_shader.variables.size();
}

void SqxReader::Add(SqxCursor& cursor, SqxVariable variable)
{
    if (m_shader.variables.size() == k_mostNames)
        cursor.FailAt(variable.line, "There are more variables than code can name");
    m_shader.variables.push_back(std::move(variable));
    if (m_shader.reached < SqxSection::Variables)
        m_shader.mainCount = m_shader.variables.size();
}

void SqxReader::ReadParameter(SqxCursor& cursor)
{
    SqxVariable variable;
    variable.kind = SqxVariableKind::Parameter;
    variable.line = cursor.Line();
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
    Add(cursor, std::move(variable));
    ++m_shader.parameterCount;
}

void SqxReader::ReadLocals(SqxCursor& cursor)
{
    for (const bool uniform : {true, false}) {
        const int count = cursor.ReadCountLine("Number of locals");
        for (int i = 0; i < count; ++i) {
            SqxVariable variable;
            variable.uniform = uniform;
            variable.line = cursor.Line();
            variable.type = ReadType(cursor);
            variable.size = cursor.ReadCount("Size of a local");
            variable.reference = cursor.ReadBoolLine("Reference flag of a local");
            Add(cursor, std::move(variable));
        }
    }
}

void SqxReader::ReadConstants(SqxCursor& cursor)
{
    const int count = cursor.ReadCountLine("Number of constants");
    for (int i = 0; i < count; ++i) {
        SqxVariable variable;
        variable.kind = SqxVariableKind::Constant;
        variable.line = cursor.Line();
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
        Add(cursor, std::move(variable));
    }
}

void SqxReader::ReadSpaces(SqxCursor& cursor)
{
    cursor.Enter("spaces");
    m_shader.spaces = {"object", "shader"};
    const int count = cursor.ReadCountLine("Number of coordinate spaces");
    for (int i = 0; i < count; ++i) {
        m_shader.spaces.push_back(SqxUnquoted(cursor.ReadQuoted("Coordinate space")));
        cursor.EndLine();
    }
}

void SqxReader::ReadInitializers(SqxCursor& cursor, bool perPoint)
{
    cursor.Enter("initializers");
    const int count = cursor.ReadCountLine("Number of initializers");
    const int line = cursor.Line();
    const int total = cursor.ReadCountLine("Number of variables of initializers");
    const std::size_t before = m_shader.variables.size();
    ReadLocals(cursor);
    ReadConstants(cursor);
    if (m_shader.variables.size() - before != static_cast<std::size_t>(total))
        cursor.FailAt(line,
                      "The group holds another number of variables than " + std::to_string(total));
    for (int i = 0; i < count; ++i)
        ReadInitializer(cursor, perPoint);
}

void SqxReader::ReadInitializer(SqxCursor& cursor, bool perPoint)
{
    cursor.Enter("initializers");
    const int line = cursor.Line();
    const int parameter = cursor.ReadCountLine("Parameter index");
    if (static_cast<std::size_t>(parameter) >= m_shader.parameterCount)
        cursor.FailAt(line, "There is no parameter " + std::to_string(parameter));
    SqxInitializer& initializer = m_shader.initializers.emplace_back();
    initializer.line = line;
    initializer.parameter = static_cast<std::size_t>(parameter);
    initializer.perPoint = perPoint;
    cursor.Enter(m_shader.SectionOf(initializer));
    SqxBlockReader(cursor, m_shader).Read(initializer.code, m_shader.variables.size());
    initializer.resultLine = cursor.Line();
    const int result = cursor.ReadCountLine("Variable of an initial value");
    if (static_cast<std::size_t>(result) >= m_shader.variables.size())
        cursor.FailAt(initializer.resultLine, "There is no variable " + std::to_string(result));
    initializer.result = result;
}

void SqxReader::ReadParameterFlags(SqxCursor& cursor, bool SqxVariable::*flag)
{
    for (std::size_t i = 0; i < m_shader.parameterCount; ++i)
        m_shader.variables[m_shader.predefinedCount + i].*flag =
            cursor.ReadBoolLine("Flag of a parameter");
}

void SqxReader::ReadLibraries(SqxCursor& cursor)
{
    cursor.Enter("shadeops");
    const int libraries = cursor.ReadCountLine("Number of libraries");
    for (int i = 0; i < libraries; ++i) {
        m_shader.libraries.push_back(SqxLiteralText(cursor.ReadQuoted("Library")));
        // Libraries are searched only in the folders that the user names.
        if (m_shader.libraries.back().find('/') != std::string::npos)
            cursor.Fail("Library \"" + m_shader.libraries.back() + "\" is not a plain file name");
        cursor.EndLine();
    }
    const int functions = cursor.ReadCountLine("Number of shadeops");
    for (int i = 0; i < functions; ++i)
        ReadFunction(cursor);
}

void SqxReader::ReadFunction(SqxCursor& cursor)
{
    SqxDSOFunction function;
    function.line = cursor.Line();
    function.library = static_cast<std::size_t>(cursor.ReadCount("Library of a shadeop"));
    if (function.library >= m_shader.libraries.size())
        cursor.Fail("There is no library " + std::to_string(function.library));
    function.init = SqxUnquoted(cursor.ReadQuoted("Initialization of a shadeop"));
    function.method = SqxUnquoted(cursor.ReadQuoted("Method of a shadeop"));
    function.cleanup = SqxUnquoted(cursor.ReadQuoted("Cleanup of a shadeop"));
    cursor.EndLine();
    m_shader.functions.push_back(std::move(function));
}
