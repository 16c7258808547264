// A declaration is checked from left to right: the name must be free, and the initializer must
// match the declared type and detail. The name is declared only after that, so that in
//
//     float x = x + 1;
//
// the second x is that of an enclosing scope, or undefined. The initializer goes through the same
// passes as any expression. All of them except SlcCheckUsage run here, since the declaration
// determines the requested type.
//
// A declaration whose type is invalid adds the name with the error type, so that uses of the name
// are not reported.
//
// Tested by tests/semantics/SlcCheckSemanticsTest.cpp.

#include "semantics/SlcAddVarsSymbolTable.h"

#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "semantics/SlcTypedExpr.h"
#include "support/SlcDiagnostics.h"

namespace {

const SlcArrayTypeNode* AsArray(const SlcTypeNode* type)
{
    return type->IsArrayType() ? dynamic_cast<const SlcArrayTypeNode*>(type) : nullptr;
}

bool HasOpenLength(const SlcTypeNode* type)
{
    const SlcArrayTypeNode* array = AsArray(type);
    return array && array->GetLength() == SlcDefExprNode::k_unspecifiedSize;
}

/// True for types other than float to which a float is promoted.
bool IsPromotedFromFloat(const SlcTypeNode* type)
{
    return type->IsPointType() || type->IsColorType() || type->IsMatrixType();
}

bool Matches(const SlcTypeNode* initializer, const SlcTypeNode* declared)
{
    return initializer->IsSameType(declared) ||
           (IsPromotedFromFloat(declared) && initializer->IsFloatType());
}

/// True if the elements of one array type can initialize those of another; ignores the lengths.
bool ElementsMatch(const SlcTypeNode* initializer, const SlcTypeNode* declared)
{
    return Matches(AsArray(initializer)->GetElementType(), AsArray(declared)->GetElementType());
}

int LengthOf(const SlcExprNode* initializer)
{
    if (const auto* list = dynamic_cast<const SlcArrayExprNode*>(initializer))
        return static_cast<int>(list->GetExprs().size());
    const auto& types = SlcPossibleTypes::Of(initializer)->GetTypes();
    const SlcArrayTypeNode* array = types.size() == 1 ? AsArray(types.front()) : nullptr;
    return array ? array->GetLength() : SlcDefExprNode::k_unspecifiedSize;
}

/// Returns the place for a report on a variable: its initializer, if it has one.
const SlcSyntaxNode* PlaceOf(const SlcDefExprNode* definition)
{
    if (const SlcExprNode* initializer = definition->GetInitializer())
        return initializer;
    return definition;
}

SlcPtr<SlcVarSymbolEntry> FindVariable(const SlcPtr<SlcSymbolTable>& table, SlcIdentNode* ident)
{
    return table ? table->FindVarEntry(ident, false) : nullptr;
}

}  // namespace

SlcAddVarsSymbolTable::SlcAddVarsSymbolTable(SlcPtr<SlcSemanticError> errors,
                                             const SlcOptionsControl* options)
    : m_errors(errors),
      m_typesPass(errors, options),
      m_uniquePass(errors),
      m_detailPass(errors)
{
}

SlcPtr<SlcSymbolTable> SlcAddVarsSymbolTable::AddShaderFormals(SlcFormalsNode* formals,
                                                               SlcPtr<SlcSymbolTable> scope,
                                                               const SlcOuterScopes& outer,
                                                               SlcShaderTypeNode* shaderType)
{
    return Add(formals, scope->CreateNewScopeTable(), Declares::ShaderFormals, outer, shaderType,
               {});
}

SlcPtr<SlcSymbolTable> SlcAddVarsSymbolTable::AddFunctionFormals(SlcFormalsNode* formals,
                                                                 SlcPtr<SlcSymbolTable> scope,
                                                                 const SlcOuterScopes& outer,
                                                                 SlcShaderTypeNode* shaderType)
{
    return Add(formals, scope->CreateNewScopeTable(), Declares::FunctionFormals, outer, shaderType,
               {.inFunction = true});
}

SlcPtr<SlcSymbolTable> SlcAddVarsSymbolTable::AddLocalVars(SlcVarDefsStmtNode* statement,
                                                           SlcPtr<SlcSymbolTable> scope,
                                                           const SlcOuterScopes& outer,
                                                           SlcShaderTypeNode* shaderType,
                                                           const SlcDeclarationPlace& place)
{
    return Add(statement->GetVarDefs(), scope->CreateCurrentScopeTable(), Declares::Locals, outer,
               shaderType, place);
}

SlcPtr<SlcSymbolTable> SlcAddVarsSymbolTable::Add(SlcSyntaxNode* node, SlcPtr<SlcSymbolTable> table,
                                                  Declares what, const SlcOuterScopes& outer,
                                                  SlcShaderTypeNode* shaderType,
                                                  const SlcDeclarationPlace& place)
{
    m_current = std::move(table);
    m_declares = what;
    m_outer = outer;
    m_shaderType = shaderType;
    m_place = place;
    node->ApplyWalker(this);
    return std::move(m_current);
}

void SlcAddVarsSymbolTable::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcAddVarsSymbolTable::Case(SlcTypeNode* type)
{
    m_type = type;
    const SlcArrayTypeNode* array = AsArray(type);
    const SlcTypeNode* element = array ? array->GetElementType() : type;
    // A renderer sets a string parameter once per instance, so the parameter is uniform.
    m_dropsVarying = false;
    if (m_declares != Declares::ShaderFormals || !element->IsStringType())
        return;
    m_dropsVarying = m_detail->IsVarying();
    m_detail = SlcDetailNode::AUniform();
}

void SlcAddVarsSymbolTable::Case(SlcDefExprNode* definition)
{
    SlcIdentNode* ident = definition->GetIdent();
    const bool isRepeated = m_current->IsInCurrent(ident, false);
    if (isRepeated)
        m_errors->Error(PlaceOf(definition), "Illegal redefinition of variable", ident->GetName());
    if (m_dropsVarying)
        m_errors->Warning(PlaceOf(definition),
                          "Parameter '" + ident->GetName() +
                              "' is uniform: a string has one value for all points",
                          2);
    // Look up the name first, since the walk of the initializer declares undefined names.
    const bool shadows = !m_storage->IsExtern() && m_current->IsVarInTable(ident);
    SlcTypeNode* type = DeclaredType(definition);
    if (SlcExprNode* initializer = definition->GetInitializer()) {
        const int errorsBefore = NbErrors();
        m_typesPass(initializer,
                    {.global = m_outer.global,
                     .current = m_current,
                     .shader = m_outer.shader,
                     .illuminance = m_outer.illuminance},
                    m_shaderType);
        if (HasOpenLength(type))
            type = SlcTypeNode::CreateArrayType(AsArray(type)->GetElementType(),
                                                LengthOf(initializer));
        CheckInitializer(definition, type, errorsBefore);
    }
    if (isRepeated)
        return AddRepeated(definition, type);
    if (shadows)
        m_errors->Warning(
            PlaceOf(definition),
            "The declaration of '" + ident->GetName() + "' shadows one in an englobing scope", 1);
    if (m_storage->IsExtern())
        AddExtern(definition, type);
    else
        AddVariable(definition, type, m_storage, nullptr);
}

/// The definition gets an entry, since later passes walk it like any other, but no name refers to
/// that entry. If a local repeats the name of a function, or of a variable with another type, or if
/// only one of the two variables is uniform, the name has the error type from here on, so that no
/// use of it is reported.
void SlcAddVarsSymbolTable::AddRepeated(SlcDefExprNode* definition, SlcTypeNode* type)
{
    SlcIdentNode* ident = definition->GetIdent();
    definition->SetSymbolEntry(MakeShared<SlcVarSymbolEntry>(
        ident, type, m_detail, SlcStorageSpecNode::ALocal(), false, nullptr));
    const auto known = FindVariable(m_current, ident);
    const bool isAlike = known && known->GetType()->IsSameExactType(type) &&
                         known->GetDetail()->IsUniform() == m_detail->IsUniform();
    if (m_declares == Declares::Locals && !isAlike)
        m_current->AddVarEntry(ident, SlcTypeNode::AError(), m_detail, SlcStorageSpecNode::ALocal(),
                               false, nullptr, nullptr);
}

SlcTypeNode* SlcAddVarsSymbolTable::DeclaredType(const SlcDefExprNode* definition)
{
    const std::string& name = definition->GetIdent()->GetName();
    const SlcArrayTypeNode* array = AsArray(m_type);
    if (m_type->IsVoidType() || (array && array->GetElementType()->IsVoidType())) {
        m_errors->Error(PlaceOf(definition), "Variable '" + name + "' cannot be of type void");
        return SlcTypeNode::AError();
    }
    if (!definition->IsArray())
        return m_type;
    if (m_type->IsArrayType()) {
        m_errors->Error(PlaceOf(definition), "Array variable '" + name + "' cannot hold arrays");
        return SlcTypeNode::AError();
    }
    return SlcTypeNode::CreateArrayType(m_type, definition->GetArraySize());
}

void SlcAddVarsSymbolTable::CheckInitializer(SlcDefExprNode* definition, SlcTypeNode* type,
                                             int errorsBefore)
{
    SlcExprNode* initializer = definition->GetInitializer();
    const auto types = SlcPossibleTypes::Of(initializer);
    types->SetUniqueType(WantedType(definition, type));
    m_uniquePass(initializer, m_current, m_shaderType);
    const SlcSemanticError::QuietAfterError quiet(*m_errors, errorsBefore);
    const int errorsOfTypes = NbErrors();
    const SlcCallPlace place{m_shaderType, !m_place.inFunction, m_place.lightNesting != 0,
                             m_detail};
    m_detailPass(initializer, place);
    if (!m_detail->IsUniform() || types->GetDetail()->IsUniform() || NbErrors() != errorsOfTypes)
        return;
    m_errors->Error(initializer, "The expression initializing '" +
                                     definition->GetIdent()->GetName() + "' must be uniform");
    SlcAdviseOnOpenDetail(*m_errors, initializer, *types->GetDetail(), place);
}

SlcTypeNode* SlcAddVarsSymbolTable::WantedType(const SlcDefExprNode* definition, SlcTypeNode* type)
{
    const SlcExprNode* initializer = definition->GetInitializer();
    const auto annotation = SlcPossibleTypes::Of(initializer);
    const auto& types = annotation->GetTypes();
    const std::string& name = definition->GetIdent()->GetName();
    // A single type is checked separately, so that a mismatch of two arrays is reported only if
    // their elements differ. If there are several types, one must match the declared type.
    const bool single = types.size() == 1;
    const bool suits = single ? Matches(types.front(), type) || type->IsErrorType()
                              : annotation->IsInTypes(type, false) ||
                                    (IsPromotedFromFloat(type) &&
                                     annotation->IsInTypes(SlcTypeNode::AFloat(), false));
    if (!suits) {
        if (types.empty())
            return SlcTypeNode::AVoid();  // the next pass reports this
        const bool arrays = single && AsArray(types.front()) && AsArray(type);
        if (!arrays) {
            m_errors->Error(initializer, "Variable initialization type mismatch");
            return SlcTypeNode::AVoid();
        }
        if (!ElementsMatch(types.front(), type)) {
            m_errors->Error(initializer, "Variable initialization base array type mismatch", name);
            return SlcTypeNode::AVoid();
        }
    }
    const SlcArrayTypeNode* array = AsArray(type);
    const auto* list = dynamic_cast<const SlcArrayExprNode*>(initializer);
    if (array && list && !HasOpenLength(array) &&
        list->GetExprs().size() > static_cast<std::size_t>(array->GetLength())) {
        m_errors->Error(initializer, "At most " + std::to_string(array->GetLength()) +
                                         " elements expected for initializer of array variable '" +
                                         name + "'");
        return SlcTypeNode::AVoid();
    }
    return type;
}

SlcPtr<SlcVarSymbolEntry> SlcAddVarsSymbolTable::FindOuter(SlcIdentNode* ident) const
{
    for (const auto* table :
         {&m_outer.function, &m_outer.definition, &m_outer.shader, &m_outer.illuminance})
        if (auto entry = FindVariable(*table, ident))
            return entry;
    return nullptr;
}

void SlcAddVarsSymbolTable::AddExtern(SlcDefExprNode* definition, SlcTypeNode* type)
{
    SlcIdentNode* ident = definition->GetIdent();
    const std::string& name = ident->GetName();
    if (definition->GetInitializer())
        m_errors->Error(definition->GetInitializer(),
                        "Extern variable '" + name + "' cannot be initialized");
    SlcPtr<SlcVarSymbolEntry> outer = FindOuter(ident);
    if (outer.Null()) {
        m_errors->Error(PlaceOf(definition),
                        "No outer scope declaration for extern variable '" + name + "'");
        AddVariable(definition, type, SlcStorageSpecNode::ALocal(), nullptr);
        return;
    }
    const bool matches = outer->GetType()->IsSameExactType(type) &&
                         outer->GetDetail()->IsUniform() == m_detail->IsUniform();
    if (!matches) {
        m_errors->Error(PlaceOf(definition),
                        "Extern declaration has no match in outer scope for variable '" + name +
                            "'");
        outer = nullptr;
    } else if (HasOpenLength(type)) {
        type = outer->GetType();
    }
    AddVariable(definition, type, m_storage, outer);
}

void SlcAddVarsSymbolTable::ReportOpenLength(const SlcDefExprNode* definition)
{
    const SlcExprNode* initializer = definition->GetInitializer();
    const std::string& name = definition->GetIdent()->GetName();
    if (!initializer || dynamic_cast<const SlcArrayExprNode*>(initializer))
        m_errors->Error(PlaceOf(definition),
                        "Array variable '" + name + "' needs a size or an initializer");
    else if (!SlcTypedExpr::HasOwnReport(initializer) &&
             SlcPossibleTypes::Of(initializer)->GetUniqueType()->IsArrayType())
        m_errors->Error(initializer, "The length of the result that initializes array variable '" +
                                         name + "' is unknown");
    // Otherwise a fault of the initializer has been reported.
}

void SlcAddVarsSymbolTable::AddVariable(SlcDefExprNode* definition, SlcTypeNode* type,
                                        SlcStorageSpecNode* storage,
                                        const SlcPtr<SlcVarSymbolEntry>& outer)
{
    if (HasOpenLength(type) && !storage->IsExtern() && m_declares != Declares::FunctionFormals) {
        ReportOpenLength(definition);
        type = SlcTypeNode::AError();
    }
    definition->SetSymbolEntry(m_current->AddVarEntry(definition->GetIdent(), type, m_detail,
                                                      storage, false, nullptr, outer));
}
