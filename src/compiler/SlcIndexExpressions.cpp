// The part of the walk for expressions: the names that a value reads, writes and calls, and the
// spaces that it names in strings.
//
// Tested by tests/compiler/QxSourceIndexTest.cpp.

#include <string>
#include <utility>

#include "compiler/SlcIndexWalker.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// True if string arguments in calls of the function name coordinate or color spaces.
bool HasSpaceArguments(std::string_view function)
{
    for (const std::string_view name :
         {"transform", "vtransform", "ntransform", "ctransform", "rotate", "translate", "scale"})
        if (function == name)
            return true;
    return false;
}

}  // namespace

QxDetail SlcDetailOf(const SlcExprNode* expr)
{
    const auto types = SlcPossibleTypes::Of(expr);
    return types ? SlcPublicDetail(types->GetDetail()) : QxDetail::Open;
}

std::string SlcTypeOf(const SlcExprNode* expr)
{
    const auto types = SlcPossibleTypes::Of(expr);
    const SlcTypeNode* const type = types ? types->GetUniqueType() : nullptr;
    const bool isChosen =
        type && !type->IsErrorType() &&
        (!type->IsVoidType() || types->IsInTypes(SlcTypeNode::AVoid(), false) != nullptr);
    return isChosen ? type->ToString() : std::string();
}

QxDetail SlcSum(QxDetail a, QxDetail b)
{
    for (const QxDetail detail : {QxDetail::Varying, QxDetail::Open, QxDetail::Uniform})
        if (a == detail || b == detail)
            return detail;
    return QxDetail::None;
}

void SlcIndexWalker::Case(SlcIdentExprNode* node)
{
    const QxUseRole role = std::exchange(m_writes, false) ? QxUseRole::Write : QxUseRole::Read;
    const int name = m_names.OfVariable(node->GetSymbolEntry());
    AddUse(name, role, node->Range(), node->GetIdent()->GetName(), node);
    if (role == QxUseRole::Write)
        RecordValue(name, QxDetail::Varying);
    m_seen = SlcSum(m_seen, DetailHere(name, node));
}

void SlcIndexWalker::Case(SlcArrayRefExprNode* node)
{
    const QxUseRole role = std::exchange(m_writes, false) ? QxUseRole::Write : QxUseRole::Read;
    const int name = m_names.OfVariable(node->GetSymbolEntry());
    AddUse(name, role, node->Range(), node->GetIdent()->GetName(), node);
    if (role == QxUseRole::Write)
        RecordValue(name, QxDetail::Varying);
    m_seen = SlcSum(m_seen, DetailHere(name, node));
    node->GetIndex()->ApplyWalker(this);
}

void SlcIndexWalker::Case(SlcAssignExprNode* node)
{
    m_writes = false;
    SlcLValueNode* const target = node->GetLValue();
    const int name = m_names.OfVariable(target->GetSymbolEntry());
    AddUse(name, QxUseRole::Write, target->Range(), target->GetIdent()->GetName(), node);
    target->WalkIn(this);
    RecordValue(name, WalkValue(node->GetValue()));
}

void SlcIndexWalker::AddSpace(std::size_t token)
{
    if (token >= m_index.tokens.size())
        return;
    const std::string& text = m_places.Token(token).text;
    if (text.size() < 2 || text.front() != '"' || text.back() != '"')
        return;
    const int name = m_names.OfWord(QxNameKind::Space, text.substr(1, text.size() - 2));
    m_index.names[static_cast<std::size_t>(name)].declaration = text;
    AddUse(name, QxUseRole::Read, token, nullptr);
}

void SlcIndexWalker::Case(SlcCastExprNode* node)
{
    m_writes = false;
    AddSpace(m_places.TokenAt(node->Range().begin) + 1);
    node->GetOperand()->ApplyWalker(this);
}

void SlcIndexWalker::AddCall(int name, const std::string& text, const SlcExprNode* node,
                             const std::vector<const SlcExprNode*>& arguments)
{
    QxIndexedCall call;
    call.name = name;
    call.text = text;
    const std::size_t token = m_places.TokenAt(node->Range().begin);
    if (node->Range().IsEmpty() || token >= m_index.tokens.size())
        return;
    call.place = m_places.PlaceOf(token);
    call.range = m_places.RangeOf(node->Range());
    for (const SlcExprNode* argument : arguments)
        call.arguments.push_back(m_places.RangeOf(argument->Range()));
    call.type = SlcTypeOf(node);
    call.detail = SlcDetailOf(node);
    if (call.detail == QxDetail::Varying)
        m_seen = QxDetail::Varying;
    m_index.calls.push_back(std::move(call));
}

void SlcIndexWalker::Case(SlcProcCallExprNode* node)
{
    m_writes = false;
    const std::string& text = node->GetIdent()->GetName();
    const SlcPtr<SlcFuncSymbolEntry>& entry = node->GetSymbolEntry();
    const int name = m_names.OfFunction(entry);
    AddUse(name, QxUseRole::Call, node->Range(), text, node);
    std::vector<const SlcExprNode*> arguments;
    const auto& given = node->GetArguments()->GetArgs();
    for (std::size_t i = 0; i < given.size(); ++i) {
        SlcExprNode& argument = *given[i];
        arguments.push_back(&argument);
        const auto* constant = dynamic_cast<const SlcConstExprNode*>(&argument);
        if (constant && constant->GetStringConst() && HasSpaceArguments(text))
            AddSpace(m_places.TokenAt(argument.Range().begin));
        m_writes = entry && i < entry->GetArgStorages().size() &&
                   SlcPublicStorage(entry->GetArgStorages()[i]) == QxStorage::Output;
        argument.ApplyWalker(this);
    }
    m_writes = false;
    AddCall(name, text, node, arguments);
}

void SlcIndexWalker::Case(SlcTextureExprNode* node)
{
    m_writes = false;
    const std::string text = node->GetKind()->ToString();
    const int name = m_names.OfTexture(text, SlcTypeOf(node));
    AddUse(name, QxUseRole::Call, node->Range(), text, node);
    std::vector<const SlcExprNode*> arguments;
    if (node->GetFilename() && node->GetFilename()->GetName())
        arguments.push_back(node->GetFilename()->GetName());
    for (const auto& argument : node->GetArguments()->GetArgs())
        arguments.push_back(argument.get());
    AddCall(name, text, node, arguments);
    node->WalkIn(this);
}
