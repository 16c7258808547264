#pragma once

#include <deque>
#include <vector>

#include "backends/SlcCStatements.h"
#include "icode/SlcInterForm.h"

/// Writes a finished shader as one C++ file, which the C++ compiler turns into a shared object that
/// a renderer loads. docs/generated-code.md tells how such a file is built.
///
/// One writer serves one file.
class SlcGenCCode : private SlcCStatements {
public:
    SlcGenCCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl* options, std::ostream& out);

    /// Writes the whole text. Faults are counted by the sink, and the text is then worth nothing.
    void GenCCode(SlcInterForm& form);

private:
    /// Locals of lists, split as they are stored.
    struct Locals {
        std::vector<SlcOperand> uniform;
        std::vector<SlcOperand> varying;
    };
    /// What one point takes of the block that holds varying locals.
    struct PointSize {
        int floats = 0;
        int strings = 0;
    };

    // In the order of the file.
    void CheckSpaceNames();
    void GenHeader();
    void GenParamsDescription();
    void GenVarsStructure();
    void GenCreateLocalVars(const Locals& locals);
    void GenVaryingLocal(const SlcOperand& local);
    void GenDestroyLocalVars(const Locals& locals);
    void GenInterfaceVesrion();
    void GenUseRayTracingFunc(bool usesRaytracing);
    void GenModifyPointFunc(bool modifiesPoint);
    void GenMatrixIndexes();
    void GenRegisterFunc();
    void GenInterrogate();
    void GenVisibleVarsFacts();
    void GenHiddenVars();
    void GenDataSizes();
    void GenInitialize();
    void GenInitLocal(const SlcOperand& local);
    void GenDefaultValue(std::size_t parameter);
    void GenShadeTimePlaceholder(std::size_t parameter);
    void GenInitializeAtShadeTime();
    void GenShadeTimeLocals(const Locals& locals);
    void GenShadeTimeValue(std::size_t parameter);
    void GenShadeTimeAssign(const SlcOperand& dest, const SlcOperand& source,
                            const SlcOperand& index);
    void GenDestroy();
    void GenEvaluateSurfaceShader();
    void GenEvaluateImagerShader();
    void GenEvaluateLightShader();
    void GenEvaluateDisplacementShader();

    /// As the renderer's tokens declare it: detail, type and length.
    [[nodiscard]] std::string Declaration(const SlcOperand& parameter) const;
    [[nodiscard]] bool IsLitShader() const;
    [[nodiscard]] bool UsesLightsAtShadeTime() const;
    void GenEvaluate(const char* parameters);
    void GenShadeTimeCall();
    /// Static initialized array of the frame; a null pointer where there are no values.
    void GenTable(const char* type, const char* name, const std::vector<std::string>& values);

    // Locals and parameters.
    [[nodiscard]] static bool IsUniformLocal(const SlcOperand& local);
    static void AddLocals(const SlcListICode& list, Locals& locals);
    [[nodiscard]] std::string ElementTypeText(const SlcOperand& operand) const;
    [[nodiscard]] static PointSize SizeOf(const std::vector<SlcOperand>& varying);
    /// The order in which varying locals take their part of the block.
    [[nodiscard]] static std::vector<SlcOperand>
    InBlockOrder(const std::vector<SlcOperand>& varying);
    void WriteForEachPoint(const std::string& statement);
    /// Releases the strings that the local owns, if any. The texts say how to reach it up to its
    /// name: the first is a whole line, the second stands in a loop over the points.
    void FreeStrings(const SlcOperand& local, const char* uniformAccess, const char* varyingAccess);
    [[nodiscard]] const SlcOperand& Parameter(std::size_t i) const;
    [[nodiscard]] std::string Visible(std::size_t parameter) const;

    SlcEquCShaderType m_shaderTypes;
    SlcOptionsControl* m_options;
    bool m_initAtShadeTime = false;  // some default value needs shading data
    SlcInterForm* m_form = nullptr;  // the shader being written
};
