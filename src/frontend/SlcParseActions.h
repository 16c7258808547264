#pragma once

#include <memory>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "frontend/SlcNodes.h"
#include "frontend/SlcParseAdvice.h"
#include "frontend/SlcScanner.h"
#include "frontend/SlcTokenValue.h"

/// The state shared by the actions of the grammar.
namespace SlcParseActions {

/// Forgets an earlier parse.
void Begin();
/// The whole tree, which `TakeRoot` hands on.
void SetRoot(std::unique_ptr<SlcDefinitionsNode> root);
/// The filter through which the parser reads its tokens.
[[nodiscard]] SlcParseAdvice& Advice();
/// The next token, through `advice`. `YYEMPTY` after a fatal report of the scanner: its exception
/// must not pass through the parser, which would lose what is on its stack.
[[nodiscard]] int NextToken(SlcParseAdvice& advice, SlcTokenValue& value, SlcTextRange& range);
/// Throws that exception, once the parser has given up.
void EndAfterFatalReport();
/// Null if the parse did not come to its end.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> TakeRoot();

/// The node of a value as its class; it belongs to a pool.
template <class Node>
[[nodiscard]] Node* As(const SlcTokenValue& value)
{
    SlcSyntaxNode* node = value.node;
    if (!node)
        return nullptr;
    if constexpr (std::is_same_v<Node, SlcExprNode>)
        return node->AsExpr();
    else if constexpr (std::is_same_v<Node, SlcAssignExprNode>)
        return node->AsAssignExpr();
    else if constexpr (std::is_same_v<Node, SlcRelationNode>)
        return node->AsRelation();
    else if constexpr (std::is_same_v<Node, SlcStmtNode>)
        return node->AsStmt();
    else if constexpr (std::is_same_v<Node, SlcLValueNode>)
        return node->AsLValue();
    else if (&typeid(*node) == &typeid(Node))
        return static_cast<Node*>(node);
    else
        return dynamic_cast<Node*>(node);
}

/// Deletes a part of the tree that no parent takes.
void Discard(const SlcTokenValue& value);

/// The node of a value, which its new parent takes over; null if it was refused.
template <class Node>
[[nodiscard]] std::unique_ptr<Node> Take(const SlcTokenValue& value)
{
    Node* node = As<Node>(value);
    if (!node)
        Discard(value);
    return std::unique_ptr<Node>(node);
}

/// An expression, condition or statement that has grown too high for the passes is deleted, and
/// something small takes its place; the first one in a parse is reported.
void RefuseIfTooHigh(SlcTokenValue& value);

/// Gives a value its node, which was made of the text at `range`; the position stays.
template <class Node>
void Put(SlcTokenValue& value, const SlcTextRange& range, std::unique_ptr<Node> node)
{
    if (node)
        node->SetRange(range);
    value.node = node.release();
    RefuseIfTooHigh(value);
}

/// A value at the scanner's position. Its node stays as it is, also a list that grows.
template <class Node>
void PutHere(SlcTokenValue& value, const SlcTextRange& range, std::unique_ptr<Node> node)
{
    if (node)
        node->SetRange(range);
    const SlcPosition position = SlcScanner::Position();
    value = {node.release(), position.line, position.column, position.file};
}

/// `storage detail type name, name = value`; takes over the names.
[[nodiscard]] std::unique_ptr<SlcVarDefsNode>
Declaration(const SlcPosition& position, SlcStorageSpecNode* storage, SlcDetailNode* detail,
            const SlcTokenValue& type, const SlcTokenValue& definitions);
/// The array type of a type and a float literal. A length that no integer holds is reported.
[[nodiscard]] SlcTypeNode* SizedArray(const SlcTokenValue& element, const SlcTokenValue& length);
/// `size` and `initializer` may be null: a scalar, or no initializer.
[[nodiscard]] std::unique_ptr<SlcDefExprNode>
Definition(const SlcTokenValue& ident, const SlcTokenValue* size, const SlcTokenValue* initializer);
/// Takes over formals and body. `range` is that of the whole definition.
[[nodiscard]] std::unique_ptr<SlcFuncDefNode>
Function(const SlcTextRange& range, const SlcPosition& position, SlcTypeNode* returnType,
         const SlcTokenValue& ident, const SlcTokenValue& formals, const SlcTokenValue& body);
/// A local function without a return type, whose formals parsed as something else.
[[nodiscard]] std::unique_ptr<SlcFuncDefStmtNode> FunctionWithoutType(const SlcTextRange& range,
                                                                      const SlcPosition& position,
                                                                      const SlcTokenValue& ident,
                                                                      const SlcTokenValue& body);
/// The node of a block's statements, which from here on represents the braces too.
[[nodiscard]] SlcSyntaxNode* Braced(const SlcTokenValue& statements, const SlcTextRange& range);
/// A shader without a name is read as a function that bears the name of the kind.
void AdviseOnShaderName(const SlcTokenValue& ident);
/// A function's detail is that of its calls.
void WarnOfIgnoredDetail(const SlcTokenValue& ident);
/// `space` may hold no node: then none is named.
[[nodiscard]] std::unique_ptr<SlcCastExprNode>
Cast(const SlcTokenValue& type, const SlcTokenValue& space, const SlcTokenValue& operand);
/// For a texture access that names no channel.
[[nodiscard]] std::unique_ptr<SlcChannelNode> ChannelZero();
/// A variable or a literal that names a texture.
[[nodiscard]] std::unique_ptr<SlcTextureFilenameNode>
TextureName(const SlcTextRange& range, std::unique_ptr<SlcExprNode> name);
/// An element of an array of texture names; null after a report. `range` is that of the element,
/// `position` that of the call.
[[nodiscard]] std::unique_ptr<SlcTextureFilenameNode> ElementName(const SlcTextRange& range,
                                                                  const SlcPosition& position,
                                                                  const SlcTokenValue& name,
                                                                  const SlcTokenValue& index);
/// One of the shader kinds used as a name.
[[nodiscard]] SlcIdentNode* KeywordAsIdent(std::string_view keyword);
/// A category is parsed and then forgotten.
void WarnOfLightCategory();

}  // namespace SlcParseActions
