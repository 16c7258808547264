#pragma once

#include <string>
#include <vector>

#include "backends/SlcCStatements.h"
#include "backends/SlcCText.h"
#include "icode/SlcInterForm.h"

/// Writes a finished shader as one C++ file, which the C++ compiler turns into a shared object that
/// a renderer loads. docs/generated-code.md explains the structure of such a file.
///
/// One writer serves one file.
class SlcGenCCode : private SlcCText {
public:
    /// `options` and `out` must outlive the object.
    SlcGenCCode(SlcPtr<SlcSemanticError> errors, SlcOptionsControl* options, SlcText& out);

    /// Writes the whole text. Errors are reported to `errors`, which counts them; after one, the
    /// text is invalid. Numbers the form's operands and merges constants of its default values.
    void GenCCode(SlcInterForm& form);

private:
    // Writers of the parts, in the order of the file.
    /// Reports spaces whose names in C++ are equal.
    void CheckSpaceNames();
    /// Writes the version, and the include of the run time's header, which provides everything that
    /// the file needs.
    void GenHeader();
    /// Writes the variable for the table that `QxRegister` fills.
    void GenParamsDescription();
    /// Writes the structures of the body's locals, and the functions that make and free them.
    void GenLocals();
    void GenInterfaceVesrion();
    void GenUseRayTracingFunc(bool usesRaytracing);
    void GenModifyPointFunc(bool modifiesPoint);
    /// Writes a macro for the number of each space, which the statements use.
    void GenMatrixIndexes();
    /// Writes a macro for the number of each parameter, and `QxRegister`, which describes the
    /// parameters.
    void GenRegisterFunc();
    /// Writes `QxInterrogate`; the next three write its tables.
    void GenInterrogate();
    void GenVisibleVarsFacts();
    void GenHiddenVars();
    void GenDataSizes();
    /// Writes `QxInitialize`, which sets the default values of an instance.
    void GenInitialize();
    void GenDefaultValue(std::size_t parameter);
    /// Writes the first value of a parameter whose default value needs shading data: zeros, or
    /// empty strings.
    void GenShadeTimePlaceholder(std::size_t parameter);
    /// Writes the function that computes the default values that need shading data. The body calls
    /// it first, but only in surface and volume shaders.
    void GenInitializeAtShadeTime();
    void GenShadeTimeValue(std::size_t parameter);
    /// Writes code that copies a value into a parameter: for all points if the parameter is
    /// varying.
    void GenShadeTimeAssign(const SlcOperand& dest, const SlcOperand& source,
                            const SlcOperand& index);
    void GenDestroy();
    void GenEvaluateSurfaceShader();
    void GenEvaluateImagerShader();
    void GenEvaluateLightShader();
    void GenEvaluateDisplacementShader();

    /// Returns the declaration in the form of the renderer's tokens: detail, type and length.
    [[nodiscard]] std::string Declaration(const SlcOperand& parameter) const;
    /// True if the evaluate function gets the lights.
    [[nodiscard]] bool IsLitShader() const;
    /// True if some default value that needs shading data runs the lights or loops over them.
    [[nodiscard]] bool UsesLightsAtShadeTime() const;
    /// Writes the evaluate function; `parameters` are those that the kind of shader adds to the
    /// common ones.
    void GenEvaluate(const char* parameters);
    /// Writes a static array; a null pointer if there are no values.
    void GenTable(const char* type, const char* name, const std::vector<std::string>& values);

    /// Returns the operand of a parameter, by its index in the order of declaration.
    [[nodiscard]] const SlcOperand& Parameter(std::size_t i) const;
    /// Returns the text that accesses the renderer's variable for a parameter.
    [[nodiscard]] std::string Visible(std::size_t parameter) const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcCStatements m_statements;
    SlcEquCShaderType m_shaderTypes;
    SlcOptionsControl* m_options;
    bool m_initAtShadeTime = false;  // some default value needs shading data
    SlcInterForm* m_form = nullptr;  // the shader being written
};
