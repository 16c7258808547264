// Translates each block in one walk, instruction by instruction:
//
//     IF_TRUE f;  MULT_FLOAT_FLOAT x y 2;  END_IF
// becomes
//     IfTrue f -> after;  kernel of varying times uniform, operands x, y and the constant;  EndIf
//
// Conditions outside parallel brackets, whose flags are uniform, become jumps. Instruction numbers
// and targets of the file are resolved here, and operands are checked against the storage that
// kernels require, so that a run does neither. Then separate passes drop known jumps, join
// brackets, merge conditions, fuse instructions, simplify masks, and move values that live only in
// one strip to storage for a strip.
//
// Tested by tests/machine, and with whole shaders by tests/host/AgreementTest.cpp.

#include "machine/translate/QxTranslator.h"

#include <algorithm>

#include "machine/translate/QxFuse.h"
#include "machine/translate/QxFuseFlags.h"
#include "machine/translate/QxJoinRuns.h"
#include "machine/translate/QxKnownJumps.h"
#include "machine/translate/QxMergeConditions.h"
#include "machine/translate/QxSimplifyMasks.h"
#include "machine/translate/QxStripLocals.h"
#include "sqx/SqxNumbers.h"

namespace {

QxStored Wanted(const QxKernelRow& row, std::size_t place)
{
    if (place < row.operandCount)
        return row.operands[place];
    return row.rest ? *row.rest : QxStored::Any;
}

}  // namespace

QxTranslator::QxTranslator(const SqxShader& shader, const QxKernelTable& kernels,
                           QxMachineCode& target)
    : m_shader(shader),
      m_kernels(kernels),
      m_target(target),
      m_variables(shader, target),
      m_writer(kernels, m_variables),
      m_block(m_writer.Block())
{
}

void QxTranslator::Run()
{
    Translate(m_shader.main, std::nullopt, m_target.main);
    for (const SqxInitializer& initializer : m_shader.initializers) {
        auto& group = initializer.perPoint ? m_target.perPoint : m_target.once;
        group.emplace_back();
        group.back().parameter = initializer.parameter;
        group.back().result = static_cast<std::uint32_t>(initializer.result);
        Translate(initializer.code, group.back().result, group.back().code);
    }
    DropUnusedVariables();
}

/// Locals that no code uses, such as those that other variables have replaced everywhere, need no
/// storage for a grid, and neither does the normal for `faceforward` if nothing calls it.
void QxTranslator::DropUnusedVariables()
{
    std::vector<char> used(m_target.variables.size(), 0);
    const auto mark = [&used](const QxProgramBlock& block) {
        for (const QxCode& code : block.codes) {
            used[code.flag.variable] = 1;
            for (std::uint32_t k = 0; k < code.count; ++k)
                used[code.operands[k].variable] = 1;
        }
        for (const std::uint32_t variable : block.clears)
            used[variable] = 1;
    };
    mark(m_target.main);
    for (const auto* group : {&m_target.once, &m_target.perPoint})
        for (const QxMachineCode::Initializer& initializer : *group) {
            mark(initializer.code);
            used[initializer.result] = 1;
        }
    for (std::size_t i = 0; i < used.size(); ++i) {
        QxStorage& storage = m_target.variables[i];
        if (!used[i] &&
            (storage.kind == QxStorage::Kind::Local || storage.kind == QxStorage::Kind::Ng))
            storage = {QxStorage::Kind::Nowhere, QxStored::Number, false, 1, 0};
    }
}

void QxTranslator::Translate(const SqxBlock& block, std::optional<std::uint32_t> result,
                             QxProgramBlock& target)
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
    m_writer.Add(QxCodeStep::Stop);
    for (QxDraft& draft : m_block.drafts)
        if (draft.jumps)
            draft.code.target = static_cast<std::uint32_t>(m_starts[draft.code.target]);

    QxDropKnownJumps(m_block, m_variables);
    QxJoinRuns(m_block, m_variables);
    m_block.MarkWrittenFlags(m_variables.Count());
    QxMergeConditions(m_block);
    QxLiveness liveness(m_block, m_target.variables, result);
    if (liveness.Compute()) {
        target.clears = liveness.ReadFirst();
        QxFuse(m_writer, liveness);
        QxIgnoreMasks(m_block, liveness);
        QxFuseFlags(m_writer, liveness, m_variables.Count());
        QxUseStripLocals(m_block, liveness, m_variables);
        QxDropShortBrackets(m_block);
        QxOmitTests(m_block);
    } else {
        target.clears = liveness.Locals();
    }
    Finish(target);
}

/// Moves the block into the program, and sets what depends on the final order of its instructions.
void QxTranslator::Finish(QxProgramBlock& target)
{
    target.operands = std::move(m_block.operands);
    target.codes.reserve(m_block.drafts.size());
    const std::vector<std::int32_t> loops = LoopsOverLights();
    unsigned int depth = 0;
    for (const QxDraft& draft : m_block.drafts) {
        QxCode& code = target.codes.emplace_back(draft.code);
        code.operands = target.operands.data() + draft.first;
        for (std::uint32_t k = 0; k < code.count; ++k)
            if (SqxIsWritten(m_block.letters[draft.first + k]))
                m_target.variables[code.operands[k].variable].written = true;
        // `GridIf` must test its flag even for one point, so it has no kernel for one point.
        if (draft.row && code.step != QxCodeStep::GridIf)
            code.point = draft.row->point;
        if (QxIsGoto(code.step)) {
            code.number = loops[code.target];
        } else if (code.step == QxCodeStep::Where || QxIsCondition(code.step)) {
            code.number = static_cast<std::int32_t>(code.target - (target.codes.size() - 1));
            if (QxIsCondition(code.step))
                m_target.depth = std::max(m_target.depth, ++depth);
        } else if (code.step == QxCodeStep::EndIf) {
            --depth;
        }
    }
}

/// Returns for each draft the number of loops over lights around it. The start of a loop is outside
/// of it, the end inside.
std::vector<std::int32_t> QxTranslator::LoopsOverLights() const
{
    std::vector<std::int32_t> loops;
    loops.reserve(m_block.drafts.size());
    std::int32_t open = 0;
    for (const QxDraft& draft : m_block.drafts) {
        loops.push_back(open);
        if (draft.code.step == QxCodeStep::BeginLights)
            ++open;
        else if (draft.code.step == QxCodeStep::EndLights)
            --open;
    }
    return loops;
}

void QxTranslator::TranslateInstruction(const SqxBlock& block, const SqxInstruction& source)
{
    if (TranslateMark(block, source))
        return;
    const SqxPrimitive primitive = SqxBlock::Primitive(source);
    if (primitive == SqxPrimitive::ARRAY_REF)
        TranslateArrayRef(block, source);
    else if (primitive == SqxPrimitive::CHECK_VALID_ARRAY_INDEX)
        TranslateCheck(block, source);
    else
        TranslateCall(block, source);
}

/// Translates jumps and brackets. Returns false for other instructions.
bool QxTranslator::TranslateMark(const SqxBlock& block, const SqxInstruction& source)
{
    const auto value = [&](std::size_t i) { return block.Value(source, i); };
    const auto jump = [&](QxCodeStep step, int position) -> QxDraft& {
        QxDraft& draft = m_writer.Add(step);
        draft.code.target =
            static_cast<std::uint32_t>(block.IndexOf(static_cast<std::size_t>(position)));
        draft.jumps = true;
        if (m_writer.IsWithin())
            QxDraftWriter::Refuse(source.layout->name, "jumps within parallel brackets");
        return draft;
    };
    switch (SqxBlock::Primitive(source)) {
    case SqxPrimitive::BEGIN_PARALLEL:
        m_parallel = m_block.drafts.size();
        m_writer.SetWithin(true);
        m_writer.Add(QxCodeStep::BeginParallel);
        return true;
    case SqxPrimitive::END_PARALLEL:
        EndParallel();
        return true;
    case SqxPrimitive::IF_TRUE:
        BeginCondition(m_writer.IsWithin() ? QxCodeStep::IfTrue : QxCodeStep::GotoIfFalse,
                       value(0));
        return true;
    case SqxPrimitive::IF_FALSE:
        BeginCondition(m_writer.IsWithin() ? QxCodeStep::IfFalse : QxCodeStep::GotoIfTrue,
                       value(0));
        return true;
    case SqxPrimitive::END_IF:
        EndCondition();
        return true;
    case SqxPrimitive::GOTO:
        jump(QxCodeStep::Goto, value(0));
        return true;
    case SqxPrimitive::IF_TRUE_GOTO:
        jump(QxCodeStep::GotoIfTrue, value(1)).code.flag =
            m_variables.OperandOf(static_cast<std::uint32_t>(value(0)));
        return true;
    case SqxPrimitive::IF_FALSE_GOTO:
        jump(QxCodeStep::GotoIfFalse, value(1)).code.flag =
            m_variables.OperandOf(static_cast<std::uint32_t>(value(0)));
        return true;
    case SqxPrimitive::BEGIN_ILLUMINANCE:
        jump(QxCodeStep::BeginLights, value(0));
        return true;
    case SqxPrimitive::END_ILLUMINANCE:
        jump(QxCodeStep::EndLights, value(0));
        return true;
    default:
        return false;
    }
}

void QxTranslator::EndParallel()
{
    m_writer.SetWithin(false);
    m_writer.Add(QxCodeStep::EndParallel);
    QxCode& begin = m_block.drafts[m_parallel].code;
    begin.target = static_cast<std::uint32_t>(m_block.drafts.size());
    // The effects of shadeops are unknown, so brackets with two or more calls run point by point.
    // So do brackets that write a uniform variable, which takes the value of one point after
    // another.
    std::size_t calls = 0;
    for (std::size_t i = m_parallel; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (draft.row && draft.row->primitive == SqxPrimitive::CALL_DSO)
            ++calls;
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
            if (SqxIsWritten(m_block.letters[k]) &&
                m_variables.IsOneForAllPoints(m_block.operands[k]))
                begin.pointwise = true;
    }
    begin.pointwise = begin.pointwise || calls > 1;
}

void QxTranslator::BeginCondition(QxCodeStep step, int flag)
{
    m_conditions.push_back(m_block.drafts.size());
    m_writer.Add(step).code.flag = m_variables.OperandOf(static_cast<std::uint32_t>(flag));
}

void QxTranslator::EndCondition()
{
    if (m_conditions.empty())
        QxDraftWriter::Refuse("END_IF", "closes nothing");
    const std::size_t begin = m_conditions.back();
    m_conditions.pop_back();
    if (m_writer.IsWithin() && MakeFlagOperations(begin))
        return;
    if (m_writer.IsWithin())
        m_writer.Add(QxCodeStep::EndIf);
    m_block.drafts[begin].code.target = static_cast<std::uint32_t>(m_block.drafts.size());
}

/// Replaces conditional brackets that only set flags to constants, as is common in loops, by
/// operations that need no mask:
///
///     IF_FALSE c; ASSIGN_BOOL_BOOL d false; SET_BOOL c; END_IF  becomes  d = d and c; c = c and c
///
/// The flag of the guard itself is set last. Returns false if the brackets are empty or do anything
/// else, or if a flag is uniform.
bool QxTranslator::MakeFlagOperations(std::size_t begin)
{
    struct Setting {
        QxOperand flag;
        bool value;
    };
    const QxOperand guard = m_block.drafts[begin].code.flag;
    if (guard.step == 0)
        return false;
    const bool ifTrue = m_block.drafts[begin].code.step == QxCodeStep::IfTrue;
    std::vector<Setting> settings;
    for (std::size_t i = begin + 1; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (!draft.row || m_block.operands[draft.first].step == 0)
            return false;
        Setting setting = {m_block.operands[draft.first], false};
        if (draft.row->primitive == SqxPrimitive::ASSIGN_BOOL_BOOL) {
            const QxConstant* source =
                m_variables.ConstantOf(m_block.operands[draft.first + 1].variable);
            if (!source)
                return false;
            setting.value = static_cast<bool>(source->flag);
        } else if (draft.row->primitive != SqxPrimitive::SET_BOOL) {
            return false;
        }
        settings.push_back(setting);
    }
    if (settings.empty())
        return false;
    m_block.operands.resize(m_block.drafts[begin].first);
    m_block.letters.resize(m_block.operands.size());
    m_block.drafts.resize(begin);
    std::stable_partition(settings.begin(), settings.end(), [&](const Setting& setting) {
        return setting.flag.variable != guard.variable;
    });
    for (const Setting& setting : settings) {
        const SqxPrimitive step =
            setting.value ? (ifTrue ? SqxPrimitive::MACHINE_OR : SqxPrimitive::MACHINE_OR_NOT)
                          : (ifTrue ? SqxPrimitive::MACHINE_AND_NOT : SqxPrimitive::MACHINE_AND);
        QxDraft& draft = m_writer.Add(QxCodeStep::Kernel);
        draft.row = &m_writer.RowOf(step);
        m_writer.AddOperand(setting.flag, 'm');
        m_writer.AddOperand(guard, 'r');
        m_writer.ChooseKernels(draft);
    }
    return true;
}

void QxTranslator::TranslateArrayRef(const SqxBlock& block, const SqxInstruction& source)
{
    const auto operand = [&](std::size_t i) {
        return m_variables.OperandOf(static_cast<std::uint32_t>(block.Value(source, i)));
    };
    const bool alias = m_variables[operand(0).variable].kind == QxStorage::Kind::Alias;
    m_writer.Emit(
        m_writer.RowOf(alias ? SqxPrimitive::MACHINE_BIND_ALL : SqxPrimitive::MACHINE_BIND_EACH),
        {{operand(0), 'w'},
         {operand(1), 'r'},
         m_writer.MakeArgument(block.Value(source, 2), 'r', QxStored::Number)},
        0, *source.layout, {});
}

void QxTranslator::TranslateCheck(const SqxBlock& block, const SqxInstruction& source)
{
    std::vector<QxDraftWriter::Argument> arguments = {
        m_writer.MakeArgument(block.Value(source, 0), 'r', QxStored::Text),
        m_writer.MakeArgument(block.Value(source, 1), 'r', QxStored::Number),
        m_writer.MakeArgument(block.Value(source, 3), 'r', QxStored::Text)};
    arguments[0].operand.size = static_cast<std::uint32_t>(std::max(0, block.Value(source, 2)));
    m_writer.Emit(*m_kernels.OfNumber(block.code[source.position]), arguments,
                  block.Value(source, 4), *source.layout, {});
}

void QxTranslator::TranslateCall(const SqxBlock& block, const SqxInstruction& source)
{
    const SqxLayout& layout = *source.layout;
    const QxKernelRow* row = m_kernels.OfNumber(block.code[source.position]);
    if (!row)
        QxDraftWriter::Refuse(layout.name, "is not known to this machine");
    std::vector<QxDraftWriter::Argument> arguments;
    arguments.reserve(source.count);
    QxOperand flag;
    int number = 0;
    for (std::size_t i = 0; i < source.count; ++i) {
        const int value = block.Value(source, i);
        const char letter = SqxBlock::Letter(source, i);
        if (letter == 'c')
            flag = m_variables.OperandOf(static_cast<std::uint32_t>(value));
        else if (letter == 's' || letter == 'd' || letter == 'i')
            number = value;
        else if (letter != 'n')
            arguments.push_back(
                m_writer.MakeArgument(value, letter, Wanted(*row, arguments.size())));
        if (row->primitive == SqxPrimitive::CALL_DSO && letter == 'r')
            arguments.back().operand.takenBack = IsTakenBack(block, source, i);
        // A message call also needs the type of the variable that receives the answer; other
        // kernels ignore this number.
        if (letter == 'm')
            number = static_cast<int>(m_shader.variables[static_cast<std::size_t>(value)].type);
    }
    if (row->primitive == SqxPrimitive::CALL_PRIM_FACEFORWARD)
        arguments.push_back({m_variables.OperandOf(m_variables.Ng()), 'r'});
    if (arguments.size() < row->operandCount ||
        (arguments.size() > row->operandCount && !row->rest))
        QxDraftWriter::Refuse(layout.name, "has another number of operands");
    m_writer.Emit(*row, arguments, number, layout, flag);
}

/// True if value `i` of a shadeop call is an array to which the shadeop may write numbers. The
/// compiler passes a copy of an array that the shader may not write.
bool QxTranslator::IsTakenBack(const SqxBlock& block, const SqxInstruction& call,
                               std::size_t i) const
{
    constexpr std::size_t k_result = 2;  // after the number of the shadeop and that of arguments
    const auto value = [&](std::size_t k) {
        return static_cast<std::size_t>(block.Value(call, k));
    };
    const SqxVariable& array = m_shader.variables[value(i)];
    const bool mayBeWritten =
        !array.reference && (array.kind == SqxVariableKind::Local ||
                             (array.kind == SqxVariableKind::Parameter && array.output));
    return mayBeWritten && m_target.shadeops &&
           m_target.shadeops->MayWrite(value(0), value(1), i - k_result);
}
