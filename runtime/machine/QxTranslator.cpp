// Instruction by instruction, in one walk over each block:
//
//     IF_TRUE f;  MULT_FLOAT_FLOAT x y 2;  END_IF
// becomes
//     IfTrue f -> behind;  kernel of varying times uniform, operands x, y and the constant;  EndIf
//
// Conditions on uniform flags, which stand outside the parallel brackets, become jumps. What a
// number of the file means is settled here, and checked where a kernel relies on it, so that a run
// only follows addresses. Masks are simplified afterwards, see QxSimplifyMasks.cpp.

#include "machine/QxTranslator.h"

#include <algorithm>
#include <cstring>

#include "QxHostError.h"
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

/// The steps along u and v are the same everywhere: a grid has one value of each.
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

/// The characters that a literal of the source stands for.
std::string LiteralText(const std::string& quoted)
{
    std::string text;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted[i] != '\\' || i + 2 >= quoted.size()) {
            text += quoted[i];
            continue;
        }
        const char code = quoted[++i];
        text += code == 'n' ? '\n' : code == 't' ? '\t' : code;
    }
    return text;
}

bool IsWritten(char letter)
{
    return letter == 'w' || letter == 'm';
}

QxStored Wanted(const QxKernelRow& row, std::size_t place)
{
    if (place < row.operandCount)
        return row.operands[place];
    return row.rest ? *row.rest : QxStored::Any;
}

}  // namespace

// Kernels by name

QxKernelTable::QxKernelTable(bool avx2)
{
    using Rows = QxKernelRows (*)();
    const std::vector<Rows> tables = {avx2 ? qxavx2::OperatorKernels : qxbaseline::OperatorKernels,
                                      avx2 ? qxavx2::FunctionKernels : qxbaseline::FunctionKernels,
                                      qxcommon::SceneKernels, qxcommon::ListKernels};
    for (const Rows table : tables)
        for (const QxKernelRow& row : table())
            m_byName.emplace(row.primitive, &row);
    for (int number = 0; number <= k_sqxHighestNumber; ++number) {
        const SqxLayout* layout = SqxLayout::Find(number);
        m_byNumber.push_back(layout ? Find(layout->primitive) : nullptr);
    }
}

const QxKernelTable& QxKernelTable::For(bool avx2)
{
    static const QxKernelTable baseline(false);
    if (!avx2)
        return baseline;
    static const QxKernelTable fast(true);
    return fast;
}

const QxKernelRow* QxKernelTable::Find(std::string_view primitive) const
{
    const auto found = m_byName.find(primitive);
    return found == m_byName.end() ? nullptr : found->second;
}

// Variables

QxTranslator::QxTranslator(const SqxShader& shader, const QxKernelTable& kernels,
                           QxMachineCode& target)
    : m_shader(shader),
      m_kernels(kernels),
      m_target(target)
{
}

void QxTranslator::Run()
{
    AddVariables();
    ClassifyReferences(m_shader.main);
    for (const SqxInitializer& initializer : m_shader.initializers)
        ClassifyReferences(initializer.code);
    Translate(m_shader.main, m_target.main);
    for (const SqxInitializer& initializer : m_shader.initializers) {
        auto& group = initializer.perPoint ? m_target.perPoint : m_target.once;
        group.emplace_back();
        group.back().parameter = initializer.parameter;
        group.back().result = static_cast<std::uint32_t>(initializer.result);
        Translate(initializer.code, group.back().code);
    }
}

void QxTranslator::AddVariables()
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

void QxTranslator::AddConstant(const SqxVariable& variable, QxStorage& storage)
{
    storage.kind = QxStorage::Kind::Constant;
    storage.varying = false;
    storage.number = static_cast<std::uint32_t>(m_target.constants.size());
    QxConstant& constant = m_target.constants.emplace_back();
    constant.flag = variable.number != 0;
    constant.numbers[0] = static_cast<float>(variable.number);
    if (variable.type == SqxType::String)
        constant.text = m_target.texts.emplace_back(LiteralText(variable.text)).c_str();
}

std::uint32_t QxTranslator::AddVariable(const QxStorage& storage)
{
    m_target.variables.push_back(storage);
    return static_cast<std::uint32_t>(m_target.variables.size() - 1);
}

/// Three equal numbers.
std::uint32_t QxTranslator::AddNumberConstant(float value)
{
    QxStorage storage = {QxStorage::Kind::Constant, QxStored::Triple, false, 1,
                         static_cast<std::uint32_t>(m_target.constants.size())};
    QxConstant& constant = m_target.constants.emplace_back();
    std::fill(std::begin(constant.numbers), std::end(constant.numbers), value);
    return AddVariable(storage);
}

// References. The numbers of those that no instruction binds stay nowhere.

void QxTranslator::ClassifyReferences(const SqxBlock& block)
{
    bool within = false;
    for (const SqxInstruction& source : block.instructions) {
        const int number = block.code[source.position];
        if (number == static_cast<int>(SqxMark::BeginParallel))
            within = true;
        else if (number == static_cast<int>(SqxMark::EndParallel))
            within = false;
        else if (number == static_cast<int>(SqxMark::ArrayRef))
            ClassifyReference(block, source, within);
    }
}

void QxTranslator::ClassifyReference(const SqxBlock& block, const SqxInstruction& source,
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
    // A uniform array stays known: texts of its elements must not be written point by point.
    reference.number = (first ? 0 : reference.number) | (storage(1).varying ? 0 : 1);
    reference.kind = alias ? QxStorage::Kind::Alias : QxStorage::Kind::Reference;
    reference.varying = alias ? storage(1).varying : true;
}

// Blocks

void QxTranslator::Translate(const SqxBlock& block, QxProgramBlock& target)
{
    m_block = QxDraftBlock();
    m_starts.clear();
    m_conditions.clear();
    m_target.instructions += block.instructions.size();
    m_block.drafts.reserve(block.instructions.size() + 1);
    for (const SqxInstruction& source : block.instructions) {
        m_starts.push_back(m_block.drafts.size());
        TranslateInstruction(block, source);
    }
    m_starts.push_back(m_block.drafts.size());
    Add(QxCodeStep::Stop);
    for (QxDraft& draft : m_block.drafts)
        if (draft.jumps)
            draft.code.target = static_cast<std::uint32_t>(m_starts[draft.code.target]);

    QxSimplifyMasks(m_block, m_target.variables, target.clears);
    target.operands = std::move(m_block.operands);
    target.codes.reserve(m_block.drafts.size());
    unsigned int depth = 0;
    for (const QxDraft& draft : m_block.drafts) {
        QxCode& code = target.codes.emplace_back(draft.code);
        code.operands = target.operands.data() + draft.first;
        if (code.step == QxCodeStep::IfTrue || code.step == QxCodeStep::IfFalse) {
            code.number = static_cast<std::int32_t>(code.target - (target.codes.size() - 1));
            m_target.depth = std::max(m_target.depth, ++depth);
        } else if (code.step == QxCodeStep::EndIf) {
            --depth;
        }
    }
}

QxDraft& QxTranslator::Add(QxCodeStep step)
{
    QxDraft& draft = m_block.drafts.emplace_back();
    draft.code.step = step;
    draft.first = m_block.operands.size();
    return draft;
}

void QxTranslator::AddOperand(const QxOperand& operand, char letter)
{
    m_block.operands.push_back(operand);
    m_block.letters += letter;
    ++m_block.drafts.back().code.count;
}

void QxTranslator::Refuse(std::string_view instruction, const std::string& what)
{
    throw QxHostError("Instruction " + std::string(instruction) + ' ' + what);
}

const QxKernelRow& QxTranslator::RowOf(std::string_view primitive) const
{
    const QxKernelRow* row = m_kernels.Find(primitive);
    if (!row)
        Refuse(primitive, "is not known to this machine");
    return *row;
}

QxOperand QxTranslator::OperandOf(std::uint32_t variable) const
{
    const QxStorage& storage = m_target.variables[variable];
    return {variable, storage.varying ? 1U : 0U, storage.size, storage.stored};
}

// Instructions

void QxTranslator::TranslateInstruction(const SqxBlock& block, const SqxInstruction& source)
{
    if (TranslateMark(block, source))
        return;
    const int number = block.code[source.position];
    if (number == static_cast<int>(SqxMark::ArrayRef))
        TranslateArrayRef(block, source);
    else if (number == static_cast<int>(SqxMark::CheckValidArrayIndex))
        TranslateCheck(block, source);
    else
        TranslateCall(block, source);
}

/// Jumps and brackets.
bool QxTranslator::TranslateMark(const SqxBlock& block, const SqxInstruction& source)
{
    const auto value = [&](std::size_t i) { return block.Value(source, i); };
    const auto jump = [&](QxCodeStep step, int position) -> QxDraft& {
        QxDraft& draft = Add(step);
        draft.code.target =
            static_cast<std::uint32_t>(block.IndexOf(static_cast<std::size_t>(position)));
        draft.jumps = true;
        if (m_within)
            Refuse(source.layout->name, "jumps within parallel brackets");
        return draft;
    };
    switch (static_cast<SqxMark>(block.code[source.position])) {
    case SqxMark::BeginParallel:
        m_parallel = m_block.drafts.size();
        m_within = true;
        Add(QxCodeStep::BeginParallel);
        return true;
    case SqxMark::EndParallel:
        EndParallel();
        return true;
    case SqxMark::IfTrue:
        BeginCondition(m_within ? QxCodeStep::IfTrue : QxCodeStep::GotoIfFalse, value(0));
        return true;
    case SqxMark::IfFalse:
        BeginCondition(m_within ? QxCodeStep::IfFalse : QxCodeStep::GotoIfTrue, value(0));
        return true;
    case SqxMark::EndIf:
        EndCondition();
        return true;
    case SqxMark::Goto:
        jump(QxCodeStep::Goto, value(0));
        return true;
    case SqxMark::IfTrueGoto:
        jump(QxCodeStep::GotoIfTrue, value(1)).code.flag =
            OperandOf(static_cast<std::uint32_t>(value(0)));
        return true;
    case SqxMark::IfFalseGoto:
        jump(QxCodeStep::GotoIfFalse, value(1)).code.flag =
            OperandOf(static_cast<std::uint32_t>(value(0)));
        return true;
    case SqxMark::BeginIlluminance:
        jump(QxCodeStep::BeginLights, value(0));
        return true;
    case SqxMark::EndIlluminance:
        jump(QxCodeStep::EndLights, value(0));
        return true;
    default:
        return false;
    }
}

void QxTranslator::EndParallel()
{
    m_within = false;
    Add(QxCodeStep::EndParallel);
    QxCode& begin = m_block.drafts[m_parallel].code;
    begin.target = static_cast<std::uint32_t>(m_block.drafts.size());
    // Nobody knows what shadeops do: where there are two, they meet the points in their order. And
    // a uniform variable that is written here holds the value of one point after the other.
    std::size_t calls = 0;
    for (std::size_t i = m_parallel; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (draft.row && draft.row->primitive == "CALL_DSO")
            ++calls;
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
            if (IsWritten(m_block.letters[k]) && IsOneForAllPoints(m_block.operands[k]))
                begin.pointwise = true;
    }
    begin.pointwise = begin.pointwise || calls > 1;
}

/// A uniform variable, or an element of a uniform array that each point refers to.
bool QxTranslator::IsOneForAllPoints(const QxOperand& operand) const
{
    const QxStorage& storage = m_target.variables[operand.variable];
    if (storage.kind == QxStorage::Kind::Reference)
        return storage.number != 0;
    return operand.step == 0 && operand.variable != m_nowhere;
}

void QxTranslator::BeginCondition(QxCodeStep step, int flag)
{
    m_conditions.push_back(m_block.drafts.size());
    Add(step).code.flag = OperandOf(static_cast<std::uint32_t>(flag));
}

void QxTranslator::EndCondition()
{
    if (m_conditions.empty())
        Refuse("END_IF", "closes nothing");
    const std::size_t begin = m_conditions.back();
    m_conditions.pop_back();
    if (m_within && MakeFlagOperations(begin))
        return;
    if (m_within)
        Add(QxCodeStep::EndIf);
    QxCode& code = m_block.drafts[begin].code;
    code.target = static_cast<std::uint32_t>(m_block.drafts.size());
    for (std::size_t i = begin + 1; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
            if (IsWritten(m_block.letters[k]) && m_block.operands[k].variable == code.flag.variable)
                code.copyFlag = true;
    }
}

/// Brackets that only set flags to constants, as loops have them, need no mask:
///
///     IF_FALSE c; ASSIGN_BOOL_BOOL d false; SET_BOOL c; END_IF    becomes    d = d and c; c = ...
///
/// The flag that guards them comes last.
bool QxTranslator::MakeFlagOperations(std::size_t begin)
{
    struct Setting {
        QxOperand flag;
        bool value;
    };
    const QxOperand guard = m_block.drafts[begin].code.flag;
    const bool ifTrue = m_block.drafts[begin].code.step == QxCodeStep::IfTrue;
    std::vector<Setting> settings;
    for (std::size_t i = begin + 1; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (!draft.row || m_block.operands[draft.first].step == 0)
            return false;
        Setting setting = {m_block.operands[draft.first], false};
        if (draft.row->primitive == "ASSIGN_BOOL_BOOL") {
            const QxStorage& source =
                m_target.variables[m_block.operands[draft.first + 1].variable];
            if (source.kind != QxStorage::Kind::Constant)
                return false;
            setting.value = static_cast<bool>(m_target.constants[source.number].flag);
        } else if (draft.row->primitive != "SET_BOOL") {
            return false;
        }
        settings.push_back(setting);
    }
    if (settings.empty() || guard.step == 0)
        return false;
    m_block.operands.resize(m_block.drafts[begin].first);
    m_block.letters.resize(m_block.operands.size());
    m_block.drafts.resize(begin);
    std::stable_partition(settings.begin(), settings.end(), [&](const Setting& setting) {
        return setting.flag.variable != guard.variable;
    });
    for (const Setting& setting : settings) {
        const char* const name = setting.value ? (ifTrue ? "machine:or" : "machine:or not")
                                               : (ifTrue ? "machine:and not" : "machine:and");
        QxDraft& draft = Add(QxCodeStep::Kernel);
        draft.row = &RowOf(name);
        AddOperand(setting.flag, 'm');
        AddOperand(guard, 'r');
        ChooseKernels(draft);
    }
    return true;
}

void QxTranslator::TranslateArrayRef(const SqxBlock& block, const SqxInstruction& source)
{
    const auto operand = [&](std::size_t i) {
        return OperandOf(static_cast<std::uint32_t>(block.Value(source, i)));
    };
    const bool alias = m_target.variables[operand(0).variable].kind == QxStorage::Kind::Alias;
    Emit(RowOf(alias ? "machine:bind all" : "machine:bind each"),
         {{operand(0), 'w'},
          {operand(1), 'r'},
          MakeArgument(block.Value(source, 2), 'r', QxStored::Number)},
         0, *source.layout, {});
}

void QxTranslator::TranslateCheck(const SqxBlock& block, const SqxInstruction& source)
{
    std::vector<Argument> arguments = {MakeArgument(block.Value(source, 0), 'r', QxStored::Text),
                                       MakeArgument(block.Value(source, 1), 'r', QxStored::Number),
                                       MakeArgument(block.Value(source, 3), 'r', QxStored::Text)};
    arguments[0].operand.size = static_cast<std::uint32_t>(std::max(0, block.Value(source, 2)));
    Emit(*m_kernels.OfNumber(block.code[source.position]), arguments, block.Value(source, 4),
         *source.layout, {});
}

void QxTranslator::TranslateCall(const SqxBlock& block, const SqxInstruction& source)
{
    const SqxLayout& layout = *source.layout;
    const QxKernelRow* row = m_kernels.OfNumber(block.code[source.position]);
    if (!row)
        Refuse(layout.name, "is not known to this machine");
    std::vector<Argument> arguments;
    arguments.reserve(source.count);
    QxOperand flag;
    int number = 0;
    for (std::size_t i = 0; i < source.count; ++i) {
        const int value = block.Value(source, i);
        const char letter = SqxBlock::Letter(source, i);
        if (letter == 'c')
            flag = OperandOf(static_cast<std::uint32_t>(value));
        else if (letter == 's' || letter == 'd' || letter == 'i')
            number = value;
        else if (letter != 'n')
            arguments.push_back(MakeArgument(value, letter, Wanted(*row, arguments.size())));
        // The value that a message asks for.
        if (letter == 'm')
            number = static_cast<int>(m_shader.variables[static_cast<std::size_t>(value)].type);
    }
    if (row->primitive == "CALL_PRIM_FACEFORWARD")
        arguments.push_back({OperandOf(m_ng), 'r'});
    if (arguments.size() < row->operandCount ||
        (arguments.size() > row->operandCount && !row->rest))
        Refuse(layout.name, "has another number of operands");
    Emit(*row, arguments, number, layout, flag);
}

QxTranslator::Argument QxTranslator::MakeArgument(int variable, char letter, QxStored wanted)
{
    auto number = static_cast<std::uint32_t>(variable);
    const QxStorage storage = m_target.variables[number];
    const bool constant = storage.kind == QxStorage::Kind::Constant;
    if (constant && IsWritten(letter))  // a result that the call left out
        return {{m_nowhere, 0, 1, wanted}, letter};
    if (constant && storage.stored == QxStored::Number && wanted == QxStored::Triple)
        number = AddNumberConstant(m_target.constants[storage.number].numbers[0]);
    if (constant && storage.stored == QxStored::Number && wanted == QxStored::Text)
        number = AddVariable({QxStorage::Kind::Constant, QxStored::Text, false, 1, storage.number});
    if (storage.kind == QxStorage::Kind::Reference) {
        if (IsWritten(letter) && storage.stored == QxStored::Text && storage.number != 0)
            Refuse("ARRAY_REF", "lets points write one text");
        return {{0, 1, 1, storage.stored}, letter, number, true};
    }
    const QxOperand operand = OperandOf(number);
    if (wanted != QxStored::Any && (operand.stored != wanted || operand.size < 1))
        Refuse("", "has an operand of another type");
    return {operand, letter};
}

/// The instruction, in between what its references need.
void QxTranslator::Emit(const QxKernelRow& row, const std::vector<Argument>& given, int number,
                        const SqxLayout& layout, const QxOperand& flag)
{
    std::vector<Argument> arguments = given;
    std::size_t used[6] = {};
    for (Argument& argument : arguments) {
        if (!argument.isReference)
            continue;
        const auto stored = static_cast<std::size_t>(argument.operand.stored);
        if (used[stored] == m_temporaries[stored].size())
            m_temporaries[stored].push_back(
                AddVariable({QxStorage::Kind::Borrowed, argument.operand.stored, true, 1, 0}));
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

void QxTranslator::EmitMoves(const std::vector<Argument>& arguments, const SqxLayout& layout,
                             const QxOperand& flag, bool load)
{
    for (const Argument& argument : arguments) {
        if (!argument.isReference)
            continue;
        const bool text = argument.operand.stored == QxStored::Text;
        const bool written = IsWritten(argument.letter);
        if (load ? argument.letter == 'w' && !text : !written)
            continue;
        QxDraft& draft = Add(QxCodeStep::Kernel);
        draft.row = &RowOf(load ? "machine:load" : "machine:store");
        draft.code.number = load && written ? 1 : 0;
        const QxOperand reference = {argument.reference, 1, 1, argument.operand.stored};
        AddOperand(load ? argument.operand : reference, 'w');
        AddOperand(load ? reference : argument.operand, 'r');
        ChooseStep(draft, layout, flag);
        ChooseKernels(draft);
    }
}

void QxTranslator::ChooseStep(QxDraft& draft, const SqxLayout& layout, const QxOperand& flag)
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
    // A statement clears its flag elsewhere, and a message has its answer in any case.
    code.whole = draft.row->statement || layout.operands.find('m') != std::string_view::npos;
}

/// The loop that is made for these operands, if there is one.
void QxTranslator::ChooseKernels(QxDraft& draft)
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
