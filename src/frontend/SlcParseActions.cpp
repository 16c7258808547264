// The functions that the rules of grammar.y call to make nodes, to warn and to advise. A value on
// the parser's stack owns its node, unless a pool does, until an action takes the node. The parser
// passes the values that it drops after an error to Discard.
//
// Later passes recurse over the tree, so its height is limited here for all of them. An expression,
// condition or statement that is too high for the stack is replaced by a small one, and the first
// replacement is reported.
//
// Tested by tests/frontend/TreeShapeTest.cpp.

#include "frontend/SlcParseActions.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "grammar.h"
#include "support/QxStack.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"

namespace SlcParseActions {

namespace {

/// The stack per level of a thread other than the main one, whose size cannot be changed: 8 MB, the
/// usual size, allow the maximum height. Optimized passes need less than half of it.
constexpr std::size_t k_threadStackPerLevel = (std::size_t{8} << 20) / SlcSyntaxNode::k_maxHeight;

/// The state of the current parse.
struct Parse {
    std::unique_ptr<SlcDefinitionsNode> root;
    int maxHeight = 0;  // limited by the available stack
    bool depthReported = false;
    std::optional<SlcCompilationEnd> fatalReport;
    SlcParseAdvice advice;
};

/// Returns the state of the current compilation.
Parse& Current()
{
    return SlcPartOfCompilation<Parse>();
}

std::unique_ptr<SlcExprNode> SmallExpr(const SlcPosition& position)
{
    return std::make_unique<SlcConstExprNode>(position, SlcLexicalNode::CreateFloat(0));
}

/// Makes a small node of the same kind as `node`: an expression, condition or statement. Null for
/// all other kinds, which add at most a level or two.
std::unique_ptr<SlcSyntaxNode> SmallNode(const SlcSyntaxNode* node, const SlcPosition& position)
{
    if (dynamic_cast<const SlcExprNode*>(node))
        return SmallExpr(position);
    if (dynamic_cast<const SlcRelationNode*>(node))
        return std::make_unique<SlcEqualRelNode>(SmallExpr(position), SmallExpr(position));
    if (dynamic_cast<const SlcStmtNode*>(node))
        return std::make_unique<SlcStmtsNode>(position);
    return nullptr;
}

}  // namespace

void Begin()
{
    constexpr std::size_t wanted = SlcSyntaxNode::k_maxHeight * SlcSyntaxNode::k_stackPerLevel;
    Current() = {};
    // If the user limits the stack, the maximum height is lower, so that no walk overflows it.
    std::size_t levels = QxStack::Reserve(wanted) / SlcSyntaxNode::k_stackPerLevel;
    if (!QxStack::IsOfMainThread())
        levels = std::min(levels, QxStack::Left() / k_threadStackPerLevel);
    Current().maxHeight = static_cast<int>(levels);
}

void SetRoot(std::unique_ptr<SlcDefinitionsNode> root)
{
    const SlcPosition position = SlcScanner::Position();
    root->SetNoLine(position.line);
    root->SetNoColumn(position.column);
    if (position.file)
        root->SetFileParsed(position.file);
    Current().root = std::move(root);
}

SlcParseAdvice& Advice()
{
    return Current().advice;
}

int NextToken(SlcParseAdvice& advice, SlcTokenValue& value, SlcTextRange& range)
{
    try {
        return advice.Next(value, range);
    } catch (const SlcCompilationEnd& end) {
        Current().fatalReport = end;
        return YYEMPTY;
    }
}

void EndAfterFatalReport()
{
    if (const auto report = Current().fatalReport)
        throw SlcCompilationEnd(*report);
}

std::unique_ptr<SlcDefinitionsNode> TakeRoot()
{
    return std::move(Current().root);
}

void RejectIfTooHigh(SlcTokenValue& value)
{
    if (!value.node || value.node->Height() <= Current().maxHeight)
        return;
    std::unique_ptr<SlcSyntaxNode> small = SmallNode(value.node, value.Position());
    if (!small)
        return;
    if (!Current().depthReported)
        yyerror(dynamic_cast<SlcStmtNode*>(value.node)
                    ? "Statement is nested too deeply"
                    : "Expression is too long or nested too deeply");
    Current().depthReported = true;
    Discard(value);
    value.node = small.release();
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

SlcTypeNode* SizedArray(const SlcTokenValue& element, const SlcTokenValue& length)
{
    auto* type = As<SlcTypeNode>(element);
    const auto* value = As<SlcFloatConstNode>(length);
    if (value->GetValue() <= std::numeric_limits<int>::max())
        return SlcTypeNode::CreateArrayType(type, value);
    yyerror("Number is too large for an array size");
    return SlcTypeNode::CreateArrayType(type);
}

std::unique_ptr<SlcDefExprNode> Definition(const SlcTokenValue& ident, const SlcTokenValue* size,
                                           const SlcTokenValue* initializer)
{
    return std::make_unique<SlcDefExprNode>(ident.Position(), As<SlcIdentNode>(ident),
                                            initializer ? Take<SlcExprNode>(*initializer) : nullptr,
                                            size ? As<SlcIntConstNode>(*size)->GetValue()
                                                 : SlcDefExprNode::k_scalar);
}

std::unique_ptr<SlcFuncDefNode> Function(const SlcTextRange& range, const SlcPosition& position,
                                         SlcTypeNode* returnType, const SlcTokenValue& ident,
                                         const SlcTokenValue& formals, const SlcTokenValue& body)
{
    auto function =
        std::make_unique<SlcFuncDefNode>(position, returnType, As<SlcIdentNode>(ident),
                                         Take<SlcFormalsNode>(formals), Take<SlcStmtsNode>(body));
    function->SetRange(range);
    return function;
}

SlcSyntaxNode* Braced(const SlcTokenValue& statements, const SlcTextRange& range)
{
    if (statements.node)
        statements.node->SetRange(range);
    return statements.node;
}

std::unique_ptr<SlcFuncDefStmtNode> FunctionWithoutType(const SlcTextRange& range,
                                                        const SlcPosition& position,
                                                        const SlcTokenValue& ident,
                                                        const SlcTokenValue& body)
{
    yyerror("Local function definition must have a return type");
    Advice().RejectedBlock();
    Advise("a call takes no block: such statements belong to a later revision of the language");
    auto function = std::make_unique<SlcFuncDefNode>(
        position, SlcTypeNode::AFloat(), As<SlcIdentNode>(ident),
        std::make_unique<SlcFormalsNode>(), Take<SlcStmtsNode>(body));
    function->SetRange(range);
    return std::make_unique<SlcFuncDefStmtNode>(position, std::move(function));
}

void AdviseOnShaderName(const SlcTokenValue& ident)
{
    const std::string& name = As<SlcIdentNode>(ident)->GetName();
    if (const int token = SlcKeywordToken(name); token >= LIGHT && token <= IMAGER)
        Advise("'" + name + "' is taken for the name of a function: a shader needs a name");
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
    const bool hasSpace = target->IsPointType() || target->IsMatrixType() || target->IsColorType();
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

std::unique_ptr<SlcTextureFilenameNode> TextureName(const SlcTextRange& range,
                                                    std::unique_ptr<SlcExprNode> name)
{
    name->SetRange(range);
    return std::make_unique<SlcTextureFilenameNode>(std::move(name));
}

std::unique_ptr<SlcTextureFilenameNode> ElementName(const SlcTextRange& range,
                                                    const SlcPosition& position,
                                                    const SlcTokenValue& name,
                                                    const SlcTokenValue& index)
{
    const auto filename = Take<SlcTextureFilenameNode>(name);
    auto subscript = Take<SlcExprNode>(index);
    const auto* variable = dynamic_cast<const SlcIdentExprNode*>(filename->GetName());
    if (!variable) {
        yyerror("A identifier is expected for an array reference");
        return nullptr;
    }
    auto element =
        std::make_unique<SlcArrayRefExprNode>(position, variable->GetIdent(), std::move(subscript));
    element->SetRange(range);
    return std::make_unique<SlcTextureFilenameNode>(position, std::move(element));
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
