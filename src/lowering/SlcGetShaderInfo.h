#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "icode/SlcShaderFacts.h"
#include "lowering/SlcDefaultValueFacts.h"

class SlcGenInterCode;
class SlcSemanticError;
struct SlcImplicitReads;

/// Finds what a writer needs beyond the instructions: the shader's parameters with the code that
/// initializes each, the predefined variables that it touches, the spaces that it names, the
/// shadeops that it calls, and a few facts about the whole.
///
/// One walk over the checked tree, in which `SlcMarkLeaves` has left its marks. Functions that
/// nothing calls are passed over. Default values are lowered on the way, since a parameter's
/// operand must exist before a later default value names it.
class SlcGetShaderInfo : public SlcCodeWalker {
public:
    /// Adds to `facts`, which are empty and outlive it. Lists are in the order of first use in the
    /// source.
    SlcGetShaderInfo(SlcPtr<SlcSemanticError>& errors, SlcPtr<SlcGenInterCode>& codeGenerator,
                     SlcShaderFacts& facts);
    ~SlcGetShaderInfo() override;

    /// `root`: the definitions of a source with one shader.
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

    /// A formal of the shader, with its operand and the list of its default value.
    void AddParameter(SlcDefExprNode* node);
    void CallBuiltIn(SlcProcCallExprNode* node);

    /// The predefined variable `entry`; null where the kind of shader has none.
    void AddVarIfNotInList(const SlcPtr<SlcVarSymbolEntry>& entry);
    void AddImplicitReads(const SlcImplicitReads& reads);
    /// The variable is read, written or both.
    void Touch(const SlcPtr<SlcVarSymbolEntry>& entry);
    void Write(const SlcPtr<SlcVarSymbolEntry>& entry);
    /// An argument that a call may write, if it is a variable or an element.
    void WriteArgument(const SlcExprNode* argument);
    void WriteOutputArguments(SlcProcCallExprNode* node);
    void AddSpaceIfNotInList(SlcStringLiteralNode* space);

    /// A shadeop that `call` calls, with its library.
    void AddDSOFunc(const SlcProcCallExprNode* call, const SlcPtr<SlcFuncDSOSymbolEntry>& entry);
    /// The init or cleanup function, as `kind` says, that overloads of one method share. Warns if
    /// they name two.
    [[nodiscard]] SlcIdentNode* SharedFunction(const SlcProcCallExprNode* call, const char* kind,
                                               SlcIdentNode* first, SlcIdentNode* other);
    void AddDSOLibrary(const SlcProcCallExprNode* call, const SlcFuncDSOSymbolEntry& entry);

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
    SlcShaderFacts& m_facts;
    SlcDefaultValueFacts m_defaults;
    bool m_inFormals = false;             // of the shader
    std::set<std::string> m_hiddenNames;  // of the predefined variables so far
    std::set<std::string> m_spaceTexts;   // of the spaces so far
    // The shadeops by key and name of the method; their libraries with the path of each.
    std::map<std::pair<std::string, std::string>, SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoMethods;
    std::map<std::string, std::string> m_dsoPaths;
    std::set<std::pair<std::string, std::string>> m_dsoClashes;  // reported, of functions
};
