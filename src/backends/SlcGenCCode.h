#pragma once

#include <string>
#include <vector>

#include "backends/SlcCStatements.h"
#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes a finished shader as one C++ file, which the C++ compiler turns into a shared object that
/// a renderer loads. docs/generated-code.md explains how such a file is built.
///
/// One writer serves one file.
class SlcGenCCode : private SlcCText {
public:
    /// `options` and `out` outlive it.
    SlcGenCCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl* options, std::ostream& out);

    /// Writes the whole text. Faults are counted by the sink, and the text is then worth nothing.
    void GenCCode(SlcInterForm& form);

private:
    // In the order of the file.
    /// Reports spaces of which two have one name in C++.
    void CheckSpaceNames();
    /// The version and the header of the run time, which brings all that the file needs.
    void GenHeader();
    /// The variable for the table that `QxRegister` fills.
    void GenParamsDescription();
    /// The structures of the body's locals, and what makes and frees them.
    void GenLocals();
    void GenInterfaceVesrion();
    void GenUseRayTracingFunc(bool usesRaytracing);
    void GenModifyPointFunc(bool modifiesPoint);
    /// A number for each space, by the macro that instructions name it by.
    void GenMatrixIndexes();
    /// `QxRegister`: a macro for the number of each parameter, and their descriptions.
    void GenRegisterFunc();
    /// `QxInterrogate`, with the next three for its tables.
    void GenInterrogate();
    void GenVisibleVarsFacts();
    void GenHiddenVars();
    void GenDataSizes();
    /// `QxInitialize`: the default values of an instance.
    void GenInitialize();
    void GenDefaultValue(std::size_t parameter);
    /// The value of a parameter until the first grid is shaded: zeros, or empty strings.
    void GenShadeTimePlaceholder(std::size_t parameter);
    /// The default values that need shading data, as a function that the body calls first.
    void GenInitializeAtShadeTime();
    void GenShadeTimeValue(std::size_t parameter);
    /// Copies a value into a parameter, for all points if that varies.
    void GenShadeTimeAssign(const SlcOperand& dest, const SlcOperand& source,
                            const SlcOperand& index);
    void GenDestroy();
    void GenEvaluateSurfaceShader();
    void GenEvaluateImagerShader();
    void GenEvaluateLightShader();
    void GenEvaluateDisplacementShader();

    /// As the renderer's tokens declare it: detail, type and length.
    [[nodiscard]] std::string Declaration(const SlcOperand& parameter) const;
    /// Its function gets the lights.
    [[nodiscard]] bool IsLitShader() const;
    /// Some default value looks at lights.
    [[nodiscard]] bool UsesLightsAtShadeTime() const;
    /// The evaluate function; `parameters` are those of the kind of shader; they follow the common
    /// ones.
    void GenEvaluate(const char* parameters);
    /// Static initialized array of the frame; a null pointer where there are no values.
    void GenTable(const char* type, const char* name, const std::vector<std::string>& values);

    /// The operand of a parameter, by its place in the file.
    [[nodiscard]] const SlcOperand& Parameter(std::size_t i) const;
    /// The text by which the file reaches the variable of a parameter that the renderer holds.
    [[nodiscard]] std::string Visible(std::size_t parameter) const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCStatements m_statements;
    SlcEquCShaderType m_shaderTypes;
    SlcOptionsControl* m_options;
    bool m_initAtShadeTime = false;  // some default value needs shading data
    SlcInterForm* m_form = nullptr;  // the shader being written
};
