#pragma once

#include "icode/SlcICode.h"

/// Base of the binary arithmetic instructions: result = left op right. The result may be the same
/// variable as an operand.
///
/// Operands are floats, triples and matrices, in the pairs that the language allows. A float is not
/// converted to the type of the other operand: the types of both select the primitive, such as
/// `ADD_FLOAT_COLOR` for `0.5 + Cs`.
class SlcArithExprICode : public SlcICode {
public:
    SlcArithExprICode(SlcOperand resultId, SlcOperand leftExpr, SlcOperand rightExpr)
        : m_resultId(std::move(resultId)),
          m_leftExpr(std::move(leftExpr)),
          m_rightExpr(std::move(rightExpr))
    {
    }
    [[nodiscard]] const SlcOperand& GetResultId() const { return m_resultId; }
    [[nodiscard]] const SlcOperand& GetLeftExpr() const { return m_leftExpr; }
    [[nodiscard]] const SlcOperand& GetRightExpr() const { return m_rightExpr; }
    void SetResultId(SlcOperand operand) { m_resultId = std::move(operand); }
    void SetLeftExpr(SlcOperand operand) { m_leftExpr = std::move(operand); }
    void SetRightExpr(SlcOperand operand) { m_rightExpr = std::move(operand); }

    SlcOperand m_resultId;
    SlcOperand m_leftExpr;
    SlcOperand m_rightExpr;
};

/// `left + right`. A float is added to each component of a triple.
class SlcAddICode : public SlcICodeOf<SlcAddICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left - right`. If one operand is a triple and the other a float, the float stands for three
/// equal components.
class SlcSubICode : public SlcICodeOf<SlcSubICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left * right`: component by component for triples, the matrix product for matrices. In the
/// product of a float and a matrix, the float counts as a diagonal matrix.
class SlcMultICode : public SlcICodeOf<SlcMultICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left / right`: component by component for triples; for matrices, left times the inverse of
/// right. A division by the constant 0 is not folded, but computed at run time.
class SlcDivICode : public SlcICodeOf<SlcDivICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left . right`, the dot product, a float.
class SlcDotProdICode : public SlcICodeOf<SlcDotProdICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left ^ right`, the cross product.
class SlcCrossProdICode : public SlcICodeOf<SlcCrossProdICode, SlcArithExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// dest = -source, component by component: `-x`. In byte-code `INVERT_FLOAT dest source`, and
/// `INVERT_COLOR` or `INVERT_POINT` for triples.
class SlcUnaryMinusICode : public SlcICodeOf<SlcUnaryMinusICode, SlcICode> {
public:
    SlcUnaryMinusICode(SlcOperand dest, SlcOperand source)
        : m_dest(std::move(dest)),
          m_source(std::move(source))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
};
