#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "icode/SlcShaderFacts.h"
#include "lowering/SlcDefaultValueFacts.h"

class SlcGenInterCode;
class SlcSemanticError;

/// Collects what a writer needs in addition to the instructions: the shader's parameters with the
/// code that initializes them, the predefined variables that it accesses, the spaces that it names,
/// the shadeops that it calls, and a few facts about the whole shader.
///
/// Walks once over the checked tree with the marks of `SlcMarkLeaves`. Functions that are never
/// called are skipped. Default values are lowered during the walk, since a parameter's operand must
/// exist before a later default value names it.
class SlcGetShaderInfo : public SlcCodeWalker {
public:
    /// The walk fills `facts`, which must be empty and outlive this object. Lists are in the order
    /// of the source, except that the spaces "object" and "shader" come first and that the outputs
    /// of a surface or light come before the other variables of its definition.
    SlcGetShaderInfo(SlcPtr<SlcSemanticError>& errors, SlcPtr<SlcGenInterCode>& codeGenerator,
                     SlcShaderFacts& facts);
    ~SlcGetShaderInfo() override;

    /// `root` holds the definitions of a source with a single shader.
    void operator()(SlcSyntaxNode* root) { root->ApplyWalker(this); }

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcSolarStmtNode* node) override;
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    /// Adds a formal of the shader, with its operand and the list of its default value.
    void AddParameter(SlcDefExprNode* node);
    void CallBuiltIn(SlcProcCallExprNode* node);

    /// Adds the predefined variable `entry`; does nothing for null, which means that this kind of
    /// shader has no such variable.
    void AddVarIfNotInList(const SlcPtr<SlcVarSymbolEntry>& entry);
    void AddImplicitReads(SqxPrimitive primitive);
    /// `RecordAccess` adds the variable to the list if it is predefined. `Write` records a write in
    /// the facts about colors, opacities and `P`, and ignores other variables.
    void RecordAccess(const SlcPtr<SlcVarSymbolEntry>& entry);
    void Write(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// Records a write to an argument if it is a variable or an element.
    void WriteArgument(const SlcExprNode* argument);
    void WriteOutputArguments(SlcProcCallExprNode* node);
    void AddSpaceIfNotInList(SlcStringLiteralNode* space);

    /// Adds the shadeop that `call` calls, with its library, or merges it with an overload that is
    /// already in the list.
    void AddDSOFunc(const SlcProcCallExprNode* call, const SlcPtr<SlcFuncDSOSymbolEntry>& entry);
    /// Returns the init or cleanup function (`kind` is its name in reports) that the overloads of a
    /// method share. Warns if two overloads name different functions.
    [[nodiscard]] SlcIdentNode* SharedFunction(const SlcProcCallExprNode* call, const char* kind,
                                               SlcIdentNode* first, SlcIdentNode* other);
    void AddDSOLibrary(const SlcProcCallExprNode* call, const SlcFuncDSOSymbolEntry& entry);

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
    SlcShaderFacts& m_facts;
    SlcDefaultValueFacts m_defaults;
    bool m_inFormals = false;             // inside the formals of the shader
    std::set<std::string> m_hiddenNames;  // names of the predefined variables so far
    std::set<std::string> m_spaceTexts;   // spaces so far
    // Shadeops by library key and method name; paths of libraries by file name.
    std::map<std::pair<std::string, std::string>, SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoMethods;
    std::map<std::string, std::string> m_dsoPaths;
    std::set<std::pair<std::string, std::string>> m_dsoClashes;  // clashes already reported
};
