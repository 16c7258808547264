// An instruction with operands in varying references becomes several kernel calls: the elements
// that it reads are copied to temporaries before its own call, and those that it writes are copied
// back after it. A text that it only writes is copied too, since its kernel frees the old text.
//
//     ADD_FLOAT_FLOAT r x y     r a reference      load t r; add t x y; store r t
//
// Then the step is chosen: inside parallel brackets for the current points; outside once, for all
// points, or for the points of a flag. Last, the kernels are chosen: a cheap function has one for
// each combination of uniform and varying arguments.
//
// Tested by tests/host/AgreementTest.cpp against shared objects.

#include "machine/translate/QxDraftWriter.h"

#include <algorithm>

#include "QxHostError.h"

QxDraft& QxDraftWriter::Add(QxCodeStep step)
{
    QxDraft& draft = m_block.drafts.emplace_back();
    draft.code.step = step;
    draft.first = m_block.operands.size();
    return draft;
}

void QxDraftWriter::AddOperand(const QxOperand& operand, char letter)
{
    m_block.operands.push_back(operand);
    m_block.letters += letter;
    ++m_block.drafts.back().code.count;
}

void QxDraftWriter::Refuse(std::string_view instruction, const std::string& what)
{
    throw QxHostError("Instruction " + std::string(instruction) + ' ' + what);
}

const QxKernelRow& QxDraftWriter::RowOf(SqxPrimitive primitive) const
{
    const QxKernelRow* row = m_kernels.Find(primitive);
    if (!row)
        Refuse(SqxPrimitiveName(primitive), "is not known to this machine");
    return *row;
}

QxDraftWriter::Argument QxDraftWriter::MakeArgument(int variable, char letter, QxStored wanted)
{
    auto number = static_cast<std::uint32_t>(variable);
    const QxStorage storage = m_variables[number];
    const bool constant = storage.kind == QxStorage::Kind::Constant;
    if (constant && SqxIsWritten(letter))  // a result that the call leaves out
        return {{m_variables.Nowhere(), 0, 1, wanted}, letter};
    if (constant && storage.stored == QxStored::Number && wanted == QxStored::Triple)
        number = m_variables.AddNumberConstant(m_variables.ConstantOf(number)->numbers[0]);
    if (constant && storage.stored == QxStored::Number && wanted == QxStored::Text)
        number = m_variables.AddTextConstant(number);
    if (storage.kind == QxStorage::Kind::Reference) {
        if (SqxIsWritten(letter) && storage.stored == QxStored::Text && storage.number != 0)
            Refuse("ARRAY_REF", "lets points write one text");
        return {{0, 1, 1, storage.stored}, letter, number, true};
    }
    const QxOperand operand = m_variables.OperandOf(number);
    if (wanted != QxStored::Any && (operand.stored != wanted || operand.size < 1))
        Refuse("", "has an operand of another type");
    return {operand, letter};
}

/// Writes the instruction between the loads and stores of its references.
void QxDraftWriter::Emit(const QxKernelRow& row, const std::vector<Argument>& given, int number,
                         const SqxLayout& layout, const QxOperand& flag)
{
    std::vector<Argument> arguments = given;
    std::size_t used[k_qxStoredKinds] = {};
    for (Argument& argument : arguments) {
        if (!argument.isReference)
            continue;
        const auto stored = static_cast<std::size_t>(argument.operand.stored);
        if (used[stored] == m_temporaries[stored].size())
            m_temporaries[stored].push_back(m_variables.AddTemporary(argument.operand.stored));
        argument.operand.variable = m_temporaries[stored][used[stored]++];
    }
    EmitMoves(arguments, layout, flag, true);
    QxDraft& draft = Add(QxCodeStep::Kernel);
    draft.row = &row;
    draft.code.number = number;
    for (const Argument& argument : arguments)
        AddOperand(argument.operand, argument.letter);
    ChooseStep(draft, layout, flag);
    ChooseKernels(draft);
    EmitMoves(arguments, layout, flag, false);
}

void QxDraftWriter::EmitMoves(const std::vector<Argument>& arguments, const SqxLayout& layout,
                              const QxOperand& flag, bool load)
{
    for (const Argument& argument : arguments) {
        if (!argument.isReference)
            continue;
        const bool text = argument.operand.stored == QxStored::Text;
        const bool written = SqxIsWritten(argument.letter);
        if (load ? argument.letter == 'w' && !text : !written)
            continue;
        QxDraft& draft = Add(QxCodeStep::Kernel);
        draft.row = &RowOf(load ? SqxPrimitive::MACHINE_LOAD : SqxPrimitive::MACHINE_STORE);
        draft.code.number = load && written ? 1 : 0;
        const QxOperand reference = {argument.reference, 1, 1, argument.operand.stored};
        AddOperand(load ? argument.operand : reference, 'w');
        AddOperand(load ? reference : argument.operand, 'r');
        ChooseStep(draft, layout, flag);
        ChooseKernels(draft);
    }
}

void QxDraftWriter::ChooseStep(QxDraft& draft, const SqxLayout& layout, const QxOperand& flag)
{
    QxCode& code = draft.code;
    if (m_within)
        return;
    const auto operands = m_block.operands.begin() + static_cast<std::ptrdiff_t>(draft.first);
    const bool varying = std::any_of(operands, operands + code.count,
                                     [](const QxOperand& operand) { return operand.step != 0; });
    code.step = layout.simd || varying ? QxCodeStep::Grid : QxCodeStep::Once;
    if (!layout.conditional)
        return;
    code.step = QxCodeStep::GridIf;
    code.flag = flag;
    // A light statement clears its flag at the other points, and a message may write a uniform
    // variable, so these run even if no point is active.
    code.whole = draft.row->statement || layout.operands.find('m') != std::string_view::npos;
}

/// Chooses the loops that are specialized for these operands, otherwise the general kernels.
void QxDraftWriter::ChooseKernels(QxDraft& draft)
{
    QxCode& code = draft.code;
    code.all = draft.row->all;
    code.masked = draft.row->masked ? draft.row->masked : draft.row->all;
    if (code.step == QxCodeStep::GridIf && draft.row->statement)
        code.masked = draft.row->statement;
    const QxOperand* operands = m_block.operands.data() + draft.first;
    if (!draft.row->shaped || code.step == QxCodeStep::Once || operands[0].step == 0)
        return;
    std::size_t shape = 0;
    for (std::size_t k = 1; k < code.count; ++k)
        shape |= operands[k].step != 0 ? std::size_t{1} << (k - 1) : 0;
    code.all = draft.row->shaped[2 * shape];
    code.masked = draft.row->shaped[2 * shape + 1];
}
