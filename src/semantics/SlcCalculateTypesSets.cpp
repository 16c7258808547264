// Types are computed from the operands up. An expression may have several types, among which only
// its context can choose:
//
//     (1, 2, 3)               point, color
//     noise(s)                float, color, point
//     noise(s) * Cs           color                      the only type that fits both sides
//
// A call has the result types of all overloads that match its arguments exactly or, if there are
// none, by promotion. A function that is not in scope is looked up in shadeop libraries, if the
// options allow it, before it is reported.
//
// Chains such as a + b + c may have thousands of operators, so they are walked as a list
// (SlcLeftSpine) instead of recursively.
//
// Tested by tests/semantics/SlcCalculateTypesSetsTest.cpp.

#include "semantics/SlcCalculateTypesSets.h"

#include <algorithm>
#include <utility>

#include "frontend/SlcLaterWords.h"
#include "frontend/SlcNodes.h"
#include "semantics/SlcBuiltInDetailRules.h"
#include "semantics/SlcLeftSpine.h"
#include "semantics/SlcOperatorTypes.h"
#include "semantics/SlcTypedExpr.h"
#include "support/SlcDiagnostics.h"

using T = SlcTypeNode;
using SlcTypedExpr::HasOwnReport;
using SlcTypedExpr::TypesOf;

namespace {

void SetTypes(SlcExprNode* expr, std::vector<SlcTypeNode*> types)
{
    expr->SetAnnotation(MakeShared<SlcPossibleTypes>(std::move(types)));
}

void SetType(SlcExprNode* expr, SlcTypeNode* type)
{
    expr->SetAnnotation(MakeShared<SlcPossibleTypes>(type));
}

bool IsAssignable(const SlcAssignExprNode& assignment, const SlcTypeNode* type)
{
    if (type->IsFloatType() || type->IsColorType() || type->IsPointType() || type->IsErrorType())
        return true;
    return assignment.IsEqAssign() && (type->IsMatrixType() || type->IsStringType());
}

SlcTypeNode* ElementTypeOf(const SlcVarSymbolEntry& array)
{
    return static_cast<SlcArrayTypeNode*>(array.GetType())->GetElementType();
}

/// Adds advice that a component of a color, point or matrix is accessed by a call such as
/// "comp(c, 0)". `set` is "set" for a write, and otherwise empty.
void AdviseOnComponent(SlcSemanticError& errors, const SlcSyntaxNode* node,
                       const SlcVarSymbolEntry& variable, const SlcExprNode* index,
                       const std::string& set)
{
    const SlcTypeNode& type = *variable.GetType();
    const std::string end = set.empty() ? ")'" : ", ...)'";
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(index);
    const std::string number =
        constant && constant->IsFloat()
            ? std::to_string(static_cast<int>(constant->GetFloatConst()->GetValue()))
            : "...";
    if (type.IsColorType())
        errors.Advise(node, "write '" + set + "comp(" + variable.GetName() + ", " + number + end);
    else if (type.IsPointType())
        errors.Advise(node,
                      "write '" + set + "xcomp(" + variable.GetName() + end + ", or 'y' or 'z'");
    else if (type.IsMatrixType())
        errors.Advise(node, "write '" + set + "comp(" + variable.GetName() + ", row, column" + end);
}

}  // namespace

SlcCalculateTypesSets::SlcCalculateTypesSets(SlcPtr<SlcSemanticError> errors,
                                             const SlcOptionsControl* options)
    : m_errors(errors),
      m_options(options),
      m_shadeops(std::move(errors), options,
                 {SlcAllArgsUniformReturnUniform, SlcAllArgsUniformReturnUniformInline})
{
}

void SlcCalculateTypesSets::operator()(SlcSyntaxNode* node, const SlcScopes& scopes,
                                       SlcShaderTypeNode* shaderType)
{
    m_current = scopes.current;
    m_shaderType = shaderType;
    m_valueUsed = false;
    node->ApplyWalker(this);
}

void SlcCalculateTypesSets::WalkOperands(SlcSyntaxNode* node)
{
    const bool valueUsed = std::exchange(m_valueUsed, true);
    node->WalkIn(this);
    m_valueUsed = valueUsed;
}

void SlcCalculateTypesSets::Default(SlcSyntaxNode* node)
{
    WalkOperands(node);
}

void SlcCalculateTypesSets::Case(SlcExprNode* expr)
{
    m_errors->FatalError(expr, "Not yet checking types of this expression");
}

void SlcCalculateTypesSets::Case(SlcConstExprNode* constant)
{
    SetType(constant, constant->IsFloat() ? T::AFloat() : T::AString());
}

void SlcCalculateTypesSets::Case(SlcPointExprNode* triple)
{
    WalkOperands(triple);
    SetTypes(triple, {T::APoint(), T::AColor()});
}

void SlcCalculateTypesSets::Case(SlcMatrixExprNode* matrix)
{
    WalkOperands(matrix);
    SetType(matrix, T::AMatrix());
}

void SlcCalculateTypesSets::Case(SlcCastExprNode* cast)
{
    WalkOperands(cast);
    SetType(cast, cast->GetType());
}

void SlcCalculateTypesSets::Case(SlcArrayExprNode* array)
{
    WalkOperands(array);
    Types elements;
    for (const auto& element : array->GetExprs())
        for (SlcTypeNode* type : TypesOf(element.get()))
            SlcAddTypeIfNotPresent(elements, type);
    // An empty list matches any array.
    if (array->GetExprs().empty())
        elements.push_back(T::AAnyType());
    Types types;
    for (SlcTypeNode* element : elements) {
        if (element->IsErrorType())
            return SetType(array, T::AError());
        types.push_back(T::CreateArrayType(element));
    }
    SetTypes(array, std::move(types));
}

void SlcCalculateTypesSets::Case(SlcIdentExprNode* variable)
{
    const auto entry = FindVariable(variable, variable->GetIdent());
    variable->SetSymbolEntry(entry);
    SetType(variable, entry->GetType());
}

void SlcCalculateTypesSets::Case(SlcArrayRefExprNode* element)
{
    WalkOperands(element);
    const auto entry = FindVariable(element, element->GetIdent());
    element->SetSymbolEntry(entry);
    if (entry->GetType()->IsArrayType())
        return SetType(element, ElementTypeOf(*entry));
    if (!entry->GetType()->IsErrorType()) {
        m_errors->Error(element, "Variable is not an array", element->GetIdent()->GetName());
        AdviseOnComponent(*m_errors, element, *entry, element->GetIndex(), "");
    }
    SetType(element, T::AError());
}

void SlcCalculateTypesSets::Case(SlcIdentLValueNode* lvalue)
{
    const auto entry = FindVariable(lvalue, lvalue->GetIdent());
    lvalue->SetSymbolEntry(entry);
    SetTypeOfTarget(lvalue, entry, entry->GetType());
}

void SlcCalculateTypesSets::Case(SlcArrayRefLValueNode* lvalue)
{
    WalkOperands(lvalue);
    const auto entry = FindVariable(lvalue, lvalue->GetIdent());
    lvalue->SetSymbolEntry(entry);
    SlcTypeNode* type = T::AError();
    if (entry->GetType()->IsArrayType()) {
        type = ElementTypeOf(*entry);
    } else if (!entry->GetType()->IsErrorType()) {
        m_errors->Error(lvalue, "Variable not an array type", lvalue->GetIdent()->GetName());
        AdviseOnComponent(*m_errors, lvalue, *entry, lvalue->GetIndex(), "set");
    }
    SetTypeOfTarget(lvalue, entry, type);
}

void SlcCalculateTypesSets::Case(SlcAssignExprNode* assignment)
{
    WalkOperands(assignment);
    SlcTypeNode* type =
        CheckCast<SlcLValueType>(assignment->GetLValue()->GetAnnotation())->GetType();
    if (IsAssignable(*assignment, type))
        return SetType(assignment, type);
    m_errors->Error(assignment, "A lvalue of type '" + type->ToString() +
                                    "' cannot be assigned with the '" +
                                    std::string(assignment->ToString()) + "' operator");
    SetType(assignment, T::AVoid());
}

void SlcCalculateTypesSets::Case(SlcBinOpExprNode* operation)
{
    const bool valueUsed = std::exchange(m_valueUsed, true);
    const SlcLeftSpine spine(operation);
    spine.first->ApplyWalker(this);
    for (auto link = spine.operations.rbegin(); link != spine.operations.rend(); ++link) {
        (*link)->GetRight()->ApplyWalker(this);
        SetTypes(*link, SlcTypesOfBinOp(**link));
    }
    m_valueUsed = valueUsed;
}

void SlcCalculateTypesSets::Case(SlcUMinusExprNode* minus)
{
    WalkOperands(minus);
    SetTypes(minus, SlcTypesOfMinus(minus->GetOperand()));
}

void SlcCalculateTypesSets::Case(SlcCondExprNode* conditional)
{
    WalkOperands(conditional);
    SetTypes(conditional, SlcTypesOfConditional(conditional->GetThen(), conditional->GetElse()));
}

void SlcCalculateTypesSets::Case(SlcTextureExprNode* texture)
{
    WalkOperands(texture);
    SetTypes(texture, {T::AFloat(), T::AColor()});
}

void SlcCalculateTypesSets::Case(SlcProcCallExprNode* call)
{
    const bool valueUsed = m_valueUsed;
    WalkOperands(call);
    SetTypes(call, TypesOfCall(call, valueUsed));
}

SlcPtr<SlcVarSymbolEntry> SlcCalculateTypesSets::FindVariable(const SlcSyntaxNode* node,
                                                              SlcIdentNode* ident)
{
    if (auto entry = m_current->FindVarEntry(ident, false))
        return entry;
    m_errors->Error(node, "Undefined variable", ident->GetName());
    // Declare the name, so that it is reported only once.
    return m_current->AddVarEntry(ident, T::AError(), SlcDetailNode::AVarying(),
                                  SlcStorageSpecNode::ALocal(), false, nullptr, nullptr);
}

void SlcCalculateTypesSets::SetTypeOfTarget(SlcLValueNode* lvalue,
                                            const SlcPtr<SlcVarSymbolEntry>& entry,
                                            SlcTypeNode* type)
{
    if (!type->IsErrorType() && !IsWritable(lvalue, entry))
        type = T::AError();
    lvalue->SetAnnotation(MakeShared<SlcLValueType>(type));
}

bool SlcCalculateTypesSets::IsWritable(const SlcLValueNode* lvalue, SlcPtr<SlcVarSymbolEntry> entry)
{
    const std::string& name = lvalue->GetIdent()->GetName();
    const SlcStorageSpecNode* storage = SlcOutermost(std::move(entry))->GetStorage();
    if (storage->IsInput())
        m_errors->Error(lvalue, "Cannot assign to a formal not declared 'output'", name);
    else if (storage->IsReadOnly())
        m_errors->Warning(lvalue, "Assignment to a read-only variable", name, 1);
    return !storage->IsInput();
}

SlcCalculateTypesSets::Types SlcCalculateTypesSets::TypesOfCall(SlcProcCallExprNode* call,
                                                                bool valueUsed)
{
    const int errorsBefore = NbErrors();
    SlcOverloads overloads = FindOverloads(call, valueUsed);
    if (overloads.outcome == SlcOverloads::Outcome::UnknownName && LoadDSO(call, call->GetIdent()))
        overloads = FindOverloads(call, valueUsed);
    if (overloads.outcome != SlcOverloads::Outcome::Found) {
        // A fault inside an argument has been reported already.
        const bool isReported =
            overloads.outcome == SlcOverloads::Outcome::WrongTypes && NbErrors() != errorsBefore;
        if (!isReported)
            ReportNoOverload(call, overloads);
        return {T::AError()};
    }
    // A faulty argument must not select an overload.
    const auto& arguments = call->GetArguments()->GetArgs();
    const bool hasFault = std::any_of(arguments.begin(), arguments.end(), [](const auto& argument) {
        return HasOwnReport(argument.get());
    });
    return hasFault ? Types{T::AError()} : overloads.types;
}

void SlcCalculateTypesSets::ReportNoOverload(SlcProcCallExprNode* call,
                                             const SlcOverloads& overloads)
{
    const std::string& name = call->GetIdent()->GetName();
    switch (overloads.outcome) {
    case SlcOverloads::Outcome::Found:
        break;
    case SlcOverloads::Outcome::UnknownName:
        m_errors->Error(call, "Undefined function", name);
        if (const std::string advice = SlcAdviceOnLaterFunction(name); !advice.empty())
            m_errors->Advise(call, advice);
        break;
    case SlcOverloads::Outcome::WrongCount:
        m_errors->Error(call, "Invalid number of arguments for '" + name + "' function");
        break;
    case SlcOverloads::Outcome::WrongTypes:
        overloads.closest->ErrorsTypeArgs(SlcArgsOf(call->GetArguments()), m_errors, name);
        break;
    }
}

bool SlcCalculateTypesSets::LoadDSO(SlcSyntaxNode* node, SlcIdentNode* name)
{
    return m_options->m_useShadeops && m_shadeops.Load(node, name, *m_current);
}

SlcOverloads SlcCalculateTypesSets::FindOverloads(SlcProcCallExprNode* call, bool valueUsed)
{
    using Functions = SlcLookup::Functions;
    SlcLookup lookup{call->GetIdent(), call->GetArguments(), Functions::All};
    if (valueUsed) {
        lookup.functions = Functions::WithValue;
        const int errorsBefore = NbErrors();
        SlcOverloads found = m_current->FindOverloads(lookup, m_errors);
        if (found.outcome != SlcOverloads::Outcome::WrongTypes || NbErrors() != errorsBefore)
            return found;
        // The arguments may match a void function; the use of its value is then reported.
        lookup.functions = Functions::All;
    }
    return m_current->FindOverloads(lookup, m_errors);
}
