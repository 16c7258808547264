#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "frontend/SlcNodes.h"
#include "icode/SlcListICode.h"

class SlcFuncDSOSymbolEntry;
class SlcFuncSymbolEntry;
class SlcGenInterCode;
class SlcSemanticError;
struct SlcImplicitReads;
class SlcVarSymbolEntry;

/// Finds what a writer needs beyond the instructions: the shader's parameters with the code that
/// initializes each, the predefined variables that it touches, the spaces that it names, the
/// shadeops that it calls, and a few facts about the whole. Marks also the statements that a
/// `break` or `continue` below them leaves or continues, and the logical operators whose right
/// side has effects.
///
/// One walk over the checked tree. The results are read from the fields when it is done; their
/// meaning is that of the fields of `SlcInterForm` with the same names.
class SlcGetShaderInfo : public SlcCodeWalker {
public:
    SlcGetShaderInfo(SlcPtr<SlcSemanticError>& errors, SlcPtr<SlcGenInterCode>& codeGenerator);
    ~SlcGetShaderInfo() override;

    void operator()(SlcSyntaxNode* root);

    std::deque<SlcPtr<SlcVarSymbolEntry>> m_parameters;
    std::deque<SlcPtr<SlcListICode>> m_paramInitLists;
    std::deque<std::deque<SlcOperand>> m_paramInitValues;
    SlcIdentNode* m_shaderName = nullptr;
    const SlcSyntaxNode* m_shader = nullptr;
    SlcShaderTypeNode* m_shaderType = nullptr;
    std::deque<SlcPtr<SlcVarSymbolEntry>> m_hiddenVars;
    bool m_usesRaytracing = false;
    std::deque<SlcStringLiteralNode*> m_spaces;
    std::deque<std::string> m_dsoNames;
    std::deque<SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoFunctions;
    std::deque<bool> m_needsObjectSpace;
    std::deque<SlcStringLiteralNode*> m_paramSpaces;
    bool m_PModified = false;
    std::deque<bool> m_initDependsOnContext;
    bool m_OiAssigned = false;  // the shader writes `Oi` or `Ol`
    bool m_CiAssigned = false;  // the shader writes `Ci` or `Cl`

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcLogOpNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcCondExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcIlluminateStmtNode* node) override;
    void Case(SlcSolarStmtNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcLoopModStmtNode* node) override;
    void Case(SlcReturnStmtNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    // What stands where: a loop ends one level of a break, another statement ends none.
    enum class Leaves { NoLevel, OneLevel };
    template <class Node>
    void WalkMarking(Node* node, Leaves leaves);

    void AddVarIfNotInList(const SlcPtr<SlcVarSymbolEntry>& entry);
    void AddSpaceIfNotInList(SlcStringLiteralNode* space);
    /// A value that is being walked is given in this coordinate space, or moved by it.
    void NameSpace(SlcStringLiteralNode* space);
    void AddDSOFunc(const SlcProcCallExprNode* call, const SlcPtr<SlcFuncDSOSymbolEntry>& entry);
    [[nodiscard]] SlcIdentNode* SharedFunction(const SlcProcCallExprNode* call, const char* kind,
                                               SlcIdentNode* first, SlcIdentNode* other);
    void AddDSOLibrary(const SlcProcCallExprNode* call, const SlcFuncDSOSymbolEntry& entry);

    void Touch(const SlcPtr<SlcVarSymbolEntry>& entry);
    void Write(const SlcPtr<SlcVarSymbolEntry>& entry);
    void WriteArgument(const SlcExprNode* argument);
    void WriteOutputArguments(SlcProcCallExprNode* node);
    void TouchVariablesOf(SlcProcCallExprNode* node);
    void AddImplicitReads(const SlcImplicitReads& reads);
    void AddSpacesOf(SlcProcCallExprNode* node);
    void AddParameter(SlcDefExprNode* node);
    [[nodiscard]] bool DependsOnContext(SlcDefExprNode* node) const;
    [[nodiscard]] SlcStringLiteralNode* SpaceOf(const SlcTypeNode* type) const;
    void UseSpace(const std::string& space);
    void LeaveNamedSpace(const char* plainSpace);

    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
    bool m_inFormals = false;  // of the shader
    int m_levelsToLeave = 0;   // loops around here that some break or continue reaches
    // What has been walked since the right side began does:
    bool m_needsGuard = false;
    bool m_readsElement = false;
    bool m_parameterDependsOnContext = false;
    bool m_needsGrid = false;             // the function whose body is being walked does
    bool m_namesObjectSpace = false;      // the function or default value being walked does
    std::string m_spaceName;              // in which the initializer is expressed; empty at first
    std::set<std::string> m_hiddenNames;  // of `m_hiddenVars`
    std::set<std::string> m_spaceTexts;   // of `m_spaces`
    // `m_dsoFunctions` by key and name of the method; `m_dsoNames` with the path of each.
    std::map<std::pair<std::string, std::string>, SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoMethods;
    std::map<std::string, std::string> m_dsoPaths;
    std::set<std::pair<std::string, std::string>> m_dsoClashes;  // reported, of functions
    // Functions that use predefined variables; for look-up only.
    std::set<SlcPtr<SlcFuncSymbolEntry>> m_contextFunctions;
    std::set<SlcPtr<SlcFuncSymbolEntry>> m_objectSpaceFunctions;  // for look-up only, too
};
