#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "backends/SlcCText.h"
#include "backends/SlcEquCBinOpName.h"
#include "backends/SlcEquCType.h"
#include "backends/SlcEquCValue.h"
#include "backends/SlcPointLoops.h"
#include "backends/SlcPrimitiveNames.h"
#include "icode/SlcICodes.h"
#include "icode/SlcListICode.h"

class SlcSemanticError;

/// Writes instructions as C++ statements. Nearly every statement is a macro call. The name of the
/// macro consists of the operation, for operators the types of the operands, and suffixes that
/// state whether it runs over the whole grid, and whether only where a flag is set.
///
/// The enclosing function must declare the names that its statements use, such as `i_hiddens`,
/// `i_visibles`, `u`, `v`, `numMp` and `polyCnt`; docs/generated-code.md lists them.
class SlcCStatements : private SlcAllICodeWalker, private SlcCText {
public:
    /// `out` must outlive the object.
    SlcCStatements(SlcPtr<SlcSemanticError> errors, SlcText& out);

    /// Writes the statements of a list, and an empty statement at the end. Declarations that
    /// statements need are in separate braces, since a jump must not enter their scope. `results`
    /// are operands that are used after the list.
    void PrintListICode(const SlcListICode& list, const std::deque<SlcOperand>& results = {});

    /// Returns the writer of operands, which knows the references that earlier statements bound.
    [[nodiscard]] SlcEquCValue& Values() { return m_values; }
    /// Ends the compile with a report of a fault of the compiler, at the place in the source of the
    /// last comment instruction, if any.
    [[noreturn]] void Fatal(const std::string& message) const;

private:
    using SlcAllICodeWalker::Case;
    // SlcCStatements.cpp: control flow, then values.
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override;
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override;
    void Case(SlcPtr<SlcBeginParallelICode> code) override;
    void Case(SlcPtr<SlcEndParallelICode> code) override;
    void Case(SlcPtr<SlcIfTrueICode> code) override;
    void Case(SlcPtr<SlcIfFalseICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Case(SlcPtr<SlcCommentICode> code) override;
    void Case(SlcPtr<SlcInvisibleICode> code) override;

    void Case(SlcPtr<SlcArithExprICode> code) override;
    void Case(SlcPtr<SlcBinOpBoolExprICode> code) override;
    void Case(SlcPtr<SlcAssignICode> code) override;
    void Case(SlcPtr<SlcAssignSIMDICode> code) override;
    void Case(SlcPtr<SlcUnaryMinusICode> code) override;
    void Case(SlcPtr<SlcPointICode> code) override;
    void Case(SlcPtr<SlcColorICode> code) override;
    void Case(SlcPtr<SlcMatrixICode> code) override;
    void Case(SlcPtr<SlcArrayRefICode> code) override;
    void Case(SlcPtr<SlcCheckValidArrayIndexICode> code) override;
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override;
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override;
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override;

    // SlcCCalls.cpp: spaces, lights, calls.
    void Case(SlcPtr<SlcTransformFromSpaceICode> code) override;
    void Case(SlcPtr<SlcTransformToSpaceICode> code) override;
    void Case(SlcPtr<SlcConcatSpaceMatrixICode> code) override;

    void Case(SlcPtr<SlcEvalLightICode> code) override;
    void Case(SlcPtr<SlcEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcResetEvalLightForPICode> code) override;
    void Case(SlcPtr<SlcIlluminateICode> code) override;
    void Case(SlcPtr<SlcSolarICode> code) override;
    void Case(SlcPtr<SlcCheckIlluminanceICode> code) override;

    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcTextureSTPointsICode> code) override;
    void Case(SlcPtr<SlcTexturePointsICode> code) override;
    void Case(SlcPtr<SlcFilterstepPointsICode> code) override;
    void Case(SlcPtr<SlcCallDSOICode> code) override;
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    // SlcCPointLoops.cpp: lists, and loops over points.
    void WriteList(const SlcListICode& list, const SlcValueSpans& spans);
    void WriteParallelRun(const SlcListICode& list, const SlcParallelRun& run);
    /// Declares variables of an iteration, which stand for the operands until `ForgetKept`.
    void DeclareComputed(const std::vector<SlcOperand>& operands);
    void WriteCodes(const SlcListICode& list, std::size_t begin, std::size_t end);
    /// Writes a loop that keeps its operands in variables.
    void WritePointLoop(const SlcListICode& list, const SlcPointLoop& loop);
    /// Writes the loads, computations and stores of one iteration of such a loop.
    void WriteIteration(const SlcListICode& list, const SlcPointLoop& loop);
    /// Writes a whole-grid call as a call for the current point of such a loop.
    void WriteCallAtPoint(const SlcCallICode& code);

    using Texts = std::vector<std::string>;
    /// Writes `name(argument, argument, ...);`
    void WriteCall(std::string_view name, const Texts& arguments);
    void WriteCall(SqxPrimitive primitive, const Texts& arguments, SqxForm form = SqxForm::Plain)
    {
        WriteCall(SqxFormName(primitive, form), arguments);
    }
    /// Return the text of the operand at the current point, and that of the array of its values.
    [[nodiscard]] std::string Text(const SlcOperand& operand);
    [[nodiscard]] std::string Grid(const SlcOperand& operand);
    [[nodiscard]] Texts GridTexts(std::initializer_list<SlcOperand> operands);
    void ClearFlags(const std::deque<SlcOperand>& flags);

    void WriteTransform(SlcTransformSpaceICode& code, SlcTransformDirection direction);
    /// Writes a call whose arguments are passed as an array of addresses. `result` may be empty.
    void WriteVarArgsCall(const SlcCallICode& code, const std::string& result);
    /// Writes a call of a built-in over the grid, for all points or those of its condition.
    void WriteGridCall(const SlcCallICode& code);
    /// `condition` may be null.
    void WriteFootprint(SqxPrimitive primitive, Texts operands, const SlcOperand& condition);
    /// Writes code that stores the address of the argument, or of a copy if it is a constant, at
    /// index `place` of the array that a shadeop gets.
    void WriteShadeopArgument(const SlcOperand& argument, std::size_t place);
    /// Returns the `SlcAssignName` for this type on both sides. If the type has none, the compile
    /// ends with a report in which `what` names the value.
    [[nodiscard]] std::string ShadeopAssignName(const SlcTypeNode* type, const char* what) const;

    SlcPtr<SlcSemanticError> m_errors;
    SlcEquCValue m_values;
    SlcEquCType m_types;
    SlcEquCBinOpName m_names{SlcEquCBinOpName::Invert::DestAndSource};
    SlcPtr<SlcCommentICode> m_comment;  // the last one written, whose place reports use
    bool m_inPointLoop = false;
    bool m_inStrip = false;
};
