// Walks a shader and the functions reachable from it. Each list is in the order of the walk, so
// that the same source always yields the same file.
//
// A shadeop may have several overloads in one library. They share one entry here: generated code
// identifies a method by its name and distinguishes overloads by their arguments.
//
// Tested by tests/lowering/SlcInterFormTest.cpp.

#include "lowering/SlcGetShaderInfo.h"

#include <utility>
#include <vector>

#include "lowering/SlcGenInterCode.h"
#include "lowering/SlcNamedSpaces.h"
#include "lowering/SlcTextureLowering.h"
#include "semantics/SlcFuncInfo.h"
#include "sqx/SqxCard.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcCallFormals.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"
#include "symbols/SlcShaderSymbolTable.h"
#include "symbols/SlcSymbolTable.h"

namespace {

using Hiddens = SlcShaderSymbolTable;

constexpr const char* k_objectSpace = "\"object\"";
constexpr const char* k_shaderSpace = "\"shader\"";
/// Returns the variable that an `extern` declaration refers to, otherwise the variable itself. For
/// the `Ps` of a surface shader, which has the same operand as `P`, returns `P`.
SlcPtr<SlcVarSymbolEntry> Outermost(SlcPtr<SlcVarSymbolEntry> named)
{
    SlcPtr<SlcVarSymbolEntry> entry = SlcOutermost(std::move(named));
    const bool isP = entry && Hiddens::EntryNamed("P") && entry->GetIntCodeVar() &&
                     entry->GetIntCodeVar() == Hiddens::EntryNamed("P")->GetIntCodeVar();
    if (isP)
        return Hiddens::EntryNamed("P");
    return entry;
}

}  // namespace

SlcGetShaderInfo::SlcGetShaderInfo(SlcPtr<SlcSemanticError>& errors,
                                   SlcPtr<SlcGenInterCode>& codeGenerator, SlcShaderFacts& facts)
    : m_errors(errors),
      m_codeGenerator(codeGenerator),
      m_facts(facts)
{
    AddSpaceIfNotInList(SlcLexicalNode::CreateString(k_objectSpace));
    AddSpaceIfNotInList(SlcLexicalNode::CreateString(k_shaderSpace));
}

SlcGetShaderInfo::~SlcGetShaderInfo() = default;

void SlcGetShaderInfo::Case(SlcFuncDefNode* node)
{
    if (!SlcFuncInfo::IsCalled(*node))
        return;
    node->GetBody()->ApplyWalker(this);
    m_defaults.AddFunction(node);
}

void SlcGetShaderInfo::Case(SlcShaderDefNode* node)
{
    m_facts.m_shaderName = node->GetIdent();
    m_facts.m_shader = node;
    m_facts.m_shaderType = node->GetShaderType();
    m_codeGenerator->SetShaderType(m_facts.m_shaderType);
    // The lowering always sets these outputs before the body (DefaultOutputValues).
    if (m_facts.m_shaderType->IsLight()) {
        AddVarIfNotInList(Hiddens::EntryNamed("Cl"));
        AddVarIfNotInList(Hiddens::EntryNamed("Ol"));
        AddVarIfNotInList(Hiddens::EntryNamed("L"));
    }
    if (m_facts.m_shaderType->IsSurface()) {
        AddVarIfNotInList(Hiddens::EntryNamed("Ci"));
        AddVarIfNotInList(Hiddens::EntryNamed("Oi"));
    }
    m_inFormals = true;
    node->GetFormals()->ApplyWalker(this);
    m_inFormals = false;
    node->GetBody()->ApplyWalker(this);
}

void SlcGetShaderInfo::Case(SlcDefExprNode* node)
{
    if (!m_inFormals)
        node->WalkIn(this);
    else if (node->GetInitializer())
        AddParameter(node);
}

void SlcGetShaderInfo::AddParameter(SlcDefExprNode* node)
{
    // Collects the variables, spaces and shadeops that the default value uses.
    node->GetInitializer()->ApplyWalker(this);
    SlcParameterInfo& parameter = m_facts.m_parameters.emplace_back();
    parameter.entry = node->GetSymbolEntry();
    SlcVarSymbolEntry& entry = *parameter.entry;
    entry.GetIntCodeVar() =
        MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(entry.GetName()), entry.GetType(),
                               entry.GetDetail(), entry.GetStorage());
    const auto facts = m_defaults.Of(node->GetInitializer(), entry.GetType());
    entry.SetDependsOnContext(facts.dependsOnContext);
    parameter.initDependsOnContext = facts.dependsOnContext;
    parameter.needsObjectSpace = facts.namesObjectSpace;
    parameter.space = facts.space;
    parameter.initList =
        m_codeGenerator->GenInitFormalCode(node, parameter.initValues, entry.GetType());
}

void SlcGetShaderInfo::Case(SlcIdentExprNode* node)
{
    RecordAccess(node->GetSymbolEntry());
}

void SlcGetShaderInfo::Case(SlcArrayRefExprNode* node)
{
    node->WalkIn(this);
    RecordAccess(node->GetSymbolEntry());
}

void SlcGetShaderInfo::RecordAccess(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    const SlcPtr<SlcVarSymbolEntry> variable = Outermost(entry);
    if (variable.Null() || !variable->IsHidden())
        return;
    AddVarIfNotInList(variable);
}

void SlcGetShaderInfo::Case(SlcIdentLValueNode* node)
{
    RecordAccess(node->GetSymbolEntry());
    Write(node->GetSymbolEntry());
}

void SlcGetShaderInfo::Write(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    const SlcPtr<SlcVarSymbolEntry> variable = Outermost(entry);
    if (variable.Null() || !variable->IsHidden())
        return;
    const std::string& name = variable->GetName();
    m_facts.m_CiAssigned = m_facts.m_CiAssigned || name == "Ci" || name == "Cl";
    m_facts.m_OiAssigned = m_facts.m_OiAssigned || name == "Oi" || name == "Ol";
    m_facts.m_PModified = m_facts.m_PModified || name == "P";
}

void SlcGetShaderInfo::WriteArgument(const SlcExprNode* argument)
{
    if (argument->IsReferenceExpr())
        Write(static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry());
}

void SlcGetShaderInfo::Case(SlcCastExprNode* node)
{
    node->WalkIn(this);
    if (SlcStringLiteralNode* space = SlcSpaceNamedBy(node))
        AddSpaceIfNotInList(space);
}

void SlcGetShaderInfo::Case(SlcTextureExprNode* node)
{
    node->WalkIn(this);
    using Lowering = SlcTextureLowering;
    const SqxPrimitive primitive =
        Lowering::PrimitiveOf(node, Lowering::Source::Point, m_facts.m_shaderType);
    // The shadow of an area light reads the same variables.
    AddImplicitReads(primitive);
}

void SlcGetShaderInfo::AddImplicitReads(SqxPrimitive primitive)
{
    for (const std::string_view variable : SqxCardOf(primitive).Reads())
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
        CallBuiltIn(node);
        break;
    case SlcFuncOrigin::User:
        WriteOutputArguments(node);
        break;
    case SlcFuncOrigin::Shadeop:
        AddDSOFunc(node, CheckCast<SlcFuncDSOSymbolEntry>(entry));
        for (const auto& argument : node->GetArguments()->GetArgs())
            WriteArgument(argument.get());
        break;
    }
}

void SlcGetShaderInfo::CallBuiltIn(SlcProcCallExprNode* node)
{
    // Renderers prepare for ray tracing only if a shader traces rays.
    m_facts.m_usesRaytracing = m_facts.m_usesRaytracing || node->GetIdent()->GetName() == "trace";
    AddImplicitReads(*node->GetSymbolEntry()->GetPrimitive());
    for (SlcStringLiteralNode* space : SlcSpacesNamedBy(node))
        AddSpaceIfNotInList(space);
    WriteOutputArguments(node);
}

void SlcGetShaderInfo::WriteOutputArguments(SlcProcCallExprNode* node)
{
    const auto& arguments = node->GetArguments()->GetArgs();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    for (std::size_t i = 0; i < formals.size(); ++i)
        if (formals[i].isOutput)
            WriteArgument(arguments[i].get());
}

void SlcGetShaderInfo::Case(SlcIlluminateStmtNode* node)
{
    AddVarIfNotInList(Hiddens::EntryNamed("L"));
    AddVarIfNotInList(Hiddens::EntryNamed("Ps"));
    node->WalkIn(this);
}

void SlcGetShaderInfo::Case(SlcSolarStmtNode* node)
{
    AddVarIfNotInList(Hiddens::EntryNamed("L"));
    AddVarIfNotInList(Hiddens::EntryNamed("Ps"));
    if (!node->GetAxis())
        AddVarIfNotInList(Hiddens::EntryNamed("E"));
    node->WalkIn(this);
}

void SlcGetShaderInfo::AddVarIfNotInList(const SlcPtr<SlcVarSymbolEntry>& entry)
{
    // Null if this kind of shader does not have the variable.
    if (entry && m_hiddenNames.insert(entry->GetName()).second)
        m_facts.m_hiddenVars.push_back(entry);
}

void SlcGetShaderInfo::AddSpaceIfNotInList(SlcStringLiteralNode* space)
{
    if (m_spaceTexts.insert(space->GetText()).second)
        m_facts.m_spaces.push_back(space);
}

/// The overloads of a method share an entry: the arguments distinguish them at run time.
void SlcGetShaderInfo::AddDSOFunc(const SlcProcCallExprNode* call,
                                  const SlcPtr<SlcFuncDSOSymbolEntry>& entry)
{
    AddDSOLibrary(call, *entry);
    const auto [known, isNew] =
        m_dsoMethods.insert({{entry->GetKey(), entry->GetMethodName()->GetName()}, entry});
    if (isNew) {
        m_facts.m_dsoFunctions.push_back(entry);
        return;
    }
    SlcFuncDSOSymbolEntry& row = *known->second;
    row.SetInit(SharedFunction(call, "init", row.GetInit(), entry->GetInit()));
    row.SetCleanup(SharedFunction(call, "cleanup", row.GetCleanup(), entry->GetCleanup()));
}

/// Returns the first init or cleanup function that any overload names.
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

/// A compiled shader identifies its libraries only by file name.
void SlcGetShaderInfo::AddDSOLibrary(const SlcProcCallExprNode* call,
                                     const SlcFuncDSOSymbolEntry& entry)
{
    const std::string& path = entry.GetLibraryPath();
    const auto [known, isNew] = m_dsoPaths.insert({entry.GetLibraryFileName(), path});
    if (isNew)
        m_facts.m_dsoNames.push_back(entry.GetLibraryFileName());
    else if (known->second != path)
        m_errors->Error(call, "Function '" + call->GetIdent()->GetName() + "' of library '" + path +
                                  "' cannot be used beside library '" + known->second +
                                  "' of the same name");
}
