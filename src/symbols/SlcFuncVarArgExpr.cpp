// A variable tail is a tree of parts, which one walk matches against the arguments of a call:
//
//     float *                          1, 2, 3          one value, any number of times
//     (float color)                    1, Cs            in this order; the walk skips parts that
//                                                       do not match
//     named(blur float bias float)     "bias", 2        pairs of a name and a value, in any order:
//                                                       after a pair that matched, the list starts
//                                                       over
//
// The tree itself keeps the state of the walk, so there can be only one walk at a time.
//
// Tested by tests/symbols/SlcFuncVarArgExprTest.cpp.

#include "symbols/SlcFuncVarArgExpr.h"

#include <string_view>
#include <utility>

#include "symbols/SlcPossibleTypes.h"

SlcFuncVarArgSingle::SlcFuncVarArgSingle(SlcTypeNode* type, SlcDetailNode* detail,
                                         SlcStorageSpecNode* storage, bool repeated,
                                         std::string defaultValue)
    : m_type(type),
      m_detail(detail),
      m_storage(storage),
      m_repeated(repeated),
      m_default(std::move(defaultValue))
{
}

SlcFuncVarArgExpr* SlcFuncVarArgSingle::Begin()
{
    return this;
}

SlcFuncVarArgExpr* SlcFuncVarArgSingle::Next(bool skip)
{
    return m_repeated && !skip ? this : nullptr;
}

SlcFuncVarArgExpr* SlcFuncVarArgSingle::CurrentExpr()
{
    return this;
}

int SlcFuncVarArgSingle::GetMaxSize(bool) const
{
    return m_repeated ? -1 : 1;
}

SlcFuncVarArgLeaf* SlcFuncVarArgSingle::FindNextMatch(SlcExprNode* expr, bool promote)
{
    // An argument for an output is not promoted, nor is an argument for a value of any type.
    const bool mayPromote = promote && !m_storage->IsOutput() && !m_type->IsAnyType();
    const auto types = SlcPossibleTypes::Of(expr);
    const SlcTypeNode* type = types ? types->IsInTypes(m_type, mayPromote) : nullptr;
    return type && (!mayPromote || type->IsPromotableAs(m_type)) ? this : nullptr;
}

SlcFuncVarArgPair::SlcFuncVarArgPair(std::string name, std::unique_ptr<SlcFuncVarArgSingle> value)
    : m_name(std::move(name)),
      m_value(std::move(value))
{
}

SlcFuncVarArgExpr* SlcFuncVarArgPair::Begin()
{
    m_live = true;
    m_valueStarted = false;
    m_nameMatched = false;
    return this;
}

SlcFuncVarArgExpr* SlcFuncVarArgPair::Next(bool skip)
{
    if (!m_live)
        return nullptr;
    if (m_valueStarted)
        return m_value->Next(skip);
    m_valueStarted = true;
    return m_value->Begin();
}

SlcFuncVarArgExpr* SlcFuncVarArgPair::CurrentExpr()
{
    return m_valueStarted ? m_value->CurrentExpr() : this;
}

int SlcFuncVarArgPair::GetMaxSize(bool withNames) const
{
    return m_value->GetMaxSize(withNames) + (withNames ? 1 : 0);
}

SlcFuncVarArgLeaf* SlcFuncVarArgPair::FindNextMatch(SlcExprNode* expr, bool promote)
{
    if (m_live && m_nameMatched)
        return m_value->FindNextMatch(expr, promote);
    m_live = false;
    m_nameMatched = false;
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(expr);
    if (!constant || !constant->GetStringConst())
        return nullptr;
    const std::string_view text = constant->GetStringConst()->GetText();
    if (text.substr(1, text.size() - 2) != m_name)
        return nullptr;
    m_nameMatched = true;
    m_live = true;
    return this;
}

SlcTypeNode* SlcFuncVarArgPair::GetType() const
{
    return SlcTypeNode::AString();
}

SlcDetailNode* SlcFuncVarArgPair::GetDetail() const
{
    return SlcDetailNode::AUniform();
}

SlcStorageSpecNode* SlcFuncVarArgPair::GetStorage() const
{
    return SlcStorageSpecNode::AInput();
}

SlcFuncVarArgExpr* SlcFuncVarArgList::Begin()
{
    m_current = 0;
    return m_parts.empty() ? nullptr : m_parts.front()->Begin();
}

SlcFuncVarArgExpr* SlcFuncVarArgList::Next(bool skip)
{
    if (m_current >= m_parts.size())
        return nullptr;
    if (SlcFuncVarArgExpr* next = m_parts[m_current]->Next(skip))
        return next;
    // After a match, a named list starts over at its first pair, since pairs may be in any order.
    if (skip || m_order == Order::Positional)
        ++m_current;
    else
        m_current = 0;
    return m_current < m_parts.size() ? m_parts[m_current]->Begin() : nullptr;
}

SlcFuncVarArgExpr* SlcFuncVarArgList::CurrentExpr()
{
    return m_current < m_parts.size() ? m_parts[m_current]->CurrentExpr() : nullptr;
}

int SlcFuncVarArgList::GetMaxSize(bool withNames) const
{
    int size = 0;
    for (const auto& part : m_parts) {
        const int partSize = part->GetMaxSize(withNames);
        if (partSize < 0)
            return partSize;
        size += partSize;
    }
    return size;
}

SlcFuncVarArgLeaf* SlcFuncVarArgList::FindNextMatch(SlcExprNode* expr, bool promote)
{
    while (SlcFuncVarArgExpr* current = CurrentExpr()) {
        SlcFuncVarArgLeaf* match = current->FindNextMatch(expr, promote);
        const bool isAtEnd = Next(match == nullptr) == nullptr;
        if (match || isAtEnd)
            return match;
    }
    return nullptr;
}

const std::deque<std::unique_ptr<SlcFuncVarArgExpr>>& SlcFuncVarArgList::GetParts() const
{
    return m_parts;
}
