// Computes the details inside a function for one call, by walking the body in source order. A
// variable without a declared detail gets the detail of its initializer. An assignment makes such a
// variable at least open (unknown); a call that writes it, such as setcomp(), may keep it uniform:
//
//     float f(float x) { float y = 1; if (x > 0.5) y = 2; return y; }
//
//     f(2)     x and the guard are uniform; the assignment makes y open, so the call is open
//     f(s)     x and the guard are varying: the assignment makes y varying, since the points that
//              skip it keep the first value
//
// A write has at least the detail of its guards (Written), and of each `break`, `continue` or
// `return` that some points have executed earlier (Leave). A loop is walked until a round raises no
// detail above its value at the start (WalkLoop). This ends, since details only rise, from uniform
// through open to varying; details that still change after a few rounds are set to varying. Reports
// are made in a last round, when all details are final.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp, and by all levels against each other in
// tests/random.

#include "semantics/SlcCheckInlineDetail.h"

#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcInlineDetails.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

// After this round of a loop, its changed details are set to varying. Most loops end earlier; the
// limit bounds the cost of nested loops.
constexpr int k_roundsOfOne = 4;

/// Combines two guards; null means that there is no condition.
SlcDetailNode* CombineGuards(SlcDetailNode* first, SlcDetailNode* second)
{
    if (!first || !second)
        return first ? first : second;
    return SlcDetailNode::Combine(first, second);
}

}  // namespace

SlcCheckInlineDetail::SlcCheckInlineDetail(SlcPtr<SlcSemanticError> errors,
                                           const SlcCheckInlineDetail* around)
    : m_errors(std::move(errors)),
      m_outerGuard(around ? CombineGuards(around->Guard(), around->m_outerGuard) : nullptr),
      m_journal(around ? around->m_journal : &m_ownJournal)
{
}

SlcDetailNode* SlcCheckInlineDetail::operator()(SlcSyntaxNode* body, const SlcCallPlace& place)
{
    m_place = place;
    // The detail that the context requests applies only to the result.
    m_wanted = std::exchange(m_place.wanted, nullptr);
    m_condition = SlcDetailNode::AUniform();
    m_guard = nullptr;
    m_left = {{nullptr, Levels::Counted}};
    m_result = nullptr;
    try {
        body->ApplyWalker(this);
    } catch (const EndCheckInline& end) {
        return end.detail;
    }
    return m_result ? m_result : SlcDetailNode::AVarying();
}

SlcDetailNode* SlcCheckInlineDetail::Guard() const
{
    return CombineGuards(m_guard, m_left.back().detail);
}

void SlcCheckInlineDetail::Written(const SlcPtr<SlcVarSymbolEntry>& variable, SlcDetailNode* detail,
                                   Extent extent)
{
    for (SlcPtr<SlcVarSymbolEntry> entry = variable; entry; entry = entry->GetOuter()) {
        if (!entry->GetDetail()->IsUnknownDetail())
            continue;
        const bool isOwn = m_own.count(&*entry) != 0;
        SlcDetailNode* const guard = isOwn ? Guard() : CombineGuards(Guard(), m_outerGuard);
        SlcDetailNode* written = guard ? SlcDetailNode::Combine(detail, guard) : detail;
        // A variable outside the body may be one of the shader, whose code is not evaluated: such a
        // variable is never known to be uniform.
        if (guard || !isOwn || extent == Extent::Part)
            written = SlcDetailNode::Combine(written, SlcEffectiveDetail(entry));
        m_journal->NoteWrite(*entry);
        entry->SetInlineDetail(written);
    }
}

void SlcCheckInlineDetail::Written(const SlcExprNode* argument, SlcDetailNode* detail)
{
    if (!argument->IsReferenceExpr())
        return;
    const auto& variable = static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry();
    const auto* element = dynamic_cast<const SlcArrayRefExprNode*>(argument);
    if (element)
        detail = SlcDetailNode::Combine(detail, SlcInlineDetailOf(element->GetIndex()));
    Written(variable, detail, element ? Extent::Part : Extent::Whole);
}

void SlcCheckInlineDetail::Defined(SlcVarSymbolEntry& variable, SlcDetailNode* detail)
{
    m_journal->NoteDefinition(variable);
    variable.SetInlineDetail(detail);
}

void SlcCheckInlineDetail::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcCheckInlineDetail::Case(SlcExprNode* node)
{
    node->WalkIn(this);
    m_errors->FatalError(node, "Expression not treated by inlining");
}

void SlcCheckInlineDetail::Case(SlcFuncDefStmtNode*)
{
    // A nested function is evaluated at its calls.
}

void SlcCheckInlineDetail::Case(SlcDefExprNode* node)
{
    SlcExprNode* initializer = node->GetInitializer();
    if (initializer)
        initializer->ApplyWalker(this);
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null()) {
        m_errors->Warning(node, "Def expr id not found during inline expansion of function",
                          node->GetIdent()->GetName(), 1);
        return;
    }
    SlcDetailNode* detail = entry->GetDetail();
    if (detail->IsUnknownDetail() && initializer)
        detail = SlcInlineDetailOf(initializer);
    else if (detail->IsUnknownDetail() && entry->GetStorage()->IsExtern())
        detail = SlcDetailNode::AVarying();
    Owns(*entry);
    Defined(*entry, detail);
}

/// A body has at most one `return`, at any place. At the top level of the body it ends the walk.
/// Under a condition, the body continues for the points that did not return; since these have
/// another result, the result has at least the detail of the condition.
void SlcCheckInlineDetail::Case(SlcReturnStmtNode* node)
{
    SlcDetailNode* const expected = std::exchange(m_place.wanted, m_wanted);
    node->GetValue()->ApplyWalker(this);
    m_place.wanted = expected;
    SlcDetailNode* detail = SlcInlineDetailOf(node->GetValue());
    if (!m_guard)
        throw EndCheckInline{detail};
    // In a loop, points may return in different iterations.
    const bool inLoop = m_left.size() > 1;
    detail = SlcDetailNode::Combine(detail, inLoop ? SlcDetailNode::AVarying() : Guard());
    m_result = m_result ? SlcDetailNode::Combine(m_result, detail) : detail;
    Leave(m_left.size());
}

SlcDetailNode* SlcCheckInlineDetail::WalkCondition(SlcSyntaxNode* condition)
{
    SlcDetailNode* const outer = std::exchange(m_condition, SlcDetailNode::AUniform());
    condition->ApplyWalker(this);
    return std::exchange(m_condition, outer);
}

void SlcCheckInlineDetail::WalkGuarded(SlcSyntaxNode* node, SlcDetailNode* guard)
{
    SlcDetailNode* const outer = m_guard;
    m_guard = outer ? SlcDetailNode::Combine(outer, guard) : guard;
    node->ApplyWalker(this);
    m_guard = outer;
}

void SlcCheckInlineDetail::Case(SlcIfThenStmtNode* node)
{
    WalkGuarded(node->GetThen(), WalkCondition(node->GetCondition()));
}

void SlcCheckInlineDetail::Case(SlcIfThenElseStmtNode* node)
{
    SlcDetailNode* const condition = WalkCondition(node->GetCondition());
    WalkGuarded(node->GetThen(), condition);
    WalkGuarded(node->GetElse(), condition);
}

/// `illuminate` and `solar` guard their bodies: some points get no light.
void SlcCheckInlineDetail::Case(SlcLoopStmtNode* node)
{
    SlcDetailNode* const outer = std::exchange(m_guard, SlcDetailNode::AVarying());
    m_left.push_back({m_left.back().detail, Levels::NotCounted});
    node->WalkIn(this);
    m_left.pop_back();
    m_guard = outer;
}

void SlcCheckInlineDetail::WalkLoop(const SlcLoopStmtNode* node, Levels levels,
                                    const std::function<void()>& walkRound)
{
    m_left.push_back({m_left.back().detail, levels});
    for (int round = 1; WalkQuietRound(round == k_roundsOfOne, walkRound); ++round)
        ;
    if (!m_errors->IsQuiet()) {
        m_journal->BeginRound();
        walkRound();
        static_cast<void>(m_journal->EndRound());
        if (m_journal->IsExhausted() && m_journal->IsFirstReport())
            m_errors->Error(node, "Too many loops inside each other");
    }
    m_left.pop_back();
}

bool SlcCheckInlineDetail::WalkQuietRound(bool makesVarying, const std::function<void()>& walkRound)
{
    const SlcSemanticError::Quiet quiet(*m_errors);
    SlcDetailNode* const left = m_left.back().detail;
    m_journal->BeginRound();
    walkRound();
    if (makesVarying) {
        m_journal->EndRoundAsVarying();
        if (m_left.back().detail)
            m_left.back().detail = SlcDetailNode::AVarying();
        return !m_journal->IsExhausted();
    }
    const bool changes = m_journal->EndRound() || m_left.back().detail != left;
    return changes && !m_journal->IsExhausted();
}

void SlcCheckInlineDetail::Case(SlcWhileStmtNode* node)
{
    WalkLoop(node, Levels::Counted,
             [&] { WalkGuarded(node->GetBody(), WalkCondition(node->GetCondition())); });
}

void SlcCheckInlineDetail::Case(SlcForStmtNode* node)
{
    node->GetInit()->ApplyWalker(this);
    WalkLoop(node, Levels::Counted, [&] {
        SlcDetailNode* const condition = WalkCondition(node->GetCondition());
        WalkGuarded(node->GetBody(), condition);
        WalkGuarded(node->GetStep(), condition);
    });
}

void SlcCheckInlineDetail::Case(SlcIlluminanceStmtNode* node)
{
    node->WalkHead(this);
    WalkLoop(node, Levels::NotCounted,
             [&] { WalkGuarded(node->GetBody(), SlcDetailNode::AVarying()); });
}

void SlcCheckInlineDetail::Leave(std::size_t loops)
{
    SlcDetailNode* const guard = Guard();
    for (auto left = m_left.rbegin(); left != m_left.rend() && loops > 0; ++left) {
        left->detail = CombineGuards(left->detail, guard);
        loops -= left->levels == Levels::Counted ? 1 : 0;
    }
}

/// Treats `continue` like `break`: the points that execute it skip the rest of this iteration.
void SlcCheckInlineDetail::Case(SlcLoopModStmtNode* node)
{
    Leave(static_cast<std::size_t>(node->GetLevel()->GetValue()));
}
