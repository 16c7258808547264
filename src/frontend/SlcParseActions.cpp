#include "frontend/SlcParseActions.h"

#include <string>
#include <utility>

#include "support/SlcDiagnostics.h"

namespace SlcParseActions {

namespace {

std::unique_ptr<SlcDefinitionsNode> g_root;
bool g_depthReported = false;

bool IsTooHigh(const SlcSyntaxNode& node)
{
    if (node.Height() <= SlcSyntaxNode::k_maxHeight)
        return false;
    if (!g_depthReported)
        yyerror("Expression is nested too deeply");
    g_depthReported = true;
    return true;
}

std::unique_ptr<SlcExprNode> SmallExpr(const SlcPosition& position)
{
    return std::make_unique<SlcConstExprNode>(position, SlcLexicalNode::CreateFloat(0));
}

}  // namespace

void Begin()
{
    g_root.reset();
    g_depthReported = false;
}

void SetRoot(std::unique_ptr<SlcDefinitionsNode> root)
{
    const SlcPosition position = SlcScanner::Position();
    root->SetNoLine(position.line);
    root->SetNoColumn(position.column);
    if (position.file)
        root->SetFileParsed(position.file);
    g_root = std::move(root);
}

std::unique_ptr<SlcDefinitionsNode> TakeRoot()
{
    return std::move(g_root);
}

void PutExpr(SlcTokenValue& value, std::unique_ptr<SlcExprNode> node)
{
    if (IsTooHigh(*node))
        node = SmallExpr(value.Position());
    Put(value, std::move(node));
}

void PutRelation(SlcTokenValue& value, std::unique_ptr<SlcRelationNode> node)
{
    if (IsTooHigh(*node))
        node = std::make_unique<SlcEqualRelNode>(SmallExpr(value.Position()),
                                                 SmallExpr(value.Position()));
    Put(value, std::move(node));
}

void Discard(const SlcTokenValue& value)
{
    std::unique_ptr<const SlcSyntaxNode>(value.node).reset();
}

std::unique_ptr<SlcVarDefsNode> Declaration(const SlcPosition& position,
                                            SlcStorageSpecNode* storage, SlcDetailNode* detail,
                                            const SlcTokenValue& type,
                                            const SlcTokenValue& definitions)
{
    return std::make_unique<SlcVarDefsNode>(
        std::make_unique<SlcTypeSpecNode>(position, storage, detail, As<SlcTypeNode>(type)),
        Take<SlcDefExprsNode>(definitions));
}

std::unique_ptr<SlcDefExprNode> Definition(const SlcTokenValue& ident, const SlcTokenValue* size,
                                           const SlcTokenValue* initializer)
{
    return std::make_unique<SlcDefExprNode>(
        ident.Position(), As<SlcIdentNode>(ident),
        initializer ? Take<SlcExprNode>(*initializer) : nullptr,
        size ? As<SlcIntConstNode>(*size)->GetValue() : SlcDefExprNode::k_scalar);
}

std::unique_ptr<SlcFuncDefNode> Function(const SlcPosition& position, SlcTypeNode* returnType,
                                         const SlcTokenValue& ident, const SlcTokenValue& formals,
                                         const SlcTokenValue& body)
{
    return std::make_unique<SlcFuncDefNode>(position, returnType, As<SlcIdentNode>(ident),
                                            Take<SlcFormalsNode>(formals),
                                            Take<SlcStmtsNode>(body));
}

std::unique_ptr<SlcFuncDefStmtNode> FunctionWithoutType(const SlcPosition& position,
                                                        const SlcTokenValue& ident,
                                                        const SlcTokenValue& body)
{
    yyerror("Local function definition must have a return type");
    return std::make_unique<SlcFuncDefStmtNode>(
        position, std::make_unique<SlcFuncDefNode>(
                      position, SlcTypeNode::AFloat(), As<SlcIdentNode>(ident),
                      std::make_unique<SlcFormalsNode>(), Take<SlcStmtsNode>(body)));
}

void WarnOfIgnoredDetail(const SlcTokenValue& ident)
{
    Warning("Function detail is ignored for function " + As<SlcIdentNode>(ident)->GetName() +
            " (will be determined by call context)");
}

std::unique_ptr<SlcCastExprNode> Cast(const SlcTokenValue& type, const SlcTokenValue& space,
                                      const SlcTokenValue& operand)
{
    auto* target = As<SlcTypeNode>(type);
    auto* name = As<SlcStringLiteralNode>(space);
    const bool hasSpace =
        target->IsPointType() || target->IsMatrixType() || target->IsColorType();
    if (name && !hasSpace) {
        yyerror(("No spacename can be associated to a " + target->ToString()).c_str());
        name = nullptr;
    } else if (!name && hasSpace) {
        name = SlcLexicalNode::CreateString(target->IsColorType() ? "\"rgb\"" : "\"current\"");
    }
    return std::make_unique<SlcCastExprNode>(type.Position(), target, name,
                                             Take<SlcExprNode>(operand));
}

std::unique_ptr<SlcChannelNode> ChannelZero()
{
    return std::make_unique<SlcChannelNode>(SmallExpr(SlcScanner::Position()));
}

std::unique_ptr<SlcTextureFilenameNode>
ElementName(const SlcPosition& position, const SlcTokenValue& name, const SlcTokenValue& index)
{
    const auto filename = Take<SlcTextureFilenameNode>(name);
    auto subscript = Take<SlcExprNode>(index);
    const auto* variable = dynamic_cast<const SlcIdentExprNode*>(filename->GetName());
    if (!variable) {
        yyerror("A identifier is expected for an array reference");
        return nullptr;
    }
    return std::make_unique<SlcTextureFilenameNode>(
        position, std::make_unique<SlcArrayRefExprNode>(position, variable->GetIdent(),
                                                        std::move(subscript)));
}

SlcIdentNode* KeywordAsIdent(std::string_view keyword)
{
    return SlcLexicalNode::CreateIdent(keyword);
}

void WarnOfLightCategory()
{
    Warning("Light categories are not yet implemented, and thus, will be ignored by the "
            "'illuminance' statement.");
}

}  // namespace SlcParseActions
