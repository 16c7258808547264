#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "backends/SlcCodeBlock.h"
#include "backends/SlcEquCBinOpName.h"
#include "backends/SlcOperatorNumbers.h"
#include "backends/SlcPrimitiveNames.h"
#include "icode/SlcInterForm.h"
#include "icode/SlcJumpICode.h"
#include "support/SlcText.h"

class SlcProcCallExprNode;

/// Writes a finished shader as a `.sqx` file: a text of decimal numbers, names and quoted strings
/// that the renderer's shading virtual machine loads. docs/byte-code.md describes it.
///
/// The variables and constants of the file are numbered consecutively; each operand stores its
/// number. One writer serves one file.
class SlcGenByteCode : private SlcAllICodeWalker {
public:
    /// `out` must outlive the object; its owner checks for write errors.
    SlcGenByteCode(SlcPtr<SlcSemanticError> errors, SlcText& out);

    /// Writes the whole file. Merges equal constants in the form's lists and numbers its operands.
    /// Errors are reported to `errors`, which counts them; after one, the text is invalid.
    void GenByteCode(SlcInterForm& form);
    /// Writes the description for a shared object: the same file with an empty main block, and
    /// without the default values of the parameters with the indices in `leftOut`. Reports no
    /// errors. False if byte-code cannot express the description; `Unwritten` then returns which
    /// default values are at fault.
    [[nodiscard]] bool GenDescription(SlcInterForm& form, const std::set<std::size_t>& leftOut);
    /// Returns the indices of the parameters whose default values byte-code cannot express; empty
    /// if the fault of `GenDescription` is elsewhere.
    [[nodiscard]] const std::set<std::size_t>& Unwritten() const { return m_unwritten; }

private:
    // One function per section, in the order of the file.
    /// Writes the signature of byte-code files, the version, and the kind of shader as a number; an
    /// unknown kind is fatal.
    void GenHeader(const SlcInterForm& form);
    /// Writes the number of variables and constants, then the predefined variables by name, the
    /// parameters, and the locals and constants of `list`.
    void GenVarDeclarations(SlcInterForm& form, SlcPtr<SlcListICode> list);
    /// Writes the spaces that the shader names, without the two that every file implies.
    void GenMatrices(const SlcInterForm& form);
    /// Writes default values: first those computed once per instance, then those computed per grid.
    void GenInitShaderParams(SlcInterForm& form);
    /// Writes, for each parameter, whether its default value, or a function that this calls, names
    /// the space "object".
    void GenInitNeededObjectSpace(const SlcInterForm& form);
    /// Writes, for each parameter, whether it is declared `output`.
    void GenIsVarOutput(const SlcInterForm& form);
    /// Writes libraries by file name, then shadeops by library and the names of their functions.
    void GenDSOInfo(const SlcInterForm& form);
    /// Write whether the shader calls `trace`, and whether it can write `P`.
    void GenRayTracing(const SlcInterForm& form);
    void GenPModified(const SlcInterForm& form);
    /// Writes a code block: the number of values, then each on a line. A jump to a label that is
    /// not in the list is fatal.
    void GenTheByteCode(const SlcListICode& list);

    /// `space` is the space of the parameter's default value, with quotes.
    void GenParameter(SlcVarSymbolEntry& parameter, const SlcStringLiteralNode* space);
    /// Writes the default values that depend on shading data, if `dependsOnContext`, or else those
    /// that do not.
    void GenInitGroup(SlcInterForm& form, bool dependsOnContext);
    /// Writes the uniform and then the varying ones of `locals`, each group after its count.
    void GenLocals(const std::vector<SlcOperand>& locals);
    void GenConstants(const std::deque<SlcOperand>& constants);
    /// Appends a local to `lines`; `GenConstInfo` writes a constant with its value. Both assign the
    /// next number. A float that does not fit into single precision is an error.
    void AddVarTypeInfo(const SlcOperand& variable, std::string& lines);
    void GenConstInfo(const SlcOperand& constant);
    void Number(const SlcOperand& operand) { operand->m_index = m_nextVarNb++; }

    /// Reports at the statement whose code is being written, or at the shader if none is known.
    void Report(std::string_view text);
    /// Assigns the numbers of spaces, libraries and shadeops, before anything is written.
    void Begin(const SlcInterForm& form);
    /// Write the sections before the default values, and those between them and the code.
    void GenDeclarations(SlcInterForm& form, const SlcPtr<SlcListICode>& list);
    void GenFacts(const SlcInterForm& form);

    /// Assign the numbers of spaces and shadeops, which instructions of all blocks use, and those
    /// of libraries.
    void InitMatricesInfo(const SlcInterForm& form);
    void InitDSOInfo(const SlcInterForm& form);
    /// Returns the number of a coordinate space, named with quotes; -1 if it is not one of the
    /// form's spaces.
    [[nodiscard]] int GetMatrixNb(const std::string& space) const;
    /// False if byte-code has no number for the called primitive. This is reported once for each
    /// call in the source.
    [[nodiscard]] bool IsAvailable(const SlcCallICode& call);
    void AddTransform(const SlcTransformSpaceICode& code, SlcTransformDirection direction);
    void ClearFlags(const std::deque<SlcOperand>& flags);
    /// Adds the number of an instruction whose name depends on the types of two operands.
    template <class Name>
    void AddOperator(const SlcICode& code, const SlcOperand& first, const SlcOperand& second,
                     const Name& name)
    {
        m_code.AddInstrNumber(m_operatorNumbers.Of(code, first, second, name));
    }

    using SlcAllICodeWalker::Case;
    // SlcGenByteCodeInstructions.cpp; SlcGenByteCodeCalls.cpp for calls, spaces, lights and
    // textures.
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Case(SlcPtr<SlcAssignICode> code) override;
    void Case(SlcPtr<SlcAssignSIMDICode> code) override;
    void Case(SlcPtr<SlcAssignToZeroICode> code) override;
    void Case(SlcPtr<SlcArithExprICode> code) override;
    void Case(SlcPtr<SlcUnaryMinusICode> code) override;
    void Case(SlcPtr<SlcBinOpBoolExprICode> code) override;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override;
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcPointICode> code) override;
    void Case(SlcPtr<SlcMatrixICode> code) override;
    void Case(SlcPtr<SlcColorICode> code) override;
    void Case(SlcPtr<SlcIlluminateICode> code) override;
    void Case(SlcPtr<SlcSolarICode> code) override;
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcCommentICode> code) override { m_comment = std::move(code); }
    void Case(SlcPtr<SlcBeginParallelICode> code) override;
    void Case(SlcPtr<SlcEndParallelICode> code) override;
    void Case(SlcPtr<SlcIfTrueICode> code) override;
    void Case(SlcPtr<SlcIfFalseICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Case(SlcPtr<SlcTransformFromSpaceICode> code) override;
    void Case(SlcPtr<SlcTransformToSpaceICode> code) override;
    void Case(SlcPtr<SlcCallDSOICode> code) override;
    void Case(SlcPtr<SlcTextureSTPointsICode> code) override;
    void Case(SlcPtr<SlcTexturePointsICode> code) override;
    void Case(SlcPtr<SlcEvalLightICode> code) override;
    void Case(SlcPtr<SlcEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcResetEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcCheckValidArrayIndexICode> code) override;
    void Case(SlcPtr<SlcArrayRefICode> code) override;
    void Case(SlcPtr<SlcConcatSpaceMatrixICode> code) override;
    void Case(SlcPtr<SlcFilterstepPointsICode> code) override;
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override;
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override;
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override;
    void Case(SlcPtr<SlcInvisibleICode>) override {}
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    SlcPtr<SlcSemanticError> m_errors;
    SlcText& m_out;
    const SlcSyntaxNode* m_shader = nullptr;
    SlcPtr<SlcCommentICode> m_comment;  // the last comment in the block so far
    int m_nextVarNb = 0;
    SlcCodeBlock m_code{[this](std::string_view text) { Report(text); }};
    std::unordered_map<std::string_view, int> m_matrices;  // numbers of the form's spaces
    std::map<std::string, int> m_dsoLibs;                  // numbers of libraries, by file name
    std::map<std::string, int> m_dsoFuncs;                 // numbers, by library and method
    SlcEquCBinOpName m_opName{SlcEquCBinOpName::Invert::Source};
    SlcOperatorNumbers m_operatorNumbers;
    std::set<const SlcProcCallExprNode*> m_reportedCalls;  // for look-up only
    std::set<std::size_t> m_leftOut;                       // parameters without a default value
    std::set<std::size_t> m_unwritten;
    std::size_t m_faults = 0;
};
