#pragma once

#include <string>
#include <vector>

#include "backends/SlcCStatements.h"
#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes a finished shader as one C++ file, which the C++ compiler turns into a shared object that
/// a renderer loads. docs/generated-code.md tells how such a file is built.
///
/// One writer serves one file.
class SlcGenCCode : private SlcCText {
public:
    SlcGenCCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl* options, std::ostream& out);

    /// Writes the whole text. Faults are counted by the sink, and the text is then worth nothing.
    void GenCCode(SlcInterForm& form);

private:
    // In the order of the file.
    void CheckSpaceNames();
    void GenHeader();
    void GenParamsDescription();
    void GenLocals();
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
    void GenDefaultValue(std::size_t parameter);
    void GenShadeTimePlaceholder(std::size_t parameter);
    void GenInitializeAtShadeTime();
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
    /// Static initialized array of the frame; a null pointer where there are no values.
    void GenTable(const char* type, const char* name, const std::vector<std::string>& values);

    [[nodiscard]] const SlcOperand& Parameter(std::size_t i) const;
    [[nodiscard]] std::string Visible(std::size_t parameter) const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCStatements m_statements;
    SlcEquCShaderType m_shaderTypes;
    SlcOptionsControl* m_options;
    bool m_initAtShadeTime = false;  // some default value needs shading data
    SlcInterForm* m_form = nullptr;  // the shader being written
};
