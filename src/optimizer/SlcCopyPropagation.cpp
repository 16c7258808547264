// Constant propagation in one forward walk, fed instruction by instruction.
//
//     g = false; x = 1; if f L; y = x; endif L; h = g; z = x
// becomes
//     g = false; x = 1; if f L; y = 1; endif L; h = false; z = x
//
// Inside the guard both are known. After the guard `x` counts as unknown: if the guarded code wrote
// `x`, points that skip it would hold another value, and proving that it does not would require a
// comparison of all values at each join. For flags that cost is justified, since they decide jumps:
// bools are merged over all incoming edges (CommonBools), all other values are dropped.
//
// A whole-grid form expects varying operands as arrays and has no variant with a constant, so
// `m_keepVarying` prevents the replacement (the trait WholeGrid). The model is Mark Wegman and
// Kenneth Zadeck, "Constant propagation with conditional branches" (1991): edges that control never
// takes are dropped (DropEdge). But ours propagates nothing over back edges, and makes a single
// walk in code order, which the rounds of SlcOptimizeBasicBlocks repeat.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcCopyPropagation, ...).

#include "optimizer/SlcCopyPropagation.h"

#include <utility>

#include "icode/SlcICodes.h"
#include "symbols/SlcCallFormals.h"

SlcCopyPropagation::SlcCopyPropagation(const SlcControlFlowGraph& graph,
                                       const SlcVariableNumbers& variables)
    : m_nothing{SlcConstantTable(variables.Count()), SlcConstantTable(variables.Count())},
      m_known(m_nothing),
      m_atEnd(graph.Blocks().size(), m_nothing),
      m_droppedEdge(graph.Blocks().size(), -1),
      m_unreachable(graph.Blocks().size(), false)
{
}

bool SlcCopyPropagation::Enters(int predecessor, int block) const
{
    return !m_unreachable[predecessor] && m_droppedEdge[predecessor] != block;
}

void SlcCopyPropagation::DropEdge(const SlcBasicBlock& block, int successor)
{
    m_droppedEdge[block.GetBlockId()] = successor;
}

void SlcCopyPropagation::EnterBlock(const SlcBasicBlock& block)
{
    const int id = block.GetBlockId();
    int first = -1;
    bool isOnly = true;
    bool isAroundLoop = false;
    for (const int predecessor : block.GetPredBlocks()) {
        if (!Enters(predecessor, id))
            continue;
        isOnly = first < 0;
        first = isOnly ? predecessor : first;
        isAroundLoop = isAroundLoop || predecessor >= id;
    }
    m_known = m_nothing;
    m_unreachable[id] = id != 0 && first < 0;
    // A predecessor that does not precede the block in code order is the source of a back edge, at
    // whose end the values are not known yet.
    if (first < 0 || isAroundLoop)
        return;
    m_known = m_atEnd[first];
    if (isOnly)
        return;
    m_known.others = m_nothing.others;
    for (const int predecessor : block.GetPredBlocks())
        if (Enters(predecessor, id))
            m_known.bools =
                SlcConstantTable::CommonBools(m_known.bools, m_atEnd[predecessor].bools);
}

void SlcCopyPropagation::LeaveBlock(const SlcBasicBlock& block)
{
    m_atEnd[block.GetBlockId()] = m_known;
}

SlcOperand SlcCopyPropagation::FindBool(const SlcOperand& operand) const
{
    return operand->IsBool() ? operand : Find(operand);
}

SlcOperand SlcCopyPropagation::Find(const SlcOperand& operand) const
{
    const int number = SlcVariableNumbers::Of(operand);
    if (number < 0)
        return nullptr;
    return (operand->GetType()->IsBoolType() ? m_known.bools : m_known.others).Find(number);
}

void SlcCopyPropagation::Read(SlcOperand& operand)
{
    if (SlcVariableNumbers::Of(operand) < 0) {
        if (!operand->IsPIVariable())
            return;
        operand = SlcLexType::GetPI();
        m_changed = true;
        return;
    }
    if (m_keepVarying && !operand->IsUniform())
        return;
    const SlcOperand constant = Find(operand);
    // Code that reads a uniform operand may rely on one value for all points.
    const bool keepsDetail = constant && (constant->IsUniform() || !operand->IsUniform());
    if (keepsDetail && constant->GetType()->IsSameType(operand->GetType())) {
        operand = constant;
        m_changed = true;
    }
}

void SlcCopyPropagation::Write(SlcOperand& operand)
{
    if (const int number = SlcVariableNumbers::Of(operand); number >= 0) {
        (operand->GetType()->IsBoolType() ? m_known.bools : m_known.others).Set(number, nullptr);
    }
}

void SlcCopyPropagation::Learn(const SlcOperand& dest, const SlcOperand& source)
{
    const int number = SlcVariableNumbers::Of(dest);
    const SlcTypeNode* type = dest->GetType();
    if (number < 0 || source->IsIdent() || type->IsArrayType() || type->IsArrayRefType() ||
        type->IsMatrixType())
        return;
    if (!type->IsBoolType())
        m_known.others.Set(number, source);
    else if (source->IsBool())
        m_known.bools.Set(number, source);
}

void SlcCopyPropagation::Propagate(const SlcPtr<SlcICode>& code)
{
    m_keepVarying = code->Is(SlcICodeTraits::WholeGrid);
    const bool hadChanged = std::exchange(m_changed, false);
    Visit(code);
    if (m_changed)
        code->m_flowIndex = -1;
    m_changed = m_changed || hadChanged;
    m_keepVarying = false;
}

void SlcCopyPropagation::Case(SlcPtr<SlcAssignICode> code)
{
    SlcOperandWalker::Case(code);
    Learn(code->m_dest, code->m_source);
}

void SlcCopyPropagation::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    SlcOperandWalker::Case(code);
    if (code->m_source->IsFloat())
        Learn(code->m_dest, SlcLexType::Float(-code->m_source->GetFloat()));
}

void SlcCopyPropagation::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    const SlcOperand source = FindBool(code->m_source);
    SlcOperandWalker::Case(code);
    if (source)
        Learn(code->m_dest, source);
}

void SlcCopyPropagation::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    const SlcOperand source = FindBool(code->m_source);
    SlcOperandWalker::Case(code);
    // With an outer flag, the result is true only where that flag is true.
    if (source && (source->GetBool() || code->m_outer.Null()))
        Learn(code->m_dest, SlcLexType::Bool(!source->GetBool()));
}

bool SlcCopyPropagation::ForgetsReads(const SlcICode& code)
{
    return dynamic_cast<const SlcOrBoolFlagICode*>(&code) != nullptr;
}

// No operand is replaced by a constant, since this instruction expects flags as arrays. The known
// values of `m_left` and `m_right` are forgotten like that of `m_dest`, which loses at most a
// constant.
void SlcCopyPropagation::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    Write(code->m_left);
    Write(code->m_right);
    Write(code->m_dest);
}

void SlcCopyPropagation::Case(SlcPtr<SlcCallICode> code)
{
    const SlcCallFormal unknown{SlcTypeNode::AAnyType(), SlcDetailNode::AUnknown(), true};
    std::vector<std::size_t> written;
    for (std::size_t i = 0; i < code->m_args.size(); ++i) {
        // A texture access has no entry that says which arguments may be constants, so none is
        // replaced. It writes none of them; forgetting their values loses at most a constant.
        const SlcCallFormal formal =
            code->m_funcEntry ? SlcFormalAt(*code->m_funcEntry, i) : unknown;
        m_keepVarying = !formal.detail->IsUniform();
        if (formal.isOutput)
            written.push_back(i);
        else
            Read(code->m_args[i]);
    }
    m_keepVarying = false;
    for (const std::size_t i : written)
        Write(code->m_args[i]);
    if (code->m_result)
        Write(code->m_result);
    // The condition is not replaced, since there is no form with a constant condition. It is not
    // written either; forgetting its value loses at most a constant.
    if (code->m_form.condition)
        Write(code->m_form.condition);
}

void SlcCopyPropagation::Case(SlcPtr<SlcCallDSOICode> code)
{
    for (SlcOperand& arg : code->m_args)
        Write(arg);
    if (code->m_result)
        Write(code->m_result);
}

void SlcCopyPropagation::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    Write(code->m_source);
    Write(code->m_dest);
}
