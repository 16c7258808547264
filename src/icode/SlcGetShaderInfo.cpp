#include "icode/SlcGetShaderInfo.h"

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

#include "icode/SlcGenInterCode.h"
#include "icode/SlcTextureLowering.h"
#include "semantics/SlcFuncInfo.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcCallFormals.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcImplicitReads.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcShaderSymbolTable.h"
#include "symbols/SlcSymbolTable.h"

namespace {

using Hiddens = SlcShaderSymbolTable;

constexpr const char* k_objectSpace = "\"object\"";
constexpr const char* k_shaderSpace = "\"shader\"";
constexpr const char* k_currentSpace = "\"current\"";
constexpr const char* k_rgbSpace = "\"rgb\"";
constexpr const char* k_noSpace = "\"\"";
// The default value does not stand in one named space. No literal: those have quotes.
constexpr const char* k_severalSpaces = "more";

/// What an `extern` declaration, or the `Ps` of a surface shader, stands for; or the variable
/// itself.
SlcPtr<SlcVarSymbolEntry> Outermost(SlcPtr<SlcVarSymbolEntry> named)
{
    SlcPtr<SlcVarSymbolEntry> entry = SlcOutermost(std::move(named));
    const bool isP = entry && Hiddens::sm_P && entry->GetIntCodeVar() &&
                     entry->GetIntCodeVar() == Hiddens::sm_P->GetIntCodeVar();
    return isP ? Hiddens::sm_P : entry;
}

bool LivesInSpace(const SlcTypeNode* type)
{
    return type->IsPointType() || type->IsMatrixType();
}

bool IsNameOneOf(const std::string& name, std::initializer_list<const char*> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

SlcGetShaderInfo::SlcGetShaderInfo(SlcPtr<SlcSemanticError>& errors,
                                   SlcPtr<SlcGenInterCode>& codeGenerator)
    : m_errors(errors),
      m_codeGenerator(codeGenerator)
{
    AddSpaceIfNotInList(SlcLexicalNode::CreateString(k_objectSpace));
    AddSpaceIfNotInList(SlcLexicalNode::CreateString(k_shaderSpace));
}

SlcGetShaderInfo::~SlcGetShaderInfo() = default;

void SlcGetShaderInfo::operator()(SlcSyntaxNode* root)
{
    m_inFormals = false;
    m_levelsToLeave = 0;
    m_needsGrid = false;
    root->ApplyWalker(this);
}

void SlcGetShaderInfo::Default(SlcSyntaxNode* node)
{
    node->WalkIn(this);
}

void SlcGetShaderInfo::Case(SlcFuncDefNode* node)
{
    const auto& entry = node->GetSymbolEntry();
    if (entry.Null() || entry->GetFuncInfo().Null())
        return;
    if (!CheckCast<SlcFuncInfo>(entry->GetFuncInfo())->IsCalled())
        return;
    const bool inFormals = std::exchange(m_inFormals, false);
    const int levelsToLeave = std::exchange(m_levelsToLeave, 0);
    const bool needsGrid = std::exchange(m_needsGrid, false);
    const bool namesObjectSpace = std::exchange(m_namesObjectSpace, false);
    node->GetBody()->ApplyWalker(this);
    if (m_needsGrid)
        m_contextFunctions.insert(entry);
    if (m_namesObjectSpace)
        m_objectSpaceFunctions.insert(entry);
    m_namesObjectSpace = namesObjectSpace;
    m_needsGrid = needsGrid;
    m_levelsToLeave = levelsToLeave;
    m_inFormals = inFormals;
}

void SlcGetShaderInfo::Case(SlcShaderDefNode* node)
{
    m_shaderName = node->GetIdent();
    m_shader = node;
    m_shaderType = node->GetShaderType();
    m_codeGenerator->SetShaderType(m_shaderType);
    if (m_shaderType->IsLight()) {
        AddVarIfNotInList(Hiddens::sm_Cl);
        AddVarIfNotInList(Hiddens::sm_Ol);
        AddVarIfNotInList(Hiddens::sm_L);
    }
    if (m_shaderType->IsSurface()) {
        AddVarIfNotInList(Hiddens::sm_Ci);
        AddVarIfNotInList(Hiddens::sm_Oi);
    }
    m_inFormals = true;
    node->GetFormals()->ApplyWalker(this);
    m_inFormals = false;
    node->GetBody()->ApplyWalker(this);
}

void SlcGetShaderInfo::Case(SlcDefExprNode* node)
{
    m_spaceName.clear();
    if (m_inFormals)
        AddParameter(node);
    else
        node->WalkIn(this);
}

void SlcGetShaderInfo::AddParameter(SlcDefExprNode* node)
{
    const SlcPtr<SlcVarSymbolEntry>& entry = node->GetSymbolEntry();
    m_namesObjectSpace = false;
    m_parameterDependsOnContext = false;
    if (node->GetInitializer()) {
        node->GetInitializer()->ApplyWalker(this);
        m_parameters.push_back(entry);
        entry->GetIntCodeVar() =
            MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(entry->GetName()), entry->GetType(),
                                   entry->GetDetail(), entry->GetStorage());
        const bool dependsOnContext = DependsOnContext(node);
        entry->SetDependsOnContext(dependsOnContext);
        m_initDependsOnContext.push_back(dependsOnContext);
        m_paramInitValues.emplace_back();
        m_paramInitLists.push_back(
            m_codeGenerator->GenInitFormalCode(node, m_paramInitValues.back(), entry->GetType()));
    }
    m_needsObjectSpace.push_back(m_namesObjectSpace);
    m_paramSpaces.push_back(SpaceOf(entry->GetType()));
}

/// A value may vary for reasons that no variable in it shows, such as a random number.
bool SlcGetShaderInfo::DependsOnContext(SlcDefExprNode* node) const
{
    const auto types = SlcPossibleTypes::Of(node->GetInitializer());
    return m_parameterDependsOnContext || (types && types->GetDetail()->IsVarying());
}

SlcStringLiteralNode* SlcGetShaderInfo::SpaceOf(const SlcTypeNode* type) const
{
    while (type->IsArrayType())
        type = static_cast<const SlcArrayTypeNode*>(type)->GetElementType();
    if (!LivesInSpace(type) && !type->IsColorType())
        return SlcLexicalNode::CreateString(k_noSpace);
    if (m_spaceName == k_severalSpaces)
        return SlcLexicalNode::CreateString(k_noSpace);
    if (m_spaceName.empty())
        return SlcLexicalNode::CreateString(LivesInSpace(type) ? k_currentSpace : k_rgbSpace);
    return SlcLexicalNode::CreateString(m_spaceName);
}

void SlcGetShaderInfo::Case(SlcIdentExprNode* node)
{
    Touch(node->GetSymbolEntry());
}

void SlcGetShaderInfo::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    Touch(node->GetSymbolEntry());
    const auto index = SlcPossibleTypes::Of(node->GetIndex());
    m_needsGuard = m_needsGuard || !index->GetDetail()->IsUniform();
    m_readsElement = m_readsElement || !dynamic_cast<SlcConstExprNode*>(node->GetIndex());
}

void SlcGetShaderInfo::Touch(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    const SlcPtr<SlcVarSymbolEntry> variable = Outermost(entry);
    if (variable.Null())
        return;
    if (variable->IsHidden()) {
        AddVarIfNotInList(variable);
        m_needsGrid = true;
    }
    if (m_inFormals && (variable->IsHidden() || variable->DependsOnContext() ||
                        !variable->GetDetail()->IsUniform()))
        m_parameterDependsOnContext = true;
}

void SlcGetShaderInfo::Case(SlcIdentLValueNode* node)
{
    Touch(node->GetSymbolEntry());
    Write(node->GetSymbolEntry());
}

void SlcGetShaderInfo::Write(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    const SlcPtr<SlcVarSymbolEntry> variable = Outermost(entry);
    if (variable.Null() || !variable->IsHidden())
        return;
    const std::string& name = variable->GetName();
    m_CiAssigned = m_CiAssigned || name == "Ci" || name == "Cl";
    m_OiAssigned = m_OiAssigned || name == "Oi" || name == "Ol";
    m_PModified = m_PModified || name == "P";
}

void SlcGetShaderInfo::WriteArgument(const SlcExprNode* argument)
{
    if (argument->IsReferenceExpr())
        Write(static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry());
}

void SlcGetShaderInfo::Case(SlcAssignExprNode* node)
{
    node->WalkIn(this);
    m_needsGuard = true;
}

void SlcGetShaderInfo::Case(SlcLogOpNode* node)
{
    node->GetLeft()->ApplyWalker(this);
    m_needsGuard = false;
    m_readsElement = false;
    node->GetRight()->ApplyWalker(this);
    node->SetRightNeedsGuard(m_needsGuard);
    node->SetRightReadsElement(m_readsElement);
    // The operator itself stands in the right side of those around it.
    m_needsGuard = true;
}

void SlcGetShaderInfo::Case(SlcCondExprNode* node)
{
    node->WalkIn(this);
    m_needsGuard = true;
}

void SlcGetShaderInfo::Case(SlcCastExprNode* node)
{
    node->WalkIn(this);
    const SlcTypeNode* type = node->GetType();
    SlcStringLiteralNode* space = node->GetSpace();
    if (LivesInSpace(type)) {
        if (space)
            NameSpace(space);
        UseSpace(space ? space->GetText() : k_currentSpace);
    } else if (type->IsColorType()) {
        UseSpace(space ? space->GetText() : k_rgbSpace);
    } else if (m_inFormals && !m_spaceName.empty() && m_spaceName != k_currentSpace &&
               m_spaceName != k_rgbSpace) {
        m_spaceName = k_severalSpaces;
    }
}

void SlcGetShaderInfo::UseSpace(const std::string& space)
{
    if (!m_inFormals)
        return;
    if (m_spaceName.empty())
        m_spaceName = space;
    else if (m_spaceName != space)
        m_spaceName = k_severalSpaces;
}

void SlcGetShaderInfo::Case(SlcBinOpExprNode* node)
{
    node->WalkIn(this);
    if (!m_inFormals)
        return;
    const auto left = SlcPossibleTypes::Of(node->GetLeft());
    const auto right = SlcPossibleTypes::Of(node->GetRight());
    const SlcTypeNode* leftType = left->GetUniqueType();
    const SlcTypeNode* rightType = right->GetUniqueType();
    const bool withFloat = leftType->IsFloatType() || rightType->IsFloatType();
    if (withFloat && (LivesInSpace(leftType) || LivesInSpace(rightType)))
        LeaveNamedSpace(k_currentSpace);
    if (withFloat && (leftType->IsColorType() || rightType->IsColorType()))
        LeaveNamedSpace(k_rgbSpace);
}

void SlcGetShaderInfo::LeaveNamedSpace(const char* plainSpace)
{
    if (!m_spaceName.empty() && m_spaceName != plainSpace)
        m_spaceName = k_severalSpaces;
}

void SlcGetShaderInfo::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    using Lowering = SlcTextureLowering;
    const std::string primitive =
        Lowering::PrimitiveOf(node, Lowering::Source::Point, m_shaderType);
    // An area in place of a point makes no difference here.
    if (const auto* reads = SlcImplicitReads::Of(primitive))
        AddImplicitReads(*reads);
    m_needsGrid = true;
}

void SlcGetShaderInfo::AddImplicitReads(const SlcImplicitReads& reads)
{
    for (const std::string_view variable : reads.variables)
        if (!variable.empty())
            AddVarIfNotInList(Hiddens::EntryNamed(variable));
}

void SlcGetShaderInfo::Case(SlcProcCallExprNode* node)
{
    node->WalkIn(this);
    const SlcPtr<SlcFuncSymbolEntry>& entry = node->GetSymbolEntry();
    if (entry.Null())
        return;
    switch (entry->GetOrigin()) {
    case SlcFuncOrigin::BuiltIn:
        TouchVariablesOf(node);
        AddSpacesOf(node);
        WriteOutputArguments(node);
        m_needsGuard = m_needsGuard || entry->IsOrderSensitive();
        break;
    case SlcFuncOrigin::User:
        m_needsGuard = true;
        if (m_contextFunctions.count(entry) != 0) {
            m_needsGrid = true;
            m_parameterDependsOnContext = true;
        }
        if (m_objectSpaceFunctions.count(entry) != 0)
            m_namesObjectSpace = true;
        WriteOutputArguments(node);
        break;
    case SlcFuncOrigin::Shadeop:
        m_needsGuard = true;
        AddDSOFunc(node, CheckCast<SlcFuncDSOSymbolEntry>(entry));
        for (const auto& argument : node->GetArguments()->GetArgs())
            WriteArgument(argument.get());
        break;
    }
}

void SlcGetShaderInfo::TouchVariablesOf(SlcProcCallExprNode* node)
{
    m_usesRaytracing = m_usesRaytracing || node->GetIdent()->GetName() == "trace";
    const SlcIdentNode* primitive = node->GetSymbolEntry()->GetCName();
    const auto* reads = primitive ? SlcImplicitReads::Of(primitive->GetName()) : nullptr;
    if (!reads)
        return;
    m_needsGrid = true;
    m_parameterDependsOnContext = true;
    AddImplicitReads(*reads);
}

void SlcGetShaderInfo::AddSpacesOf(SlcProcCallExprNode* node)
{
    if (!IsNameOneOf(node->GetIdent()->GetName(), {"transform", "vtransform", "ntransform"}))
        return;
    for (const auto& argument : node->GetArguments()->GetArgs()) {
        const auto* constant = dynamic_cast<const SlcConstExprNode*>(argument.get());
        if (constant && constant->GetStringConst())
            NameSpace(constant->GetStringConst());
    }
}

void SlcGetShaderInfo::WriteOutputArguments(SlcProcCallExprNode* node)
{
    const auto& arguments = node->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    for (std::size_t i = 0; i < formals.size(); ++i) {
        if (!formals[i].isOutput)
            continue;
        m_needsGuard = true;
        WriteArgument(arguments[i].get());
    }
}

void SlcGetShaderInfo::Case(SlcIlluminateStmtNode* node)
{
    AddVarIfNotInList(Hiddens::sm_L);
    AddVarIfNotInList(Hiddens::sm_Ps);
    WalkMarking(node, Leaves::NoLevel);
}

void SlcGetShaderInfo::Case(SlcSolarStmtNode* node)
{
    AddVarIfNotInList(Hiddens::sm_L);
    AddVarIfNotInList(Hiddens::sm_Ps);
    if (!node->GetAxis())
        AddVarIfNotInList(Hiddens::sm_E);
    WalkMarking(node, Leaves::NoLevel);
}

void SlcGetShaderInfo::Case(SlcIlluminanceStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcGetShaderInfo::Case(SlcIfThenStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcGetShaderInfo::Case(SlcIfThenElseStmtNode* node)
{
    WalkMarking(node, Leaves::NoLevel);
}

void SlcGetShaderInfo::Case(SlcForStmtNode* node)
{
    WalkMarking(node, Leaves::OneLevel);
}

void SlcGetShaderInfo::Case(SlcWhileStmtNode* node)
{
    WalkMarking(node, Leaves::OneLevel);
}

/// The mark reaches every statement up to and including the loop that is left or continued.
template <class Node>
void SlcGetShaderInfo::WalkMarking(Node* node, Leaves leaves)
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

void SlcGetShaderInfo::Case(SlcLoopModStmtNode* node)
{
    m_levelsToLeave = std::max(m_levelsToLeave, node->GetLevel()->GetValue());
}

void SlcGetShaderInfo::Case(SlcReturnStmtNode* node)
{
    node->WalkIn(this);
    m_levelsToLeave = INT_MAX;  // it leaves all statements of the function around it
}

void SlcGetShaderInfo::AddVarIfNotInList(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    // Not every kind of shader has every variable.
    if (entry && m_hiddenNames.insert(entry->GetName()).second)
        m_hiddenVars.push_back(entry);
}

void SlcGetShaderInfo::NameSpace(SlcStringLiteralNode* space)
{
    AddSpaceIfNotInList(space);
    m_namesObjectSpace = m_namesObjectSpace || space->GetText() == k_objectSpace;
}

void SlcGetShaderInfo::AddSpaceIfNotInList(SlcStringLiteralNode* space)
{
    if (m_spaceTexts.insert(space->GetText()).second)
        m_spaces.push_back(space);
}

/// The overloads of one method share an entry: their arguments tell them apart at run time.
void SlcGetShaderInfo::AddDSOFunc(const SlcProcCallExprNode* call,
                                  const SlcPtr<SlcFuncDSOSymbolEntry>& entry)
{
    AddDSOLibrary(call, *entry);
    const auto [known, isNew] =
        m_dsoMethods.insert({{entry->GetKey(), entry->GetMethodName()->GetName()}, entry});
    if (isNew) {
        m_dsoFunctions.push_back(entry);
        return;
    }
    SlcFuncDSOSymbolEntry& row = *known->second;
    row.SetInit(SharedFunction(call, "init", row.GetInit(), entry->GetInit()));
    row.SetCleanup(SharedFunction(call, "cleanup", row.GetCleanup(), entry->GetCleanup()));
}

/// What starts and ends a method, of all its overloads the first that is named.
SlcIdentNode* SlcGetShaderInfo::SharedFunction(const SlcProcCallExprNode* call, const char* kind,
                                               SlcIdentNode* first, SlcIdentNode* other)
{
    if (first->GetName().empty())
        return other;
    const std::pair<std::string, std::string> names = {first->GetName(), other->GetName()};
    if (!names.second.empty() && names.first != names.second && m_dsoClashes.insert(names).second)
        m_errors->Warning(call,
                          "The overloads of '" + call->GetIdent()->GetName() + "' name two " +
                              kind + " functions, '" + names.first + "' and '" + names.second +
                              "': only the first is called",
                          1);
    return first;
}

/// A built shader looks for its libraries by their file names alone.
void SlcGetShaderInfo::AddDSOLibrary(const SlcProcCallExprNode* call,
                                     const SlcFuncDSOSymbolEntry& entry)
{
    const std::string& path = entry.GetLibraryPath();
    const auto [known, isNew] = m_dsoPaths.insert({entry.GetLibraryFileName(), path});
    if (isNew)
        m_dsoNames.push_back(entry.GetLibraryFileName());
    else if (known->second != path)
        m_errors->Error(call, "Function '" + call->GetIdent()->GetName() + "' of library '" + path +
                                  "' cannot be used beside library '" + known->second +
                                  "' of the same name");
}
