// Every variable of the file becomes a `QxStorage`, which says who owns its values and how large
// they are. The order of the file is kept, so that numbers in code need no translation. Variables
// that only the translation needs (for discarded results, `Ng` for faceforward, temporaries, locals
// of strips, converted constants) come after those of the file.
//
// If all points refer to the same element, a reference is an alias, which costs nothing to use:
//
//     ARRAY_REF r a i      outside of a run, i uniform      r stands for a[i]
//     ARRAY_REF r a i      in a run, or i varying           an address for each point
//
// All bindings of a reference are examined first, since one varying binding makes the reference
// varying.
//
// Tested by tests/host/AgreementTest.cpp against shared objects.

#include "machine/translate/QxMachineVariables.h"

#include <algorithm>

#include "sqx/SqxCursor.h"
#include "sqx/SqxNumbers.h"
#include "sqx/SqxPredefined.h"

namespace {

QxStored StoredOf(SqxType type)
{
    switch (type) {
    case SqxType::Float:
    case SqxType::Int:
        break;
    case SqxType::Point:
    case SqxType::Color:
    case SqxType::Vector:
    case SqxType::Normal:
        return QxStored::Triple;
    case SqxType::String:
        return QxStored::Text;
    case SqxType::Matrix:
        return QxStored::Matrix;
    case SqxType::Bool:
        return QxStored::Flag;
    }
    return QxStored::Number;
}

/// `du` and `dv` are the same everywhere: a grid has one value of each.
bool IsOneForTheGrid(const SqxVariable& variable)
{
    return variable.kind == SqxVariableKind::Predefined &&
           (variable.name == "du" || variable.name == "dv");
}

std::uint32_t PredefinedRow(const std::string& name)
{
    std::uint32_t row = 0;
    while (name != k_sqxPredefined[row].name)
        ++row;
    return row;
}

}  // namespace

QxMachineVariables::QxMachineVariables(const SqxShader& shader, QxMachineCode& target)
    : m_shader(shader),
      m_target(target)
{
    AddVariables();
    ClassifyReferences(shader.main);
    for (const SqxInitializer& initializer : shader.initializers)
        ClassifyReferences(initializer.code);
}

void QxMachineVariables::AddVariables()
{
    constexpr const char* lightNames[] = {"L", "Cl", "Ol"};
    for (std::size_t i = 0; i < m_shader.variables.size(); ++i) {
        const SqxVariable& variable = m_shader.variables[i];
        QxStorage storage;
        storage.stored = StoredOf(variable.type);
        storage.varying = !variable.uniform && !IsOneForTheGrid(variable);
        storage.size = static_cast<std::uint32_t>(variable.size);
        switch (variable.kind) {
        case SqxVariableKind::Predefined:
            storage.kind = QxStorage::Kind::Predefined;
            storage.number = PredefinedRow(variable.name);
            for (std::size_t j = 0; j < 3; ++j)
                if (variable.name == lightNames[j])
                    m_target.lightVariables[j].push_back(static_cast<std::uint32_t>(i));
            break;
        case SqxVariableKind::Parameter:
            storage.kind = QxStorage::Kind::Parameter;
            storage.number = static_cast<std::uint32_t>(i - m_shader.predefinedCount);
            break;
        case SqxVariableKind::Local:
            storage.kind = variable.reference ? QxStorage::Kind::Nowhere : QxStorage::Kind::Local;
            break;
        case SqxVariableKind::Constant:
            AddConstant(variable, storage);
            break;
        }
        m_target.variables.push_back(storage);
    }
    m_nowhere = AddVariable({QxStorage::Kind::Nowhere, QxStored::Any, false, 1, 0});
    m_ng = AddVariable({QxStorage::Kind::Ng, QxStored::Triple, true, 1, 0});
}

void QxMachineVariables::AddConstant(const SqxVariable& variable, QxStorage& storage)
{
    storage.kind = QxStorage::Kind::Constant;
    storage.varying = false;
    storage.number = static_cast<std::uint32_t>(m_target.constants.size());
    QxConstant& constant = m_target.constants.emplace_back();
    constant.flag = variable.number != 0;
    constant.numbers[0] = static_cast<float>(variable.number);
    if (variable.type == SqxType::String)
        constant.text = m_target.texts.emplace_back(SqxLiteralText(variable.text)).c_str();
}

std::uint32_t QxMachineVariables::AddVariable(const QxStorage& storage)
{
    m_target.variables.push_back(storage);
    return static_cast<std::uint32_t>(m_target.variables.size() - 1);
}

/// Adds three equal numbers.
std::uint32_t QxMachineVariables::AddNumberConstant(float value)
{
    QxStorage storage = {QxStorage::Kind::Constant, QxStored::Triple, false, 1,
                         static_cast<std::uint32_t>(m_target.constants.size())};
    QxConstant& constant = m_target.constants.emplace_back();
    std::fill(std::begin(constant.numbers), std::end(constant.numbers), value);
    return AddVariable(storage);
}

const QxConstant* QxMachineVariables::ConstantOf(std::uint32_t variable) const
{
    const QxStorage& storage = m_target.variables[variable];
    return storage.kind == QxStorage::Kind::Constant ? &m_target.constants[storage.number]
                                                     : nullptr;
}

std::uint32_t QxMachineVariables::AddTemporary(QxStored stored)
{
    return AddVariable({QxStorage::Kind::Borrowed, stored, true, 1, 0});
}

std::uint32_t QxMachineVariables::StripLocal(QxStored stored, std::size_t index)
{
    std::vector<std::uint32_t>& locals = m_stripLocals[static_cast<std::size_t>(stored)];
    if (index == locals.size())
        locals.push_back(AddVariable({QxStorage::Kind::Strip, stored, true, 1, 0}));
    return locals[index];
}

/// Adds a variable for the text of a constant.
std::uint32_t QxMachineVariables::AddTextConstant(std::uint32_t constant)
{
    return AddVariable(
        {QxStorage::Kind::Constant, QxStored::Text, false, 1, m_target.variables[constant].number});
}

QxOperand QxMachineVariables::OperandOf(std::uint32_t variable) const
{
    const QxStorage& storage = m_target.variables[variable];
    return {variable, storage.varying ? 1U : 0U, storage.size, storage.stored};
}

/// The `number` of a reference is 1 if it may refer to elements of a uniform array.
bool QxMachineVariables::IsOneForAllPoints(const QxOperand& operand) const
{
    const QxStorage& storage = m_target.variables[operand.variable];
    if (storage.kind == QxStorage::Kind::Reference)
        return storage.number != 0;
    return operand.step == 0 && operand.variable != m_nowhere;
}

// References. A reference that no instruction binds stays `Nowhere`.

void QxMachineVariables::ClassifyReferences(const SqxBlock& block)
{
    bool within = false;
    for (const SqxInstruction& source : block.instructions) {
        const SqxPrimitive primitive = SqxBlock::Primitive(source);
        if (primitive == SqxPrimitive::BEGIN_PARALLEL)
            within = true;
        else if (primitive == SqxPrimitive::END_PARALLEL)
            within = false;
        else if (primitive == SqxPrimitive::ARRAY_REF)
            ClassifyReference(block, source, within);
    }
}

void QxMachineVariables::ClassifyReference(const SqxBlock& block, const SqxInstruction& source,
                                           bool within)
{
    const auto storage = [&](std::size_t i) -> QxStorage& {
        return m_target.variables[static_cast<std::size_t>(block.Value(source, i))];
    };
    QxStorage& reference = storage(0);
    const bool first = reference.kind == QxStorage::Kind::Nowhere;
    const bool one = !within && !storage(2).varying;
    const bool alias = one && (first || (reference.kind == QxStorage::Kind::Alias &&
                                         reference.varying == storage(1).varying));
    // Record whether the array is uniform: then all points share its elements, so points must not
    // write its texts, and other writes are made point by point.
    reference.number = (first ? 0 : reference.number) | (storage(1).varying ? 0 : 1);
    reference.kind = alias ? QxStorage::Kind::Alias : QxStorage::Kind::Reference;
    reference.varying = alias ? storage(1).varying : true;
}
