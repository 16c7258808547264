// Checks definitions, and sets up the scopes for checking bodies. A function comes into scope after
// its body, so it cannot call itself. Variables that a function does not declare are looked up in
// the scope of its definition; with --strict, only variables declared `extern` are. Each body has a
// separate walker, whose fields then record what the body contains: a `return`, a light statement.
//
// The body of a function is checked once, where the function is defined. What depends on the call
// of the function is checked at the call: the details that follow from its arguments, whether this
// type of shader may contain the function's light statements (both in SlcUserCallRules), and
// whether outer variables that the function reads have been set (SlcCheckUsage).
//
// Tested by tests/semantics/SlcCheckSemanticsTest.cpp, and by OneReportTest.cpp for faults that
// must cause only one report.

#include "semantics/SlcCheckSemantics.h"

#include <algorithm>
#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcDefinitionsInfo.h"
#include "semantics/SlcFuncInfo.h"
#include "semantics/SlcStatementInfo.h"
#include "semantics/SlcUserCallRules.h"
#include "symbols/SlcShaderSymbolTable.h"

namespace {

/// Returns a text such as "float f(color, float[3])".
std::string ShapeOf(const SlcFuncDefNode& function, const SlcFuncSymbolEntry& entry)
{
    std::string shape = entry.GetReturnType()->ToString() + " " + function.GetIdent()->GetName();
    const char* separator = "(";
    for (const SlcTypeNode* type : entry.GetArgTypes()) {
        shape += separator + type->ToString();
        separator = ", ";
    }
    return shape + (entry.GetArgTypes().empty() ? "()" : ")");
}

}  // namespace

SlcCheckSemantics::SlcCheckSemantics(SlcPtr<SlcSemanticError> errors, SlcOptionsControl& options,
                                     SlcCheckUsage* usage)
    : m_errors(errors),
      m_options(options),
      m_typesPass(errors, &options),
      m_uniquePass(errors),
      m_declarations(errors, &options),
      m_detailPass(errors),
      m_inlineBudget(MakeShared<SlcInlineBudget>()),
      m_usage(usage)
{
}

void SlcCheckSemantics::operator()(SlcSyntaxNode* node, const SlcScopes& scopes)
{
    m_scopes = scopes;
    m_function = scopes.current;
    node->ApplyWalker(this);
}

void SlcCheckSemantics::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcCheckSemantics::Case(SlcDefinitionsNode* node)
{
    const auto& definitions = node->GetDefinitions();
    // The type of the shader also affects functions before it.
    const auto shader = std::find_if(definitions.begin(), definitions.end(),
                                     [](const auto& d) { return d->IsShader(); });
    if (shader == definitions.end()) {
        const SlcSyntaxNode* place = definitions.empty() ? nullptr : definitions.front().get();
        m_errors->Error(place, "No shader has been defined (only functions).  "
                               "No compilation is performed.");
        return;
    }
    m_shaderType = static_cast<SlcShaderDefNode*>(shader->get())->GetShaderType();
    m_scopes.shader = SlcShaderSymbolTableCreater(m_errors)(m_shaderType, m_scopes.global);
    node->WalkIn(this);
    node->SetAnnotation(
        MakeShared<SlcDefinitionsInfo>(m_scopes.global, m_scopes.shader, m_shaderType));
}

void SlcCheckSemantics::Case(SlcShaderDefNode* node)
{
    if (m_shaderSeen) {
        m_errors->Error(node, "Cannot define more than one shader per file");
        return;
    }
    m_shaderSeen = true;
    m_errors->SetFuncName(node->GetIdent(), node->GetFileParsed());
    const auto formals = m_declarations.AddShaderFormals(node->GetFormals(), m_scopes.shader,
                                                         OuterScopes(), m_shaderType);
    const auto usage = BodyUsage(node->GetFormals());
    SlcCheckSemantics body = BodyWalker(node, usage.get());
    body(node->GetBody(), {.global = m_scopes.global,
                           .current = formals,
                           .shader = m_scopes.shader,
                           .illuminance = nullptr});
    node->SetAnnotation(MakeShared<SlcStatementInfo>(formals));
}

void SlcCheckSemantics::Case(SlcFuncDefNode* node)
{
    m_errors->SetFuncName(node->GetIdent(), node->GetFileParsed());
    CheckReturnType(node);
    SlcPtr<SlcSymbolTable> scope = m_declarations.AddFunctionFormals(
        node->GetFormals(), m_scopes.global, OuterScopes(), m_shaderType);
    NoteDefinitionScope(*scope);
    scope->AddVarEntry(ReturnTypeIdent(), node->GetReturnType(), SlcDetailNode::AVarying(),
                       SlcStorageSpecNode::AInput(), false, nullptr, nullptr);

    SlcPtr<SlcSymbolTable> illuminance;
    if (m_shaderType->SeesLights())
        illuminance = MakeShared<SlcIlluminanceSymbolTable>(scope, true);
    auto usage = BodyUsage(node->GetFormals());
    SlcCheckSemantics body = BodyWalker(node, usage.get());
    body(node->GetBody(), {.global = m_scopes.global,
                           .current = scope,
                           .shader = m_scopes.shader,
                           .illuminance = illuminance});

    if (!body.m_hasReturn && !node->GetReturnType()->IsVoidType())
        m_errors->Warning(
            node, "Function '" + node->GetIdent()->GetName() + "' doesn't return a value", 1);
    const SlcBodyFacts facts = SlcGetBodyFacts()(node, m_shaderType);
    AddFunction(node, MakeShared<SlcFuncInfo>(node, std::move(usage), scope, body.m_hasIlluminate,
                                              body.m_hasIlluminance, facts, m_inlineBudget));
}

void SlcCheckSemantics::CheckReturnType(const SlcFuncDefNode* node)
{
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(node->GetReturnType());
    if (array && array->GetElementType()->IsVoidType())
        m_errors->Error(node, "Function '" + node->GetIdent()->GetName() +
                                  "' cannot return an array of type void");
}

/// Declares the function after its body has been checked, so that it cannot call itself.
void SlcCheckSemantics::AddFunction(SlcFuncDefNode* node, SlcPtr<SlcAnnotation> info)
{
    const auto replaced = m_scopes.current->FindUserFunction(
        node->GetIdent(), node->GetReturnType(), node->GetFormals());
    node->SetSymbolEntry(m_scopes.current->AddFuncEntry(
        node->GetIdent(), node->GetReturnType(), node->GetFormals(), std::move(info),
        &SlcCheckArgsDetail, &SlcCheckArgsDetailInline));
    if (replaced)
        WarnOfReplaced(node, *replaced);
}

void SlcCheckSemantics::WarnOfReplaced(const SlcFuncDefNode* node,
                                       const SlcFuncSymbolEntry& replaced)
{
    const SlcFuncDefNode* other = CheckCast<SlcFuncInfo>(replaced.GetFuncInfo())->GetDefinition();
    m_errors->Warning(node,
                      "The function '" + ShapeOf(*node, *node->GetSymbolEntry()) + "' replaces '" +
                          ShapeOf(*other, replaced) + "' of " + *other->GetFileParsed() + ":" +
                          std::to_string(other->GetNoLine()),
                      1);
}

void SlcCheckSemantics::NoteDefinitionScope(SlcSymbolTable& formals) const
{
    if (m_options.m_strict)
        return;
    // A function before the shader sees the predefined variables of the shader's type.
    const bool aheadOfShader = !m_inFunction && !m_shaderSeen;
    formals.m_definitionScope = aheadOfShader ? m_scopes.shader : m_scopes.current;
}

std::unique_ptr<SlcCheckUsage> SlcCheckSemantics::BodyUsage(SlcFormalsNode* formals) const
{
    if (!m_usage)
        return nullptr;
    auto usage = std::make_unique<SlcCheckUsage>(m_errors);
    (*usage)(formals);
    return usage;
}

SlcCheckSemantics SlcCheckSemantics::BodyWalker(SlcDefinitionNode* definition,
                                                SlcCheckUsage* usage) const
{
    SlcCheckSemantics walker(m_errors, m_options, usage);
    walker.m_body = definition;
    walker.m_inFunction = definition->IsFunction();
    walker.m_inlineBudget = m_inlineBudget;
    walker.m_shaderSeen = m_shaderSeen;
    walker.m_shaderType = m_shaderType;
    if (m_body)
        walker.m_definition = m_function;
    return walker;
}

SlcOuterScopes SlcCheckSemantics::OuterScopes() const
{
    return {.global = m_scopes.global,
            .function = m_function,
            .definition = m_definition,
            .shader = m_scopes.shader,
            .illuminance = m_scopes.illuminance};
}

void SlcCheckSemantics::Case(SlcFuncDefStmtNode* node)
{
    m_scopes.current = m_scopes.current->CreateCurrentScopeTable();
    const SlcPtr<SlcSymbolTable> function = std::exchange(m_function, m_scopes.current);
    const SlcSemanticError::Heading heading = m_errors->GetHeading();
    node->GetFuncDef()->ApplyWalker(this);
    m_function = function;
    node->SetAnnotation(MakeShared<SlcStatementInfo>(m_scopes.current));
    m_errors->ResumeFunc(heading);
}
