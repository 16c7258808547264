#pragma once

#include <memory>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include "frontend/SlcNodes.h"
#include "frontend/SlcParseAdvice.h"
#include "frontend/SlcScanner.h"
#include "frontend/SlcTokenValue.h"

/// The functions that the actions of the grammar call, those that SlcParseCode.cpp calls before and
/// after a parse, and the state that they share.
namespace SlcParseActions {

/// Discards the state of an earlier parse, and reserves stack for trees of the maximum height. If
/// less stack is available, the height is limited accordingly.
void Begin();
/// Sets the complete tree, which `TakeRoot` returns, and its position, which is the scanner's.
void SetRoot(std::unique_ptr<SlcDefinitionsNode> root);
/// Returns the filter through which the parser reads its tokens.
[[nodiscard]] SlcParseAdvice& Advice();
/// Returns the next token, through `advice`. Catches the `SlcCompilationEnd` of a fatal report of
/// the scanner and returns `YYEMPTY`: the parser deletes the nodes on its stack only before it
/// returns, so an exception that passes through it would leak them.
[[nodiscard]] int NextToken(SlcParseAdvice& advice, SlcTokenValue& value, SlcTextRange& range);
/// Throws the exception that `NextToken` caught, if any. Call it after the parser has returned.
void EndAfterFatalReport();
/// Passes ownership of the tree to the caller; null if the parse was not completed.
[[nodiscard]] std::unique_ptr<SlcDefinitionsNode> TakeRoot();

/// Returns the node of a value as a `Node`; null if there is none or it is of another class.
/// Ownership does not change.
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

/// Deletes the node of a value, if there is one. The node must have no parent and belong to no
/// pool.
void Discard(const SlcTokenValue& value);

/// Passes ownership of a value's node to the caller. Deletes the node and returns null if it is not
/// a `Node`.
template <class Node>
[[nodiscard]] std::unique_ptr<Node> Take(const SlcTokenValue& value)
{
    Node* node = As<Node>(value);
    if (!node)
        Discard(value);
    return std::unique_ptr<Node>(node);
}

/// Replaces an expression, condition or statement that is too high for the passes by a small node,
/// and deletes the original. Only the first replacement in a parse is reported.
void RejectIfTooHigh(SlcTokenValue& value);

/// Stores `node`, which was made from the text at `range`, in a value, and calls `RejectIfTooHigh`.
/// The value's position does not change.
template <class Node>
void Put(SlcTokenValue& value, const SlcTextRange& range, std::unique_ptr<Node> node)
{
    if (node)
        node->SetRange(range);
    value.node = node.release();
    RejectIfTooHigh(value);
}

/// Stores `node`, which was made from the text at `range`, and the scanner's position in a value.
/// The position in the node does not change.
template <class Node>
void PutHere(SlcTokenValue& value, const SlcTextRange& range, std::unique_ptr<Node> node)
{
    if (node)
        node->SetRange(range);
    const SlcPosition position = SlcScanner::Position();
    value = {node.release(), position.line, position.column, position.file};
}

/// Makes the node of `storage detail type name, name = value`. Takes ownership of `definitions`.
[[nodiscard]] std::unique_ptr<SlcVarDefsNode>
Declaration(const SlcPosition& position, SlcStorageSpecNode* storage, SlcDetailNode* detail,
            const SlcTokenValue& type, const SlcTokenValue& definitions);
/// Returns the type of an array of `element` whose length is a float literal. Reports a length
/// above the range of integers, and then returns the type of arrays of unspecified length.
[[nodiscard]] SlcTypeNode* SizedArray(const SlcTokenValue& element, const SlcTokenValue& length);
/// Makes the node of one name of a declaration. `size` is null if no brackets follow the name;
/// `initializer` is null if there is none. Takes ownership of `initializer`.
[[nodiscard]] std::unique_ptr<SlcDefExprNode>
Definition(const SlcTokenValue& ident, const SlcTokenValue* size, const SlcTokenValue* initializer);
/// Makes the node of a function. Takes ownership of formals and body. `range` is that of the whole
/// definition.
[[nodiscard]] std::unique_ptr<SlcFuncDefNode>
Function(const SlcTextRange& range, const SlcPosition& position, SlcTypeNode* returnType,
         const SlcTokenValue& ident, const SlcTokenValue& formals, const SlcTokenValue& body);
/// Reports a local function without a return type; a call with a block is also parsed as one. Makes
/// a function that returns a float and has no formals, since they were parsed as arguments. Takes
/// ownership of `body`.
[[nodiscard]] std::unique_ptr<SlcFuncDefStmtNode> FunctionWithoutType(const SlcTextRange& range,
                                                                      const SlcPosition& position,
                                                                      const SlcTokenValue& ident,
                                                                      const SlcTokenValue& body);
/// Returns the node of a block's statements, and sets its range to `range`, which includes the
/// braces.
[[nodiscard]] SlcSyntaxNode* Braced(const SlcTokenValue& statements, const SlcTextRange& range);
/// Advises that a shader needs a name if `ident`, the name of a function, is that of a kind of
/// shader: `surface() {}` is parsed as a function.
void AdviseOnShaderName(const SlcTokenValue& ident);
/// Warns that a function's declared detail is ignored, since each call determines it.
void WarnOfIgnoredDetail(const SlcTokenValue& ident);
/// Makes the node of a cast. `space` has no node if the source names no space; the default is then
/// added if the type has spaces. Reports a space for a type without spaces. Takes ownership of
/// `operand`.
[[nodiscard]] std::unique_ptr<SlcCastExprNode>
Cast(const SlcTokenValue& type, const SlcTokenValue& space, const SlcTokenValue& operand);
/// Returns the channel of a texture access that names none: channel 0.
[[nodiscard]] std::unique_ptr<SlcChannelNode> ChannelZero();
/// Makes the texture name from a variable or a literal, whose text is at `range`.
[[nodiscard]] std::unique_ptr<SlcTextureFilenameNode>
TextureName(const SlcTextRange& range, std::unique_ptr<SlcExprNode> name);
/// Makes the texture name from an array element. `range` is that of the element, `position` that of
/// the call. Takes ownership of `name` and `index`. If `name` is a literal, reports this and
/// returns null.
[[nodiscard]] std::unique_ptr<SlcTextureFilenameNode> ElementName(const SlcTextRange& range,
                                                                  const SlcPosition& position,
                                                                  const SlcTokenValue& name,
                                                                  const SlcTokenValue& index);
/// Makes a name from a keyword for a kind of shader, such as `light`, which is also a valid name.
[[nodiscard]] SlcIdentNode* KeywordAsIdent(std::string_view keyword);
/// Warns that a light category is parsed but ignored.
void WarnOfLightCategory();

}  // namespace SlcParseActions
