#pragma once

#include <deque>
#include <string>

#include "icode/SlcListICode.h"

class SlcFuncDSOSymbolEntry;
class SlcShaderTypeNode;
class SlcVarSymbolEntry;

/// A parameter with its default value. Every parameter has a default value, since the parser
/// rejects formals of a shader without one.
struct SlcParameterInfo {
    SlcPtr<SlcVarSymbolEntry> entry;
    SlcPtr<SlcListICode> initList;          // code that computes the default value
    std::deque<SlcOperand> initValues;      // operands with the value after the list has run
    bool initDependsOnContext = false;      // cannot be computed once per shader instance
    bool needsObjectSpace = false;          // the initializer or code that it calls names "object"
    SlcStringLiteralNode* space = nullptr;  // of the default value; written to the file
};

/// The facts about a shader that a writer needs in addition to the instructions of its body.
struct SlcShaderFacts {
    std::deque<SlcParameterInfo> m_parameters;  // in declaration order
    SlcIdentNode* m_shaderName = nullptr;
    const SlcSyntaxNode* m_shader = nullptr;  // position for reports about the whole shader
    SlcShaderTypeNode* m_shaderType = nullptr;
    std::deque<SlcPtr<SlcVarSymbolEntry>> m_hiddenVars;  // predefined variables that code uses
    std::deque<SlcStringLiteralNode*> m_spaces;          // unique; "object" and "shader" come first
    std::deque<std::string> m_dsoNames;                  // file names of shadeop libraries, unique
    std::deque<SlcPtr<SlcFuncDSOSymbolEntry>> m_dsoFunctions;  // one overload of each shadeop
    bool m_usesRaytracing = false;                             // the shader calls `trace`
    bool m_PModified = false;                                  // the shader can write `P`
    bool m_CiAssigned = false;                                 // the shader writes `Ci` or `Cl`
    bool m_OiAssigned = false;                                 // the shader writes `Oi` or `Ol`
};
