// Lets whole-grid calls write directly to the variable to which their result is copied.
//
//     x = SQRT(p) simd; { y = 1; z = x; }       becomes       z = SQRT(p) simd; { y = 1; }
//
// The lowering computes each call into a temporary. The copy must follow soon, in the same basic
// block and outside of guards, with no access of its destination in between, and the temporary must
// not be read again.
//
// Tested by tests/backends/ValueSpansTest.cpp.

#include "backends/SlcForwardResults.h"

#include <algorithm>

#include "backends/SlcOperandList.h"
#include "backends/SlcPrimitiveNames.h"
#include "backends/SlcValueSpans.h"
#include "icode/SlcICodes.h"

namespace {

/// The most instructions from a call to the copy of its result, so that the search is linear.
constexpr std::size_t k_mostBetween = 16;

bool IsVaryingLocal(const SlcOperand& operand)
{
    return operand->IsIdent() && operand->GetStorage()->IsLocal() && !operand->IsUniform();
}

/// Finds calls and copies.
class Kinds : private SlcAllICodeWalker {
public:
    /// Returns the instruction if it is a call whose result may be written elsewhere; otherwise
    /// null.
    [[nodiscard]] SlcPtr<SlcCallICode> CallOf(const SlcPtr<SlcICode>& code)
    {
        Look(code);
        const bool fits = m_call && m_call->m_form.simd && !m_call->m_form.condition &&
                          m_call->m_list == SlcCallICode::ArgumentList::Fixed && m_call->m_result &&
                          IsVaryingLocal(m_call->m_result);
        return fits ? m_call : nullptr;
    }
    /// Returns the instruction if it is a copy of the operand to a varying local of the same type;
    /// otherwise null.
    [[nodiscard]] SlcPtr<SlcAssignICode> CopyOf(const SlcPtr<SlcICode>& code,
                                                const SlcOperand& operand)
    {
        Look(code);
        const bool fits = m_copy && m_copy->m_source == operand && IsVaryingLocal(m_copy->m_dest) &&
                          !m_copy->m_dest->GetType()->IsArrayRefType() &&
                          SlcTypeWord(m_copy->m_dest->GetType()) == SlcTypeWord(operand->GetType());
        return fits ? m_copy : nullptr;
    }

private:
    void Look(const SlcPtr<SlcICode>& code)
    {
        m_call = nullptr;
        m_copy = nullptr;
        code->ApplyWalker(this);
    }
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcCallICode> code) override { m_call = code; }
    void Case(SlcPtr<SlcAssignICode> code) override { m_copy = code; }
    void Default(SlcPtr<SlcICode>) override {}

    SlcPtr<SlcCallICode> m_call;
    SlcPtr<SlcAssignICode> m_copy;
};

class Forwarder {
public:
    Forwarder(const SlcListICode& list, const SlcValueSpans& spans)
        : m_codes(list.m_icodes),
          m_spans(spans)
    {
    }
    [[nodiscard]] std::deque<SlcPtr<SlcICode>> Run();

private:
    void Forward(std::size_t place, const SlcPtr<SlcCallICode>& call);
    [[nodiscard]] bool IsAccessedBy(const SlcPtr<SlcICode>& code, const SlcOperand& operand);
    [[nodiscard]] bool IsAccessedBetween(const SlcOperand& operand, std::size_t call,
                                         std::size_t copy);

    std::deque<SlcPtr<SlcICode>> m_codes;  // null for those that are left out
    const SlcValueSpans& m_spans;
    Kinds m_kinds;
    SlcOperandList m_operands;
};

std::deque<SlcPtr<SlcICode>> Forwarder::Run()
{
    for (std::size_t i = 0; i < m_codes.size(); ++i)
        if (m_codes[i])
            if (const SlcPtr<SlcCallICode> call = m_kinds.CallOf(m_codes[i]))
                Forward(i, call);
    std::deque<SlcPtr<SlcICode>> rest;
    for (SlcPtr<SlcICode>& code : m_codes) {
        if (!code)
            continue;
        if (!rest.empty() && code->Is(SlcICodeTraits::ClosesRun) &&
            rest.back()->Is(SlcICodeTraits::OpensRun))
            rest.pop_back();
        else
            rest.push_back(std::move(code));
    }
    return rest;
}

void Forwarder::Forward(std::size_t place, const SlcPtr<SlcCallICode>& call)
{
    using namespace SlcICodeTraits;
    const std::size_t last = std::min(m_codes.size(), place + k_mostBetween + 1);
    for (std::size_t i = place + 1; i < last; ++i) {
        if (!m_codes[i])
            continue;
        if (m_codes[i]->Is(BeginsBlock | EndsBlock))
            return;
        if (!IsAccessedBy(m_codes[i], call->m_result))
            continue;
        const SlcPtr<SlcAssignICode> copy = m_kinds.CopyOf(m_codes[i], call->m_result);
        if (!copy || m_spans.MayCross(call->m_result, i + 1) ||
            IsAccessedBetween(copy->m_dest, place, i))
            return;
        const auto forwarded =
            MakeShared<SlcCallICode>(call->m_primitive, call->m_args, copy->m_dest, call->m_list,
                                     call->m_form, call->m_funcEntry);
        forwarded->m_node = call->m_node;
        m_codes[place] = forwarded;
        m_codes[i] = nullptr;
        return;
    }
}

bool Forwarder::IsAccessedBy(const SlcPtr<SlcICode>& code, const SlcOperand& operand)
{
    const auto& rows = m_operands.Of(code);
    return std::any_of(rows.begin(), rows.end(),
                       [&](const SlcOperandList::Row& row) { return row.operand == operand; });
}

/// True if the call writes the operand as an argument, or an instruction between it and the copy
/// reads or writes it.
bool Forwarder::IsAccessedBetween(const SlcOperand& operand, std::size_t call, std::size_t copy)
{
    for (const auto& [argument, access] : m_operands.Of(m_codes[call]))
        if (argument == operand && access == SlcOperandList::Access::Write)
            return true;
    for (std::size_t i = call + 1; i < copy; ++i)
        if (m_codes[i] && IsAccessedBy(m_codes[i], operand))
            return true;
    return false;
}

}  // namespace

SlcPtr<SlcListICode> SlcForwardResults(const SlcListICode& list, const SlcValueSpans& spans)
{
    const auto forwarded = MakeShared<SlcListICode>();
    forwarded->m_icodes = Forwarder(list, spans).Run();
    return forwarded;
}
