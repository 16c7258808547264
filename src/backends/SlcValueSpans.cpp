// Finds which instructions use a value.
//
//     { x = p; y = x; }                   0 writes x, 1 reads it: span 0..1
//     { x = p; f?( x = 1; ) y = x; }      one span 0..2, since both values may be read
//     { f?( x = 1; ) f?( y = x; ) }       span 0..1: f is the same
//     { f?( x = 1; ) y = x; }             x is left out: where f is false, an older value is read
//
// A read is covered if a write since the last label computed the value for all of its points
// (SlcPointSets). A variable is left out if any read is not, so that the values of the others do
// not outlive a label. An instruction that may skip points, except a call, counts as reading its
// result.
//
// Tested by tests/backends/ValueSpansTest.cpp.

#include "backends/SlcValueSpans.h"

#include <algorithm>

#include "backends/SlcPointSets.h"
#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"
#include "sqx/SqxCard.h"

class SlcValueSpans::Finder : private SlcOperandWalker {
public:
    [[nodiscard]] std::map<SlcOperand, std::vector<Span>> SpansOf(const SlcListICode& list,
                                                                  std::deque<SlcOperand> results)
    {
        for (const SlcPtr<SlcICode>& code : list.m_icodes) {
            m_isPartial = code->Is(SlcICodeTraits::PartialWrite | SlcICodeTraits::PartialIfLimited);
            Visit(code);
            ++m_place;
        }
        for (SlcOperand& result : results)
            Read(result);
        std::map<SlcOperand, std::vector<Span>> spans;
        for (auto& [operand, variable] : m_variables)
            if (!variable.isLeftOut)
                spans.emplace_hint(spans.end(), operand, std::move(variable.spans));
        return spans;
    }

private:
    struct Variable {
        std::vector<Span> spans;
        bool isLeftOut = false;
        int points = -1;        // where the current value is computed; -1 before any write
        std::size_t write = 0;  // the first instruction that computed it
    };

    void Read(SlcOperand& operand) override
    {
        Variable* const variable = Find(operand);
        if (!variable)
            return;
        if (!m_sets.IsWithin(m_readsAll ? m_sets.All() : m_sets.Current(), variable->points))
            variable->isLeftOut = true;
        else if (variable->spans.empty() || variable->spans.back().write != variable->write)
            variable->spans.push_back({variable->write, m_place});
        else
            variable->spans.back().lastRead = m_place;
    }
    void Write(SlcOperand& operand) override
    {
        if (operand->IsIdent() && operand->GetType()->IsBoolType()) {
            if (m_clears)
                m_sets.Clear(operand);
            else
                m_sets.Change(operand);
        }
        if (m_isPartial)
            Read(operand);
        else if (Variable* const variable = Find(operand))
            Compute(*variable);
    }
    /// Unless all points of the current value are computed again, it changes only in part.
    void Compute(Variable& variable)
    {
        const int points = m_sets.Current();
        if (m_sets.IsForgotten(variable.points) || m_sets.IsWithin(variable.points, points)) {
            variable.points = points;
            variable.write = m_place;
        } else if (const int both = m_sets.UnionOfParts(variable.points, points); both >= 0) {
            variable.points = both;
        }
    }

    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override
    {
        m_clears = code->m_source->IsBool() && !code->m_source->GetBool();
        SlcOperandWalker::Case(code);
        m_clears = false;
    }
    void Case(SlcPtr<SlcBreakICode> code) override { ClearIn(code); }
    void Case(SlcPtr<SlcContinueICode> code) override { ClearIn(code); }
    template <class Code>
    void ClearIn(const SlcPtr<Code>& code)
    {
        m_clears = true;
        SlcOperandWalker::Case(code);
        m_clears = false;
    }
    void Case(SlcPtr<SlcAssignSIMDICode> code) override
    {
        const bool isFlag = code->m_dest->GetType()->IsBoolType();
        const int limit = isFlag ? m_sets.Select(code->m_source, true) : -1;
        SlcOperandWalker::Case(code);
        if (isFlag)
            m_sets.Limit(code->m_dest, limit);
    }
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override
    {
        const int limit = code->m_outer ? m_sets.Select(code->m_outer, true) : -1;
        const int inverse = m_sets.Select(code->m_source, false);
        SlcOperandWalker::Case(code);
        m_sets.Limit(code->m_dest, inverse);
        if (code->m_outer)
            m_sets.Limit(code->m_dest, limit);
    }
    void Case(SlcPtr<SlcCallICode> code) override
    {
        m_isPartial = false;
        m_readsAll = SqxCardOf(code->m_primitive).IsGridOnly();
        const SlcOperand condition = code->m_form.condition;
        if (condition) {
            Read(code->m_form.condition);
            m_sets.Enter(condition, true);
        }
        SlcOperandWalker::Case(code);
        if (condition)
            m_sets.Leave();
        m_readsAll = false;
    }
    void Case(SlcPtr<SlcIfICode> code) override { Open(*code, true); }
    void Case(SlcPtr<SlcIfFalseICode> code) override { Open(*code, false); }
    void Open(SlcIfICode& guard, bool wanted)
    {
        Read(guard.m_flag);
        m_sets.Enter(guard.m_flag, wanted);
    }
    void Case(SlcPtr<SlcEndIfICode>) override { m_sets.Leave(); }
    void Case(SlcPtr<SlcLabelICode>) override { m_sets.StartAgain(); }
    void Case(SlcPtr<SlcBeginIlluminanceICode>) override { m_sets.StartAgain(); }
    void Case(SlcPtr<SlcEndIlluminanceICode>) override { m_sets.StartAgain(); }

    /// Returns null for an operand that is not followed.
    [[nodiscard]] Variable* Find(const SlcOperand& operand)
    {
        if (!operand->IsIdent() || !operand->GetStorage()->IsLocal() || operand->IsUniform())
            return nullptr;
        const SlcTypeNode* type = operand->GetType();
        if (type->IsArrayType() || type->IsArrayRefType() || type->IsStringType())
            return nullptr;
        return &m_variables[operand];
    }

    std::map<SlcOperand, Variable> m_variables;
    SlcPointSets m_sets;
    std::size_t m_place = 0;
    bool m_isPartial = false;  // the current instruction may leave values unchanged
    bool m_clears = false;     // it sets flags to false
    bool m_readsAll = false;   // it reads neighbours of the points that it computes
};
SlcValueSpans::SlcValueSpans(const SlcListICode& list, const std::deque<SlcOperand>& results)
    : m_spans(Finder().SpansOf(list, results))
{
}

bool SlcValueSpans::MayCross(const SlcOperand& operand, std::size_t place) const
{
    const auto found = m_spans.find(operand);
    if (found == m_spans.end())
        return true;
    // The first span that does not end before `place`; later ones begin after it.
    const auto span =
        std::lower_bound(found->second.begin(), found->second.end(), place,
                         [](const Span& each, std::size_t begin) { return each.lastRead < begin; });
    return span != found->second.end() && span->write < place;
}
