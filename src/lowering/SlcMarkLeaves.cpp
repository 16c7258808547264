// Each jump is followed outward by counting the loops that it has yet to leave.
//
//     while (a) {                        marked
//         if (b) {                       marked
//             while (c) break 2;         marked
//         }
//         if (d) x = 1;                  not marked: nothing leaves it
//     }
//
// A `return` leaves all enclosing statements of its function. The right side of `a && f(x)` needs a
// guard, since it must not run where the left side decides the result.
//
// Tested by tests/lowering/SlcGenInterCodeLoopsTest.cpp and SlcGenInterCodeRelationsTest.cpp.

#include "lowering/SlcMarkLeaves.h"

#include <algorithm>
#include <climits>
#include <utility>

#include "semantics/SlcFuncInfo.h"
#include "symbols/SlcCallFormals.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcPossibleTypes.h"

void SlcMarkLeaves::Case(SlcFuncDefNode* node)
{
    if (!SlcFuncInfo::IsCalled(*node))
        return;
    const int levelsToLeave = std::exchange(m_levelsToLeave, 0);
    node->GetBody()->ApplyWalker(this);
    m_levelsToLeave = levelsToLeave;
}

void SlcMarkLeaves::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    const auto index = SlcPossibleTypes::Of(node->GetIndex());
    m_needsGuard = m_needsGuard || !index->GetDetail()->IsUniform();
    m_readsElement = m_readsElement || !dynamic_cast<SlcConstExprNode*>(node->GetIndex());
}

void SlcMarkLeaves::Case(SlcAssignExprNode* node)
{
    node->WalkIn(this);
    m_needsGuard = true;
}

void SlcMarkLeaves::Case(SlcCondExprNode* node)
{
    node->WalkIn(this);
    m_needsGuard = true;
}

void SlcMarkLeaves::Case(SlcLogOpNode* node)
{
    node->GetLeft()->ApplyWalker(this);
    m_needsGuard = false;
    m_readsElement = false;
    node->GetRight()->ApplyWalker(this);
    node->SetRightNeedsGuard(m_needsGuard);
    node->SetRightReadsElement(m_readsElement);
    // The operator itself may be in the right side of an enclosing operator.
    m_needsGuard = true;
}

void SlcMarkLeaves::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const SlcPtr<SlcFuncSymbolEntry>& entry = node->GetSymbolEntry();
    if (entry.Null())
        return;
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    m_needsGuard = m_needsGuard || entry->GetOrigin() != SlcFuncOrigin::BuiltIn ||
                   entry->IsOrderSensitive() ||
                   std::any_of(formals.begin(), formals.end(),
                               [](const SlcCallFormal& formal) { return formal.isOutput; });
}

void SlcMarkLeaves::Case(SlcIlluminateStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcMarkLeaves::Case(SlcSolarStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcMarkLeaves::Case(SlcIlluminanceStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcMarkLeaves::Case(SlcIfThenStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcMarkLeaves::Case(SlcIfThenElseStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcMarkLeaves::Case(SlcForStmtNode* node)
{
    WalkMarking(node, Leaves::OneLevel);
}

void SlcMarkLeaves::Case(SlcWhileStmtNode* node)
{
    WalkMarking(node, Leaves::OneLevel);
}

/// Marks every enclosing statement up to and including the loop that is left or continued.
template <class Node>
void SlcMarkLeaves::WalkMarking(Node* node, Leaves leaves)
{
    const int outer = std::exchange(m_levelsToLeave, 0);
    node->WalkIn(this);
    if (m_levelsToLeave > 0) {
        node->SetContainsBreakOrContinue(true);
        if (leaves == Leaves::OneLevel && m_levelsToLeave != INT_MAX)
            --m_levelsToLeave;
    }
    m_levelsToLeave = std::max(m_levelsToLeave, outer);
}

void SlcMarkLeaves::Case(SlcLoopModStmtNode* node)
{
    m_levelsToLeave = std::max(m_levelsToLeave, node->GetLevel()->GetValue());
}

void SlcMarkLeaves::Case(SlcReturnStmtNode* node)
{
    node->WalkIn(this);
    m_levelsToLeave = INT_MAX;  // it leaves all enclosing statements of the function
}
