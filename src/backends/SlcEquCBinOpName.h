#pragma once

#include <string>

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcLexType.h"

/// Forms the names of operator instructions for both back ends: a root for the class and a suffix
/// for the type of each operand, such as "ADD_FLOAT_COLOR".
///
/// The point family has one suffix, since point, vector and normal differ only in transforms. An
/// arithmetic instruction or comparison of a class without a root is fatal.
class SlcEquCBinOpName : private SlcAllICodeWalker {
public:
    /// Which operands the name of an inversion lists: both in generated C++, only the source in
    /// byte-code.
    enum class Invert { DestAndSource, Source };

    explicit SlcEquCBinOpName(Invert invert) : m_invert(invert) {}

    /// Returns a name such as "ADD_FLOAT_COLOR", with the types of both operands.
    [[nodiscard]] std::string GetString(const SlcPtr<SlcArithExprICode>& code);
    /// Returns a name such as "ASSIGN_COLOR_FLOAT"; for a whole-grid form, without "_SIMD".
    [[nodiscard]] std::string GetString(const SlcPtr<SlcAssignICode>& code);
    /// Returns, for a color, "INVERT_COLOR_COLOR" in C++ and "INVERT_COLOR" in byte-code.
    [[nodiscard]] std::string GetString(const SlcPtr<SlcUnaryMinusICode>& code);
    /// Returns a name such as "BOOL_LESS_THEN_FLOAT_FLOAT".
    [[nodiscard]] std::string GetString(const SlcPtr<SlcBinOpBoolExprICode>& code);

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcAddICode>) override { m_root = "ADD"; }
    void Case(SlcPtr<SlcSubICode>) override { m_root = "SUB"; }
    void Case(SlcPtr<SlcMultICode>) override { m_root = "MULT"; }
    void Case(SlcPtr<SlcDivICode>) override { m_root = "DIV"; }
    void Case(SlcPtr<SlcDotProdICode>) override { m_root = "DOT_PROD"; }
    void Case(SlcPtr<SlcCrossProdICode>) override { m_root = "CROSS_PROD"; }
    void Case(SlcPtr<SlcLessThenICode>) override { m_root = "BOOL_LESS_THEN"; }
    void Case(SlcPtr<SlcLessEqualICode>) override { m_root = "BOOL_LESS_EQUAL"; }
    void Case(SlcPtr<SlcGreaterThenICode>) override { m_root = "BOOL_GREATER_THEN"; }
    void Case(SlcPtr<SlcGreaterEqualICode>) override { m_root = "BOOL_GREATER_EQUAL"; }
    void Case(SlcPtr<SlcEqualICode>) override { m_root = "BOOL_EQUAL"; }
    void Case(SlcPtr<SlcNotEqualICode>) override { m_root = "BOOL_NOT_EQUAL"; }
    void Default(SlcPtr<SlcICode> code) override;

    Invert m_invert;
    const char* m_root = "";  // set by the instruction last visited
};
