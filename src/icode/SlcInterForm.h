#pragma once

#include <deque>
#include <string>

#include "icode/SlcListICode.h"
#include "support/SlcOptionsControl.h"

class SlcFuncDSOSymbolEntry;
class SlcGenInterCode;
class SlcSemanticError;
class SlcShaderTypeNode;
class SlcVarSymbolEntry;

/// The compiled shader: the one hand-over point between the checked tree and the optimizer and
/// writers. It is a record that the writers read directly; the optimizer changes only the main
/// list. The tree must outlive it, since operands point into it.
///
/// The driver calls, in this order, `GenInterForm`, `Optimize`, and one of the two writers.
class SlcInterForm {
public:
    explicit SlcInterForm(SlcOptionsControl& options);
    ~SlcInterForm();

    /// Fills every field from the checked tree. Throws `SlcCompilationError` if that reported
    /// errors.
    void GenInterForm(SlcSyntaxNode* root);
    /// Runs the passes that the options select over the main list. Defined in `optimizer`.
    void Optimize();
    /// Writes `<shader>.cpp` in the working directory. Throws `SlcCompilationError` after errors.
    /// Defined in `backends`.
    void GenCCode();
    /// Writes `<directory>/<shader>.sqx`. Throws `SlcCompilationError` after errors and then
    /// leaves no file. Defined in `backends`.
    void GenByteCode(const std::string& directory);

    // The deques that run per parameter are parallel: element i of each speaks of parameter i of
    // those with an initializer, in declaration order.
    std::deque<SlcPtr<SlcVarSymbolEntry>> m_parameters;
    std::deque<SlcPtr<SlcListICode>> m_paramInitLists;     // code that computes the default value
    std::deque<std::deque<SlcOperand>> m_paramInitValues;  // what holds it after its list has run
    SlcIdentNode* m_shaderName = nullptr;
    const SlcSyntaxNode* m_shader = nullptr;  // where reports on the shader as a whole stand
    SlcShaderTypeNode* m_shaderType = nullptr;
    std::deque<SlcPtr<SlcVarSymbolEntry>> m_hiddenVars;  // predefined variables, by first use
    SlcPtr<SlcSemanticError> m_errors;
    SlcPtr<SlcListICode> m_mainList;
    SlcOptionsControl& m_options;
    SlcPtr<SlcGenInterCode> m_codeGenerator;
    bool m_usesRaytracing = false;               // the shader calls `trace`
    std::deque<SlcStringLiteralNode*> m_spaces;  // unique; "object" and "shader" come first
    std::deque<std::string> m_dsoNames;          // shadeop libraries used, unique
    std::deque<SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoFunctions;  // shadeops used, unique
    std::deque<bool> m_needsObjectSpace;              // the initializer names the space "object"
    std::deque<SlcStringLiteralNode*> m_paramSpaces;  // the space that goes into the file
    bool m_PModified = false;                         // the shader can write `P`
    std::deque<bool> m_initDependsOnContext;          // cannot be computed once per shader instance
};
