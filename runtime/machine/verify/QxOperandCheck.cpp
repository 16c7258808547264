// Checks each instruction separately against its layout: every operand has a type that its letter
// allows, constants other than integers are not written, and details are valid where the
// instruction is.
//
// The kernels rely on this: a float where three are read would be a read past the end, and a
// varying value written to a uniform variable a write past the end.
//
//     MULT_FLOAT_COLOR %3 Kd Cs        outside of a parallel run, Cs varying: refused
//     BEGIN_PARALLEL ... the same      accepted
//
// Tested by tests/machine/QxVerifierTest.cpp, and by the fuzz target `bytecode`.

#include "machine/verify/QxOperandCheck.h"

#include "sqx/SqxDump.h"
#include "sqx/SqxLayout.h"

namespace {

// Types that are interchangeable in code share a bit.
constexpr unsigned char k_float = 1;
constexpr unsigned char k_triple = 2;
constexpr unsigned char k_matrix = 4;
constexpr unsigned char k_string = 8;
constexpr unsigned char k_flag = 16;
constexpr unsigned char k_integer = 32;  // only constants
constexpr unsigned char k_any = k_float | k_triple | k_matrix | k_string;

unsigned char ShapeOf(SqxType type)
{
    switch (type) {
    case SqxType::Float:
        return k_float;
    case SqxType::Point:
    case SqxType::Color:
    case SqxType::Vector:
    case SqxType::Normal:
        return k_triple;
    case SqxType::Matrix:
        return k_matrix;
    case SqxType::String:
        return k_string;
    case SqxType::Bool:
        return k_flag;
    case SqxType::Int:
        return k_integer;
    }
    return 0;
}

struct TypeRow {
    char letter;  // in the layout
    unsigned char shapes;
    const char* wanted;
};

constexpr TypeRow k_types[] = {
    {'f', k_float, "a float"},
    {'t', k_triple, "a point, vector, normal or color"},
    {'m', k_matrix, "a matrix"},
    {'s', k_string, "a string"},
    {'b', k_flag, "a flag"},
    {'a', k_any, "a value"},
    {'A', k_any, "a value or an array"},
    {'[', k_any, "an array"},
    {'e', k_any, "a reference"},
    {'F', k_float | k_integer, "a float"},
    {'T', k_triple | k_integer, "a point, vector, normal or color"},
    {'S', k_string | k_integer, "a string"},
    {'N', k_float | k_triple | k_integer, "a float or a point, vector, normal or color"},
};

const TypeRow& RowFor(char letter)
{
    for (const TypeRow& row : k_types)
        if (row.letter == letter)
            return row;
    return k_types[0];
}

bool IsVariable(char letter)
{
    return letter == 'r' || letter == 'w' || letter == 'm' || letter == 'c';
}

bool IsJump(SqxPrimitive mark)
{
    return mark == SqxPrimitive::GOTO || mark == SqxPrimitive::IF_TRUE_GOTO ||
           mark == SqxPrimitive::IF_FALSE_GOTO;
}

bool RunsForGrid(const SqxLayout& layout)
{
    return layout.simd || layout.run == SqxRun::Grid || layout.run == SqxRun::Reduce;
}

/// True if the result of an instruction may be uniform although the instruction reads varying
/// values.
bool MayReduce(const SqxLayout& layout)
{
    return layout.run == SqxRun::Reduce || layout.run == SqxRun::Answer;
}

}  // namespace

QxOperandFacts::QxOperandFacts(const SqxVariable& variable)
    : shape(ShapeOf(variable.type)),
      uniform(variable.uniform),
      array(variable.size != 1),
      reference(variable.reference),
      constant(variable.kind == SqxVariableKind::Constant)
{
}

void QxOperandCheck::Run()
{
    for (std::size_t i = 0; i < m_block.code.instructions.size(); ++i)
        Check(i);
}

void QxOperandCheck::Check(std::size_t index)
{
    const SqxInstruction& instruction = m_block.code.instructions[index];
    for (std::size_t i = 0; i < instruction.count; ++i)
        if (IsVariable(SqxBlock::Letter(instruction, i)))
            CheckType(instruction, i);
    const std::string_view types = instruction.layout->types;
    if (types.starts_with('e'))
        CheckReference(instruction);
    else if (types.starts_with('['))
        CheckArrays(instruction);
    CheckPlace(index);
    CheckDetails(index);
}

void QxOperandCheck::CheckType(const SqxInstruction& instruction, std::size_t i) const
{
    const QxOperandFacts& facts = Facts(instruction, i);
    const char type = instruction.layout->Type(i);
    const TypeRow& row = RowFor(type);
    bool good = (facts.shape & row.shapes) != 0;
    if (type == '[')
        good = good && !facts.reference;
    else if (type != 'A')
        good = good && !facts.array;
    if (type == 'e')
        good = good && facts.reference;
    if (!good)
        RefuseOperand(instruction, i, std::string("is not ") + row.wanted);
    const char letter = SqxBlock::Letter(instruction, i);
    if (SqxIsWritten(letter) && facts.constant && facts.shape != k_integer)
        RefuseOperand(instruction, i, "is a constant, but is written");
    if (letter == 'c' && facts.uniform)
        RefuseOperand(instruction, i, "is a condition, but is not varying");
    const auto number = static_cast<std::size_t>(m_block.code.Value(instruction, i));
    if (m_block.kind != QxUntrustedBlock::Kind::Main && number < m_block.shader.mainCount &&
        m_block.shader.variables[number].kind == SqxVariableKind::Local)
        RefuseOperand(instruction, i, "belongs to main");
}

/// Checks that the reference has the type of the array, and is varying if the array or the index
/// is.
void QxOperandCheck::CheckReference(const SqxInstruction& instruction) const
{
    const auto type = [&](std::size_t i) {
        const int number = m_block.code.Value(instruction, i);
        return m_block.shader.variables[static_cast<std::size_t>(number)].type;
    };
    if (type(0) != type(1))
        RefuseOperand(instruction, 1, "holds other elements than the reference stands for");
    const bool varying = !Facts(instruction, 1).uniform || !Facts(instruction, 2).uniform;
    if (Facts(instruction, 0).uniform && varying)
        RefuseOperand(instruction, 0, "is uniform, but its element is varying");
}

/// Checks that the two arrays of a conversion have the same shape and length.
void QxOperandCheck::CheckArrays(const SqxInstruction& instruction) const
{
    const auto size = [&](std::size_t i) {
        const int number = m_block.code.Value(instruction, i);
        return m_block.shader.variables[static_cast<std::size_t>(number)].size;
    };
    if (Facts(instruction, 0).shape != Facts(instruction, 1).shape || size(0) != size(1))
        RefuseOperand(instruction, 1, "is an array of another type or size");
}

void QxOperandCheck::CheckPlace(std::size_t index) const
{
    const SqxInstruction& instruction = m_block.code.instructions[index];
    if (!RunsForGrid(*instruction.layout))
        return;
    const SqxPrimitive mark = SqxBlock::Primitive(instruction);
    if (m_brackets.InParallel(index) && mark != SqxPrimitive::END_PARALLEL)
        m_block.Refuse(instruction, "cannot stand within the parallel brackets");
    if (m_block.kind == QxUntrustedBlock::Kind::OnceInitializer && !IsJump(mark))
        m_block.Refuse(instruction, "needs a grid, which an initializer that runs once has not");
}

QxOperandCheck::Details QxOperandCheck::DetailsOf(const SqxInstruction& instruction) const
{
    Details details;
    for (std::size_t i = 0; i < instruction.count; ++i) {
        const char letter = SqxBlock::Letter(instruction, i);
        if (!IsVariable(letter))
            continue;
        const QxOperandFacts& facts = Facts(instruction, i);
        if (SqxIsWritten(letter) && facts.shape != k_integer)
            (facts.uniform ? details.writesUniform : details.writesVarying) = true;
        else if (!facts.uniform)
            details.readsVarying = true;
    }
    return details;
}

void QxOperandCheck::CheckDetails(std::size_t index) const
{
    const SqxInstruction& instruction = m_block.code.instructions[index];
    const SqxLayout& layout = *instruction.layout;
    const Details details = DetailsOf(instruction);
    const bool forGrid = RunsForGrid(layout);
    if (m_brackets.InParallel(index) && !forGrid)
        return;
    const bool perPoint = forGrid || layout.run == SqxRun::Shaded;
    if (details.writesUniform && perPoint && !MayReduce(layout))
        m_block.Refuse(instruction, "gives varying values to a uniform variable");
    if (forGrid)
        return;
    const bool forEachPoint =
        m_block.kind == QxUntrustedBlock::Kind::PointInitializer && details.writesVarying;
    // Outside parallel brackets a reference is bound for all points at once.
    const bool bindsForAll = layout.types.starts_with('e') && Facts(instruction, 2).uniform &&
                             m_block.kind != QxUntrustedBlock::Kind::OnceInitializer;
    if ((details.readsVarying || details.writesVarying) && !forEachPoint && !bindsForAll)
        m_block.Refuse(instruction, "has varying values outside the parallel brackets");
}

void QxOperandCheck::RefuseOperand(const SqxInstruction& instruction, std::size_t i,
                                   const std::string& fault) const
{
    const auto number = static_cast<std::size_t>(m_block.code.Value(instruction, i));
    m_block.message = SqxFaultText(m_block.code.Line(instruction, i), m_block.section,
                                   SqxBlock::Place(instruction) + ": Operand " +
                                       SqxVariableText(m_block.shader, number) + ' ' + fault);
    throw QxRefused();
}
