// The vocabulary: numbers, names and layouts.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "backends/SlcByteCode.h"
#include "backends/SlcEquCBinOpName.h"
#include "icode/SlcICodes.h"
#include "sqx/SqxLayout.h"
#include "symbols/SlcFuncDescription.h"
#include "symbols/SlcFuncTail.h"

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

/// The library's rows, plain and with tails, and whether each has its arguments in a list whose
/// length is written with it.
struct LibraryRow {
    SlcFuncDescription::FuncInfo info;
    bool counted;
};

std::vector<LibraryRow> LibraryRows()
{
    std::vector<LibraryRow> rows;
    for (const char* const* row = SlcFuncDescription::sm_funcInfoString; *row; ++row)
        rows.push_back({SlcFuncDescription::ReadPlainRow(*row), false});
    for (const char* const* row = SlcFuncDescription::sm_varArgsFuncInfoString; *row; ++row)
        rows.push_back({SlcFuncDescription::ReadVarArgsRow(*row), false});
    for (LibraryRow& row : rows) {
        // The message functions get three constants more, and filterstep its five values in
        // fixed places; splines count their knots.
        const bool open = row.info.tail && row.info.simd == SlcCallSIMD::NoSimd;
        row.counted = (open && row.info.name != "filterstep") || row.info.name == "spline";
    }
    return rows;
}

/// Lowering adds values that the row does not name: `du` and `dv` of derivatives, and what
/// identifies the message functions about their last argument.
int AddedArguments(const std::string& name, const std::vector<T*>& types)
{
    if (name == "Du" || name == "Dv")
        return 1;
    if (name == "calculatenormal")
        return 2;
    if (name == "filterstep")
        return 3;
    return std::any_of(types.begin(), types.end(), [](T* type) { return type->IsAnyType(); }) ? 3
                                                                                              : 0;
}

bool HasNoNumber(const std::string& primitive)
{
    static const std::set<std::string> names = {
        "CALL_PRIM_POINT_FLOAT_4D", "CALL_PRIM_PACK",        "CALL_PRIM_UNPACK",
        "CALL_PRIM_SHADERNAME",     "CALL_PRIM_SHADERNAME2",
    };
    return names.contains(primitive);
}

/// The form that always exists: derivatives need neighbouring points.
std::string NumberedName(const SlcFuncDescription::FuncInfo& info)
{
    return info.cName + (info.simd == SlcCallSIMD::AlwaysSimd ? "_SIMD" : "");
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
    for (const int unassigned : {-1, 0, 211, 347, 348, 453, k_sqxHighestNumber + 1})
        EXPECT_EQ(SqxNumberName(unassigned), "") << unassigned;
}

TEST(SlcByteCode, GivesEachNameOnce)
{
    std::set<std::string> names;
    std::set<int> numbers;
    for (const SqxNumberRow* table : {SlcByteCode::sm_theByteCodes, k_sqxMarks})
        for (const SqxNumberRow* row = table; row->name; ++row) {
            EXPECT_TRUE(names.insert(row->name).second) << row->name;
            EXPECT_TRUE(numbers.insert(row->number).second) << row->name;
        }
}

TEST(SlcByteCodeDeathTest, EndsAtAnUnknownName)
{
    EXPECT_EXIT(static_cast<void>(SlcByteCode::GetInstrNb("SUB_COLOR_MATRIX")),
                testing::ExitedWithCode(1),
                "Function unknown \\(in SlcByteCode::GetInstrNb\\) SUB_COLOR_MATRIX");
}

TEST(SqxLayout, HoldsTheArgumentsOfEveryBuiltIn)
{
    for (const LibraryRow& row : LibraryRows()) {
        const auto& info = row.info;
        if (HasNoNumber(info.cName))
            continue;
        std::string layout = LayoutOf(NumberedName(info));
        if (row.counted) {
            EXPECT_EQ(layout, info.returnType->IsVoidType() ? "n*" : "nw*") << info.name;
            continue;
        }
        auto values = static_cast<int>(info.argTypes.size()) +
                      AddedArguments(info.name, info.argTypes) +
                      (info.returnType->IsVoidType() ? 0 : 1);
        if (info.tail && info.name != "filterstep")
            values += static_cast<int>(SlcTailValues(info.tail.get()).size());
        EXPECT_EQ(static_cast<int>(layout.size()), values) << info.name << ' ' << info.cName;
    }
}

TEST(SqxLayout, MarksTheArgumentsThatBuiltInsWrite)
{
    for (const LibraryRow& row : LibraryRows()) {
        const auto& info = row.info;
        if (HasNoNumber(info.cName) || row.counted)
            continue;
        const std::string layout = LayoutOf(NumberedName(info));
        const std::size_t first = info.returnType->IsVoidType() ? 0 : 1;
        for (std::size_t i = 0; i < info.argStorages.size(); ++i)
            EXPECT_EQ(layout[first + i], info.argStorages[i]->IsOutput() ? 'm' : 'r')
                << info.name << " argument " << i;
    }
}

TEST(SqxLayout, PlacesTheCondition)
{
    struct LayoutCase {
        const char* name;
        const char* operands;
    };
    static const LayoutCase cases[] = {
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
