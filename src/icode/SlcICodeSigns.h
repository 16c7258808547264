#pragma once

#include <string_view>
#include <typeinfo>

#include "icode/SlcArithICode.h"
#include "icode/SlcBoolICode.h"

/// The prefix of primitives' names, which the text form omits.
inline constexpr std::string_view k_slcPrimitivePrefix = "CALL_PRIM_";

/// A class of binary instructions, and its operator in the text form: `x = y + z`.
struct SlcICodeSign {
    std::string_view sign;
    const std::type_info& code;
    SlcPtr<SlcICode> (*make)(const SlcOperand& result, const SlcOperand& left,
                             const SlcOperand& right);
};

template <class Code>
SlcPtr<SlcICode> SlcMakeBinaryICode(const SlcOperand& result, const SlcOperand& left,
                                    const SlcOperand& right)
{
    return MakeShared<Code>(result, left, right);
}

inline const SlcICodeSign k_slcICodeSigns[] = {
    {"+", typeid(SlcAddICode), &SlcMakeBinaryICode<SlcAddICode>},
    {"-", typeid(SlcSubICode), &SlcMakeBinaryICode<SlcSubICode>},
    {"*", typeid(SlcMultICode), &SlcMakeBinaryICode<SlcMultICode>},
    {"/", typeid(SlcDivICode), &SlcMakeBinaryICode<SlcDivICode>},
    {".", typeid(SlcDotProdICode), &SlcMakeBinaryICode<SlcDotProdICode>},
    {"^", typeid(SlcCrossProdICode), &SlcMakeBinaryICode<SlcCrossProdICode>},
    {"<", typeid(SlcLessThenICode), &SlcMakeBinaryICode<SlcLessThenICode>},
    {"<=", typeid(SlcLessEqualICode), &SlcMakeBinaryICode<SlcLessEqualICode>},
    {">", typeid(SlcGreaterThenICode), &SlcMakeBinaryICode<SlcGreaterThenICode>},
    {">=", typeid(SlcGreaterEqualICode), &SlcMakeBinaryICode<SlcGreaterEqualICode>},
    {"==", typeid(SlcEqualICode), &SlcMakeBinaryICode<SlcEqualICode>},
    {"!=", typeid(SlcNotEqualICode), &SlcMakeBinaryICode<SlcNotEqualICode>},
    {"or", typeid(SlcOrBoolFlagICode), &SlcMakeBinaryICode<SlcOrBoolFlagICode>},
};
