// Constant folding, one instruction at a time.
//
//     2 + 3 -> 5       x + 0 -> x       0 - x -> -x      x * 1 -> x      x * 0 -> 0
//     x / 4 -> x * 0.25                 0 . v -> 0       2 < 3 -> true   x == x -> true
//     sqrt(4) -> 2                      if true A; x = 1; endif A -> x = 1
//
// Not folded: divisions by 0, divisions whose reciprocal is denormal or infinite, and operations on
// constants whose result is not finite, or is a whole number that seven digits cannot represent
// (CanBeWritten). An identity may yield an operand whose type or detail is not that of the result,
// since the assignment that replaces the operation promotes the operand.
//
// A guard on a constant flag is removed together with its end and, if it can never run, also with
// the guarded code. Only the outermost folded guard is tracked (m_ifDepth): a guard inside it is
// left to a later walk.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcConvertConstOp, ...).

#include "optimizer/SlcConvertConstOp.h"

#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "icode/SlcAssignICode.h"
#include "icode/SlcJumpICode.h"
#include "optimizer/SlcFoldBuiltIn.h"
#include "support/SlcFloatText.h"

namespace {

/// Returns the value of a float constant, rounded to the precision of the run time.
float AtRunTime(const SlcOperand& constant)
{
    return static_cast<float>(constant->GetFloat());
}

bool IsFloat(const SlcOperand& operand, float value)
{
    return operand->IsFloat() && AtRunTime(operand) == value;
}

bool AreFloats(const SlcArithExprICode& code)
{
    return code.m_leftExpr->IsFloat() && code.m_rightExpr->IsFloat();
}

/// True if the value may become a constant. A fraction may be written with rounded digits, but a
/// rounded whole number could be a different index, or change a comparison.
bool CanBeWritten(float value)
{
    return std::isfinite(value) &&
           (std::trunc(value) != value || static_cast<float>(SlcValueOfFloatText(value)) == value);
}

/// Returns the values of the input arguments of a call if all of them are float constants; else
/// nothing.
std::optional<std::vector<float>> ConstantInputs(const SlcCallICode& call)
{
    std::vector<float> values;
    const auto& storages = call.m_funcEntry->GetArgStorages();
    for (std::size_t i = 0; i < call.m_args.size(); ++i) {
        if (i < storages.size() && storages[i]->IsOutput())
            continue;
        if (!call.m_args[i]->IsFloat())
            return std::nullopt;
        values.push_back(AtRunTime(call.m_args[i]));
    }
    return values;
}

}  // namespace

bool SlcConvertConstOp::Convert(SlcListICode& list)
{
    Begin();
    std::deque<SlcPtr<SlcICode>> output;
    for (const auto& code : list.m_icodes)
        if (SlcPtr<SlcICode> folded = Fold(code); folded && !m_dropping)
            output.push_back(std::move(folded));
    if (m_changed)
        list.m_icodes.swap(output);
    return m_changed;
}

void SlcConvertConstOp::Begin()
{
    m_changed = false;
    m_ifDepth = 0;
    m_dropping = false;
}

SlcPtr<SlcICode> SlcConvertConstOp::Fold(const SlcPtr<SlcICode>& code)
{
    m_new = nullptr;
    code->ApplyWalker(this);
    return std::move(m_new);
}

bool SlcConvertConstOp::IsSettled(const SlcICode& code)
{
    const auto* assignment = dynamic_cast<const SlcAssignICode*>(&code);
    return assignment && !(assignment->m_dest == assignment->m_source);
}

void SlcConvertConstOp::Default(SlcPtr<SlcICode> code)
{
    m_new = std::move(code);
}

void SlcConvertConstOp::Replace(SlcPtr<SlcICode> code)
{
    m_changed = true;
    m_new = std::move(code);
}

void SlcConvertConstOp::ConvertAsAssignment(const SlcOperand& dest, const SlcOperand& source)
{
    Replace(MakeShared<SlcAssignICode>(dest, source));
}

bool SlcConvertConstOp::ConvertAsAssignment(const SlcOperand& dest, float value)
{
    if (!CanBeWritten(value))
        return false;
    ConvertAsAssignment(dest, SlcLexType::Float(value));
    return true;
}

void SlcConvertConstOp::Case(SlcPtr<SlcAddICode> code)
{
    const SlcOperand& left = code->m_leftExpr;
    const SlcOperand& right = code->m_rightExpr;
    if (IsFloat(left, 0))
        ConvertAsAssignment(code->m_resultId, right);
    else if (IsFloat(right, 0))
        ConvertAsAssignment(code->m_resultId, left);
    else if (!(AreFloats(*code) &&
               ConvertAsAssignment(code->m_resultId, AtRunTime(left) + AtRunTime(right))))
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcSubICode> code)
{
    const SlcOperand& left = code->m_leftExpr;
    const SlcOperand& right = code->m_rightExpr;
    if (IsFloat(left, 0))
        Replace(MakeShared<SlcUnaryMinusICode>(code->m_resultId, right));
    else if (IsFloat(right, 0))
        ConvertAsAssignment(code->m_resultId, left);
    else if (!(AreFloats(*code) &&
               ConvertAsAssignment(code->m_resultId, AtRunTime(left) - AtRunTime(right))))
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcMultICode> code)
{
    const SlcOperand& left = code->m_leftExpr;
    const SlcOperand& right = code->m_rightExpr;
    // Assign the zero itself, which the assignment promotes. The product is folded although the
    // other operand might not be finite.
    if (IsFloat(left, 0) || IsFloat(right, 1))
        ConvertAsAssignment(code->m_resultId, left);
    else if (IsFloat(left, 1) || IsFloat(right, 0))
        ConvertAsAssignment(code->m_resultId, right);
    else if (!(AreFloats(*code) &&
               ConvertAsAssignment(code->m_resultId, AtRunTime(left) * AtRunTime(right))))
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcDivICode> code)
{
    const SlcOperand& left = code->m_leftExpr;
    const SlcOperand& right = code->m_rightExpr;
    const bool byZero = IsFloat(right, 0);
    const bool areFloats = AreFloats(*code);
    const bool byConstant = right->IsFloat() && !areFloats && !byZero;
    const float inverse = byConstant ? 1 / AtRunTime(right) : 0;
    if (!byZero && (IsFloat(left, 0) || IsFloat(right, 1)))
        ConvertAsAssignment(code->m_resultId, left);
    // A product costs less; a denormal reciprocal would lose digits.
    else if (std::isnormal(inverse))
        Replace(MakeShared<SlcMultICode>(code->m_resultId, left, SlcLexType::Float(inverse)));
    else if (byZero || !areFloats ||
             !ConvertAsAssignment(code->m_resultId, AtRunTime(left) / AtRunTime(right)))
        Default(code);
}

bool SlcConvertConstOp::FoldZeroFactor(const SlcArithExprICode& code)
{
    for (const SlcOperand& factor : {code.m_leftExpr, code.m_rightExpr}) {
        if (IsFloat(factor, 0)) {
            ConvertAsAssignment(code.m_resultId, factor);
            return true;
        }
    }
    return false;
}

void SlcConvertConstOp::Case(SlcPtr<SlcDotProdICode> code)
{
    if (!FoldZeroFactor(*code))
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcCrossProdICode> code)
{
    if (!FoldZeroFactor(*code))
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcUnaryMinusICode> code)
{
    if (IsFloat(code->m_source, 0))
        ConvertAsAssignment(code->m_dest, code->m_source);
    else
        Default(code);
}

template <class Compare>
void SlcConvertConstOp::FoldComparison(const SlcPtr<SlcBinOpBoolExprICode>& code, Compare compare)
{
    const SlcOperand& left = code->m_leftExpr;
    const SlcOperand& right = code->m_rightExpr;
    if (left->IsFloat() && right->IsFloat())
        ConvertAsAssignment(code->m_resultId,
                            SlcLexType::Bool(compare(AtRunTime(left), AtRunTime(right))));
    else
        Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcLessThenICode> code)
{
    FoldComparison(code, std::less<>());
}

void SlcConvertConstOp::Case(SlcPtr<SlcLessEqualICode> code)
{
    FoldComparison(code, std::less_equal<>());
}

void SlcConvertConstOp::Case(SlcPtr<SlcGreaterThenICode> code)
{
    FoldComparison(code, std::greater<>());
}

void SlcConvertConstOp::Case(SlcPtr<SlcGreaterEqualICode> code)
{
    FoldComparison(code, std::greater_equal<>());
}

void SlcConvertConstOp::Case(SlcPtr<SlcEqualICode> code)
{
    if (code->m_leftExpr == code->m_rightExpr)
        ConvertAsAssignment(code->m_resultId, SlcLexType::Bool(true));
    else
        FoldComparison(code, std::equal_to<>());
}

void SlcConvertConstOp::Case(SlcPtr<SlcNotEqualICode> code)
{
    if (code->m_leftExpr == code->m_rightExpr)
        ConvertAsAssignment(code->m_resultId, SlcLexType::Bool(false));
    else
        FoldComparison(code, std::not_equal_to<>());
}

void SlcConvertConstOp::FoldJump(const SlcPtr<SlcGotoICode>& code, const SlcOperand& flag,
                                 bool jumpsIf)
{
    if (!flag->IsBool())
        Default(code);
    else if (flag->GetBool() == jumpsIf)
        Replace(MakeShared<SlcGotoICode>(code->m_label));
    else
        Replace(nullptr);
}

void SlcConvertConstOp::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    FoldJump(code, code->m_flag, true);
}

void SlcConvertConstOp::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    FoldJump(code, code->m_flag, false);
}

void SlcConvertConstOp::FoldGuard(const SlcPtr<SlcIfICode>& code, bool runsIf)
{
    // Inside a folded guard, count nested guards to find the matching end.
    if (m_ifDepth > 0) {
        ++m_ifDepth;
        Default(code);
    } else if (!code->m_flag->IsBool()) {
        Default(code);
    } else {
        m_ifDepth = 1;
        m_dropping = code->m_flag->GetBool() != runsIf;
        Replace(nullptr);
    }
}

void SlcConvertConstOp::Case(SlcPtr<SlcIfTrueICode> code)
{
    FoldGuard(code, true);
}

void SlcConvertConstOp::Case(SlcPtr<SlcIfFalseICode> code)
{
    FoldGuard(code, false);
}

void SlcConvertConstOp::Case(SlcPtr<SlcEndIfICode> code)
{
    if (m_ifDepth == 1) {
        m_ifDepth = 0;
        m_dropping = false;
        Replace(nullptr);
        return;
    }
    if (m_ifDepth > 1)
        --m_ifDepth;
    Default(code);
}

void SlcConvertConstOp::Case(SlcPtr<SlcCallICode> code)
{
    const auto& entry = code->m_funcEntry;
    const bool mayFold = entry && entry->GetOrigin() == SlcFuncOrigin::BuiltIn &&
                         entry->IsFoldable() && !entry->IsOrderSensitive() &&
                         code->m_form.condition.Null() && code->m_result;
    const auto arguments = mayFold ? ConstantInputs(*code) : std::nullopt;
    const auto value = arguments ? SlcFoldBuiltIn(code->m_primitive, *arguments) : std::nullopt;
    if (!value || !ConvertAsAssignment(code->m_result, *value))
        Default(code);
}
