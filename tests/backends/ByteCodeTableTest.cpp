// Checks numbers and operand layouts of byte-code, and the operator names of both back ends.

#include <gtest/gtest.h>

#include "backends/SlcByteCode.h"
#include "backends/SlcEquCBinOpName.h"
#include "icode/SlcICodes.h"
#include "sqx/SqxLayout.h"
#include "sqx/SqxNumbers.h"

namespace {

using T = SlcTypeNode;

SlcOperand Variable(T* type)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent("x"), type, SlcDetailNode::AVarying(),
                                  SlcStorageSpecNode::ALocal());
}

std::string LayoutOf(const std::string& name)
{
    const SqxLayout* layout = SqxLayout::Find(SlcByteCode::GetInstrNb(name));
    return layout ? std::string(layout->operands) : "none";
}

}  // namespace

TEST(SlcByteCode, KeepsTheNumbersOfTheContract)
{
    struct NumberCase {
        const char* name;
        int number;
    };
    static const NumberCase cases[] = {
        {"ASSIGN_FLOAT_FLOAT", 1},
        {"ASSIGN_POINT_COLOR", 514},
        {"ASSIGN_POINT_FLOAT", 7},
        {"DIV_POINT_FLOAT", 72},
        {"DIV_POINT_POINT", 444},
        {"DIV_MATRIX_FLOAT", 73},
        {"CALL_PRIM_CELLNOISE_POINT_4D", 210},
        {"CALL_PRIM_PNOISE_FLOAT_1D", 212},
        {"CALL_PRIM_PTLINED_SIMD", 512},
        {"CALL_PRIM_TRACE_SIMD_IF_TRUE", 346},
        {"CALL_PRIM_PRINTF", 349},
        {"COMPUTE_POINTS_IF_TRUE", 369},
        {"CALL_AREASHADOW_1D_LIGHT", 503},
        {"OR_BOOL_FLAG", 426},
        {"CALL_PRIM_RAYLEVEL", 431},
        {"CALL_PRIM_ISINDIRECTRAY", 521},
        {"CALL_PRIM_INDIRECTDIFFUSE_SIMD_IF_TRUE", 520},
    };
    for (const NumberCase& c : cases)
        EXPECT_EQ(SlcByteCode::GetInstrNb(c.name), c.number) << c.name;
    EXPECT_EQ(SqxNumberName(432), "GOTO");
    EXPECT_EQ(SqxNumberName(461), "CONVERT_ARRAY_DSO_FROM");
    for (const int unassigned : {-1, 0, 211, 347, 348, 453, SqxHighestNumber() + 1})
        EXPECT_EQ(SqxNumberName(unassigned), "") << unassigned;
}

TEST(SlcByteCodeDeathTest, EndsAtAnUnknownName)
{
    EXPECT_EXIT(static_cast<void>(SlcByteCode::GetInstrNb("SUB_COLOR_MATRIX")),
                testing::ExitedWithCode(1),
                "Function unknown \\(in SlcByteCode::GetInstrNb\\) SUB_COLOR_MATRIX");
}

TEST(SqxLayout, PlacesOperandsAndTheCondition)
{
    struct LayoutCase {
        const char* name;
        const char* operands;
    };
    static const LayoutCase cases[] = {
        {"CALL_PRIM_ATTRIBUTE", "wrmrrr"},           // the lowering adds detail, type and length
        {"CALL_PRIM_CALCULATENORMAL_SIMD", "wrrr"},  // the lowering adds du and dv
        {"CALL_PRIM_FILTERSTEP", "wrrrrr"},
        {"CALL_PRIM_SPLINE_1D", "nw*"},
        {"CALL_PRIM_PRINTF", "n*"},
        {"CALL_PRIM_MIN2_FLOAT", "wrr"},
        {"CALL_PRIM_OCCLUSION", "wrrrrrrrrm"},
        {"CALL_DSO", "dnw*"},
        {"CALL_PRIM_MIX_1D", "wrrr"},
        {"CALL_PRIM_MIX_1D_SIMD", "wrrr"},
        {"CALL_PRIM_MIX_1D_SIMD_IF_TRUE", "wcrrr"},
        {"CALL_PRIM_TRANSFORM_TO_CURRENT_SIMD_IF_TRUE", "wcrs"},
        {"ILLUMINATE_SIMD_IF_TRUE", "wcrrrrw"},
        {"ILLUMINATE_NO_CONE_SIMD_IF_TRUE", "wcrrw"},
        {"COMPUTE_POINTS_IF_TRUE", "rwwwwc"},
        {"CALL_PRIM_FRESNEL5_SIMD_IF_TRUE", "crrrmm"},
        {"FIND_SPACE", "none"},
    };
    for (const LayoutCase& c : cases)
        EXPECT_EQ(LayoutOf(c.name), c.operands) << c.name;
}

TEST(SlcEquCBinOpName, NamesOperatorsByTypes)
{
    SlcEquCBinOpName byteCode(SlcEquCBinOpName::Invert::Source);
    SlcEquCBinOpName cpp(SlcEquCBinOpName::Invert::DestAndSource);
    const SlcOperand f = Variable(T::AFloat());
    const SlcOperand v = Variable(T::AVector());
    const SlcOperand n = Variable(T::ANormal());
    const SlcOperand e = Variable(T::CreateArrayRefType(T::AColor()));

    const SlcPtr<SlcArithExprICode> add = MakeShared<SlcAddICode>(v, v, n);
    EXPECT_EQ(byteCode.GetString(add), "ADD_POINT_POINT");
    const SlcPtr<SlcArithExprICode> cross = MakeShared<SlcCrossProdICode>(v, f, n);
    EXPECT_EQ(cpp.GetString(cross), "CROSS_PROD_FLOAT_POINT");
    const SlcPtr<SlcBinOpBoolExprICode> less = MakeShared<SlcGreaterEqualICode>(f, f, e);
    EXPECT_EQ(cpp.GetString(less), "BOOL_GREATER_EQUAL_FLOAT_COLOR");
    const auto assign = MakeShared<SlcAssignICode>(e, f);
    EXPECT_EQ(byteCode.GetString(assign), "ASSIGN_COLOR_FLOAT");
    const auto invert = MakeShared<SlcUnaryMinusICode>(v, n);
    EXPECT_EQ(byteCode.GetString(invert), "INVERT_POINT");
    EXPECT_EQ(cpp.GetString(invert), "INVERT_POINT_POINT");
}
