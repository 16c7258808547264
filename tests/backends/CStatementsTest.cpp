// Checks the C++ text of operands and instructions.

#include <gtest/gtest.h>

#include "COperands.h"
#include "backends/SlcCStatements.h"
#include "support/reports/SlcSemanticError.h"

using namespace CForm;

namespace {

using T = SlcTypeNode;
using D = SlcDetailNode;

struct Statements : SlcCStatements {
    using SlcCStatements::SlcCStatements;
};

/// Returns the text of one instruction, without its leading tab and the end of the list.
std::string TextOf(SlcPtr<SlcICode> code)
{
    SlcListICode list;
    list.AddICode(std::move(code));
    SlcText out;
    Statements(MakeShared<SlcSemanticError>(), out).PrintListICode(list);
    const std::string text = out.Str();
    EXPECT_EQ(text.substr(text.size() - 3), "\t;\n");
    return text.substr(1, text.size() - 4);
}

struct StatementCase {
    SlcPtr<SlcICode> code;
    const char* text;
};

void ExpectTexts(const std::vector<StatementCase>& cases)
{
    for (const StatementCase& c : cases)
        EXPECT_EQ(TextOf(c.code), c.text);
}

SlcOperand Flag(const char* name)
{
    return Varying(name, T::ABoolean());
}

SlcOperand Point(const char* name)
{
    return Varying(name, T::APoint());
}

SlcOperand Color(const char* name)
{
    return Varying(name, T::AColor());
}

using List = SlcCallICode::ArgumentList;

SlcPtr<SlcICode> Call(std::deque<SlcOperand> args, SlcOperand result, List list = List::Fixed,
                      SlcGridForm form = SlcGridForm::Plain())
{
    return MakeShared<SlcCallICode>(SqxPrimitive::CALL_PRIM_MIX_1D, std::move(args),
                                    std::move(result), list, std::move(form), nullptr);
}

}  // namespace

TEST(SlcEquCValue, PrintsOperands)
{
    struct ValueCase {
        SlcOperand operand;
        const char* point;
        const char* grid;
    };
    const SlcOperand unknown = Local("x_1", T::AFloat(), D::AUnknown());
    const ValueCase cases[] = {
        {SlcLexType::Float(0.5), "5.000000e-01", "5.000000e-01"},
        {SlcLexType::Int(-7, true), "-7", "-7"},
        {SlcLexType::Bool(true), "true", "true"},
        {Text("a\\n\\\"b\\\\"), R"("a\n\"b\\")", R"("a\n\"b\\")"},
        {Text("?\?/?\\?"), R"("?\?/?\?")", R"("?\?/?\?")"},
        {Text("\\777\\47 \\4"), R"("\377\47 \4")", R"("\377\47 \4")"},
        {Text("a\nb\\\n\rc"), R"("a\nb\n\rc")", R"("a\nb\n\rc")"},
        {Text("\\q\\x1\\101"), R"("qx1\101")", R"("qx1\101")"},  // C++ refuses a bare \x
        {Uniform("x_1"), "u.x_1", "u.x_1"},
        {Uniform("r_", RefTo(T::AFloat())), "*(u.r_)", "*(u.r_)"},
        {Varying("x_1"), "v.x_1[polyCnt]", "v.x_1"},
        {Varying("r_", RefTo(T::AFloat())), "u.r_[polyCnt]", "u.r_"},
        {unknown, "v.x_1[polyCnt]", "v.x_1"},
        {Local("x_1", T::AFloat(), D::ATempUniform()), "u.x_1", "u.x_1"},
        {SlcLexType::GetPIVariable(), "QX_PI", "QX_PI"},
        {Parameter("Kd", T::AFloat(), D::AUniform()), "*((float*)i_visibles[INDEX_Kd].Value())",
         "*((float*)i_visibles[INDEX_Kd].Value())"},
        {Parameter("c", T::AColor(), D::AVarying()),
         "((QxRGBColor*)i_visibles[INDEX_c].Value())[polyCnt]",
         "((QxRGBColor*)i_visibles[INDEX_c].Value())"},
        {Parameter("s", T::AString(), D::AUniform()),
         "*((const char **)i_visibles[INDEX_s].Value())",
         "*((const char **)i_visibles[INDEX_s].Value())"},
        {Predefined("i_hiddens.GetP()", T::APoint()), "i_hiddens.GetP()[polyCnt]",
         "i_hiddens.GetP()"},
        {Predefined("i_hiddens.GetDu()", T::AFloat()), "*(i_hiddens.GetDu())",
         "*(i_hiddens.GetDu())"},
        {Predefined("(QxVector3*)i_context.Eye()", T::APoint(), D::AUniform()),
         "*((QxVector3*)i_context.Eye())", "*((QxVector3*)i_context.Eye())"},
        {MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent("other"), T::AFloat(), D::AVarying(),
                                SlcStorageSpecNode::AExtern()),
         "other", "other"},
    };
    SlcEquCValue values;
    for (const ValueCase& c : cases) {
        EXPECT_EQ(values.GetString(c.operand), c.point);
        EXPECT_EQ(values.GetStringSIMD(c.operand), c.grid);
    }
}

TEST(SlcEquCValue, PrintsElements)
{
    struct ElementCase {
        SlcOperand array;
        const char* text;
    };
    T* floats = ArrayOf(T::AFloat(), 3);
    const ElementCase cases[] = {
        {Uniform("a_1", floats), "u.a_1+ int(v.i_1[polyCnt])"},
        {Varying("a_1", floats), "(v.a_1 + int(v.i_1[polyCnt]) * numMp)"},
        {Parameter("a", floats, D::AUniform()),
         "(((float*)i_visibles[INDEX_a].Value()))+ int(v.i_1[polyCnt])"},
        {Parameter("a", floats, D::AVarying()),
         "(((float*)i_visibles[INDEX_a].Value()) + int(v.i_1[polyCnt]) * numMp)"},
    };
    SlcEquCValue values;
    for (const ElementCase& c : cases)
        EXPECT_EQ(values.GetStringArray(c.array, Varying("i_1")), c.text);
}

// A varying index makes the reference varying. A reference into a uniform array points at the one
// value for the current point, a reference into a varying array at the values of all points.
TEST(SlcEquCValue, ReadsElementsOfUniformArraysAsSingleValues)
{
    SlcEquCValue values;
    const SlcOperand ref = Varying("r_", RefTo(T::AFloat()));
    values.BindRef(ref, Uniform("a_1", ArrayOf(T::AFloat(), 3)));
    EXPECT_EQ(values.GetString(ref), "*(u.r_)");
    values.BindRef(ref, Varying("b_1", ArrayOf(T::AFloat(), 3)));
    EXPECT_EQ(values.GetString(ref), "u.r_[polyCnt]");
}

TEST(SlcCStatements, WritesControlFlow)
{
    const auto leave = MakeShared<SlcBreakICode>(Label("L1"));
    leave->m_flags = {Flag("f_"), Flag("g_")};
    const auto next = MakeShared<SlcContinueICode>(Label("L1"));
    next->m_flags = {Flag("f_")};
    const SlcOperand flag = Uniform("g_", T::ABoolean());
    ExpectTexts({
        {MakeShared<SlcBeginShaderICode>(), ""},
        {MakeShared<SlcEndShaderICode>(), ""},
        {MakeShared<SlcLabelICode>("L1"), "L1:\t;\n"},
        {MakeShared<SlcGotoICode>(Label("L1")), "goto L1;\n"},
        {MakeShared<SlcIfTrueGotoICode>(flag, Label("L1")), "if (BOOL_IS_TRUE(u.g_)) goto L1;\n"},
        {MakeShared<SlcIfFalseGotoICode>(flag, Label("L1")), "if (BOOL_IS_FALSE(u.g_)) goto L1;\n"},
        {MakeShared<SlcBeginParallelICode>(Label("L1")),
         "QX_POINTS_APART for (polyCnt = 0; polyCnt < numMp; polyCnt++) {\n"},
        {MakeShared<SlcEndParallelICode>(Label("L1")), "}\n"},
        {MakeShared<SlcIfTrueICode>(Flag("f_"), Label("L1")),
         "if (BOOL_IS_TRUE(v.f_[polyCnt])) {\n"},
        {MakeShared<SlcIfFalseICode>(Flag("f_"), Label("L1")),
         "if (BOOL_IS_FALSE(v.f_[polyCnt])) {\n"},
        {MakeShared<SlcEndIfICode>(Label("L1")), "}\n"},
        {MakeShared<SlcBeginIlluminanceICode>(Label("L1"), Label("L2")),
         "for (lightCnt = 0; lightCnt < i_numLights; lightCnt++) {\n"},
        {MakeShared<SlcEndIlluminanceICode>(Label("L1")), "}\n"},
        {leave, "SET_BOOL(v.f_[polyCnt], false); SET_BOOL(v.g_[polyCnt], false); \n"},
        {next, "SET_BOOL(v.f_[polyCnt], false); \n"},
        {MakeShared<SlcCommentICode>("a note", 3, nullptr), "\n\t// a note\n"},
    });
}

TEST(SlcCStatements, WritesValues)
{
    const SlcOperand x = Varying("x_1");
    const SlcOperand y = Uniform("y_1");
    const SlcOperand normal = Varying("n_1", T::ANormal());
    const SlcOperand matrix = Varying("m_1", T::AMatrix());
    const SlcOperand ref = Varying("r_", RefTo(T::AColor()));
    const std::deque<SlcOperand> sixteen(16, y);
    ExpectTexts({
        {MakeShared<SlcAddICode>(Color("c_1"), y, Color("d_1")),
         "ADD_FLOAT_COLOR(v.c_1[polyCnt], u.y_1, v.d_1[polyCnt]);\n"},
        {MakeShared<SlcSubICode>(Point("p_1"), Point("q_1"), normal),
         "SUB_POINT_POINT(v.p_1[polyCnt], v.q_1[polyCnt], v.n_1[polyCnt]);\n"},
        {MakeShared<SlcDotProdICode>(x, Point("q_1"), normal),
         "DOT_PROD_POINT_POINT(v.x_1[polyCnt], v.q_1[polyCnt], v.n_1[polyCnt]);\n"},
        {MakeShared<SlcLessThenICode>(Flag("f_"), x, SlcLexType::Float(1)),
         "BOOL_LESS_THEN_FLOAT_FLOAT(v.f_[polyCnt], v.x_1[polyCnt], 1.000000e+00);\n"},
        {MakeShared<SlcNotEqualICode>(Flag("f_"), Color("c_1"), y),
         "BOOL_NOT_EQUAL_COLOR_FLOAT(v.f_[polyCnt], v.c_1[polyCnt], u.y_1);\n"},
        {MakeShared<SlcAssignICode>(ref, y), "ASSIGN_COLOR_FLOAT(u.r_[polyCnt], u.y_1);\n"},
        {MakeShared<SlcAssignICode>(Flag("f_"), SlcLexType::Bool(false)),
         "ASSIGN_BOOL_BOOL(v.f_[polyCnt], false);\n"},
        {MakeShared<SlcAssignSIMDICode>(normal, Point("p_1")),
         "ASSIGN_POINT_POINT_SIMD(v.n_1, v.p_1);\n"},
        {MakeShared<SlcUnaryMinusICode>(x, y), "INVERT_FLOAT_FLOAT(v.x_1[polyCnt], u.y_1);\n"},
        {MakeShared<SlcVectorICode>(normal, x, y, x),
         "INIT_POINT(v.n_1[polyCnt], v.x_1[polyCnt], u.y_1, v.x_1[polyCnt]);\n"},
        {MakeShared<SlcColorICode>(Color("c_1"), y, y, y),
         "INIT_COLOR(v.c_1[polyCnt], u.y_1, u.y_1, u.y_1);\n"},
        {MakeShared<SlcMatrixICode>(matrix, sixteen),
         "INIT_MATRIX(v.m_1[polyCnt], u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, "
         "u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1, u.y_1);\n"},
        {MakeShared<SlcArrayRefICode>(ref, Varying("a_1", ArrayOf(T::AColor(), 2)), y),
         "u.r_ = (v.a_1 + int(u.y_1) * numMp);\n"},
        {MakeShared<SlcSetUniformBoolFlagICode>(Uniform("g_", T::ABoolean()), Flag("f_")),
         "SET_UNIFORM_BOOL_FLAG(u.g_, v.f_);\n"},
        {MakeShared<SlcInvertBoolFlagICode>(Flag("f_"), Flag("g_"), nullptr),
         "INVERT_BOOL_FLAG(v.f_, v.g_);\n"},
        {MakeShared<SlcInvertBoolFlagICode>(Flag("f_"), Flag("g_"), Flag("h_")),
         "INVERT_INNER_BOOL_FLAG(v.f_, v.g_, v.h_);\n"},
        {MakeShared<SlcOrBoolFlagICode>(Flag("f_"), Flag("g_"), Flag("h_")),
         "OR_BOOL_FLAG(v.f_, v.g_, v.h_);\n"},
    });
}

TEST(SlcCStatements, ChecksIndexes)
{
    const std::string file = "a.sl";
    EXPECT_EQ(TextOf(MakeShared<SlcCheckValidArrayIndexICode>("a", Varying("i_1"), 3, 12, &file)),
              "{\n"
              "\tif (int(v.i_1[polyCnt]) < 0 || (int(v.i_1[polyCnt]) >= 3)) {\n"
              "\tReportBadArrayIndexError(__FILE__, __LINE__, \"a.sl\", 12, \"a\", "
              "v.i_1[polyCnt]);\n"
              "\t}}\n");
}

TEST(SlcCStatements, WritesTransforms)
{
    const auto from = [](SlcOperand dest, T* type, SlcGridForm form) {
        return MakeShared<SlcTransformFromSpaceICode>(dest, dest, type, Text("my space"),
                                                      std::move(form));
    };
    const auto to = [](SlcOperand dest, T* type, SlcGridForm form) {
        return MakeShared<SlcTransformToSpaceICode>(dest, dest, type, Text("shader"),
                                                    std::move(form));
    };
    ExpectTexts({
        {from(Point("p_1"), T::APoint(), SlcGridForm::Plain()),
         "CALL_PRIM_TRANSFORM_TO_CURRENT(v.p_1[polyCnt], v.p_1[polyCnt], MATRIX_my_20_space);\n"},
        {to(Point("p_1"), T::AVector(), SlcGridForm::Whole()),
         "CALL_PRIM_VTRANSFORM_FROM_CURRENT_SIMD(v.p_1, v.p_1, MATRIX_shader);\n"},
        {to(Point("p_1"), T::ANormal(), SlcGridForm::At(Flag("f_"))),
         "CALL_PRIM_NTRANSFORM_FROM_CURRENT_SIMD_IF_TRUE(v.f_, v.p_1, v.p_1, MATRIX_shader);\n"},
        {from(Color("c_1"), T::AColor(), SlcGridForm::Plain()),
         "CALL_PRIM_CTRANSFORM_TO_RGB(v.c_1[polyCnt], v.c_1[polyCnt],\"my space\");\n"},
        {to(Color("c_1"), T::AColor(), SlcGridForm::At(Flag("f_"))),
         "CALL_PRIM_CTRANSFORM_FROM_RGB_SIMD_IF_TRUE(v.f_, v.c_1, v.c_1,\"shader\");\n"},
        {MakeShared<SlcConcatSpaceMatrixICode>(Varying("m_1", T::AMatrix()),
                                               Uniform("k_1", T::AMatrix()), Literal("a-b_c")),
         "CONCAT_SPACE_MATRIX(v.m_1[polyCnt], u.k_1, MATRIX_a_2d_b_c);\n"},
    });
}

TEST(SlcCStatements, WritesLights)
{
    const SlcOperand f = Flag("f_");
    const SlcOperand h = Flag("h_");
    const SlcOperand p = Uniform("p_1", T::APoint());
    const SlcOperand axis = Uniform("a_1", T::AVector());
    const SlcOperand angle = Uniform("w_1");
    const SlcOperand Ps = Predefined("i_hiddens.GetPs()", T::APoint());
    const SlcOperand L = Predefined("i_hiddens.GetL()", T::AVector());
    ExpectTexts({
        {MakeShared<SlcEvalLightICode>(Point("q_1")), "EVAL_LIGHTS(v.q_1);\n"},
        {MakeShared<SlcEvalLightForPICode>(),
         "if (mustEvalLights) {\n\t\tEVAL_LIGHTS(i_hiddens.GetP());\n"
         "\t\tmustEvalLights = false;\n\t}\n"},
        {MakeShared<SlcResetEvalLightForPICode>(), "mustEvalLights = true;\n"},
        {MakeShared<SlcIlluminateICode>(f, p, axis, angle, Ps, L, SlcGridForm::Plain()),
         "ILLUMINATE(v.f_[polyCnt], u.p_1, u.a_1, u.w_1, i_hiddens.GetPs()[polyCnt], "
         "i_hiddens.GetL()[polyCnt]);\n"},
        {MakeShared<SlcIlluminateICode>(f, p, axis, angle, Ps, L, SlcGridForm::At(h)),
         "ILLUMINATE_SIMD_IF_TRUE(v.f_, v.h_, u.p_1, u.a_1, u.w_1, i_hiddens.GetPs(), "
         "i_hiddens.GetL());\n"},
        {MakeShared<SlcIlluminateICode>(f, p, nullptr, nullptr, Ps, L, SlcGridForm::Whole()),
         "ILLUMINATE_NO_CONE_SIMD(v.f_, u.p_1, i_hiddens.GetPs(), i_hiddens.GetL());\n"},
        {MakeShared<SlcSolarICode>(f, axis, angle, L, SlcGridForm::Plain()),
         "SOLAR(v.f_[polyCnt], i_hiddens.GetL()[polyCnt], u.a_1, u.w_1);\n"},
        {MakeShared<SlcSolarICode>(f, axis, angle, L, SlcGridForm::Whole()),
         "SOLAR_SIMD(v.f_, i_hiddens.GetL(), u.a_1, u.w_1);\n"},
        {MakeShared<SlcSolarICode>(f, axis, angle, L, SlcGridForm::At(h)),
         "SOLAR_SIMD_IF_TRUE(v.f_, v.h_, i_hiddens.GetL(), u.a_1, u.w_1);\n"},
        {MakeShared<SlcCheckIlluminanceICode>(f, Point("q_1"), axis, angle, SlcGridForm::Plain()),
         "ILLUMINANCE(v.f_[polyCnt], v.q_1[polyCnt], u.a_1, u.w_1);\n"},
        {MakeShared<SlcCheckIlluminanceICode>(f, Point("q_1"), Point("r_1"), angle,
                                              SlcGridForm::At(h)),
         "ILLUMINANCE_SIMD_IF_TRUE(v.f_, v.q_1, v.r_1, u.w_1, v.h_);\n"},
    });
}

TEST(SlcCStatements, WritesCalls)
{
    const SlcOperand x = Varying("x_1");
    const SlcOperand y = Uniform("y_1");
    ExpectTexts({
        {Call({x, y}, nullptr), "CALL_PRIM_MIX_1D(v.x_1[polyCnt], u.y_1);\n"},
        {Call({}, x), "CALL_PRIM_MIX_1D(v.x_1[polyCnt]);\n"},
        {Call({y}, x), "CALL_PRIM_MIX_1D(v.x_1[polyCnt], u.y_1);\n"},
        {Call({x, y}, x, List::Fixed, SlcGridForm::Whole()),
         "CALL_PRIM_MIX_1D_SIMD(v.x_1, v.x_1, u.y_1);\n"},
        {Call({x}, x, List::Fixed, SlcGridForm::At(Flag("f_"))),
         "CALL_PRIM_MIX_1D_SIMD_IF_TRUE(v.x_1, v.f_, v.x_1);\n"},
        {Call({Text("%f"), x}, nullptr, List::Counted),
         "{\n\tconst void *theArgs[2];\n\n\tconst char *temp0 = \"%f\";\n"
         "\ttheArgs[0] = &(temp0);\n\ttheArgs[1] = &(v.x_1[polyCnt]);\n"
         "\tCALL_PRIM_MIX_1D(theArgs, 2);\n\t}\n"},
        {Call({x, SlcLexType::Float(2)}, y, List::Counted),
         "{\n\tconst void *theArgs[2];\n\n\ttheArgs[0] = &(v.x_1[polyCnt]);\n"
         "\tfloat temp1 = 2.000000e+00;\n\ttheArgs[1] = &(temp1);\n"
         "\tCALL_PRIM_MIX_1D(u.y_1, theArgs, 2);\n\t}\n"},
    });
}

// Without types the run time would use a float as the address of a text.
TEST(SlcCStatements, PassesTypesThatTheFormatDoesNotState)
{
    struct FormatCase {
        SlcOperand format;
        std::deque<SlcOperand> args;
        const char* types;  // null: none are passed
    };
    const FormatCase cases[] = {
        {Text("%d%% %c %s"), {Varying("x_1"), Point("p_1"), Text("t")}, nullptr},
        {Text("none"), {Varying("x_1")}, nullptr},
        {Text("%x %m"), {Varying("m_1", T::AMatrix())}, nullptr},
        {Text("%s"), {Varying("x_1")}, "sf"},
        {Text("%f %f"), {Varying("x_1")}, "sf"},
        {Text("%f\\045s"), {Varying("x_1"), Color("c_1")}, "sfc"},
        {Uniform("s_1", T::AString()), {Varying("x_1")}, "sf"},
    };
    for (const FormatCase& c : cases) {
        std::deque<SlcOperand> args = c.args;
        args.push_front(c.format);
        const std::string text =
            TextOf(MakeShared<SlcCallICode>(SqxPrimitive::CALL_PRIM_PRINTF, args, nullptr,
                                            List::Counted, SlcGridForm::Plain(), nullptr));
        const auto types = text.find("theTypes = ");
        ASSERT_EQ(types == std::string::npos, c.types == nullptr) << text;
        if (c.types) {
            EXPECT_EQ(text.substr(types + 11, text.find(';', types) - types - 11),
                      '"' + std::string(c.types) + '"');
        }
    }
}

TEST(SlcCStatements, WritesFootprints)
{
    std::array<SlcOperand, 8> corners;
    corners.fill(Varying("x_1"));
    std::array<SlcOperand, 4> points;
    points.fill(Point("p_1"));
    const SlcOperand s = Predefined("i_hiddens.GetS()", T::AFloat());
    ExpectTexts({
        {MakeShared<SlcTextureSTPointsICode>(s, s, corners, nullptr),
         "COMPUTE_ST_POINTS(i_hiddens.GetS(), i_hiddens.GetS(), v.x_1, v.x_1, v.x_1, v.x_1, "
         "v.x_1, v.x_1, v.x_1, v.x_1);\n"},
        {MakeShared<SlcTexturePointsICode>(Point("q_1"), points, Flag("f_")),
         "COMPUTE_POINTS_IF_TRUE(v.q_1, v.p_1, v.p_1, v.p_1, v.p_1, v.f_);\n"},
        {MakeShared<SlcFilterstepPointsICode>(Varying("x_1"), s, Flag("f_")),
         "COMPUTE_FILTERSTEP_POINTS_IF_TRUE(v.x_1, i_hiddens.GetS(), v.f_);\n"},
    });
}

TEST(SlcCStatements, CallsShadeops)
{
    const SlcOperand array = Varying("a_", ArrayOf(T::AFloat(), 3));
    const std::deque<SlcOperand> args = {array, Uniform("b_1", ArrayOf(T::AFloat(), 2)),
                                         Varying("x_1"), SlcLexType::Float(2), Text("t")};
    ExpectTexts({
        {MakeShared<SlcCallDSOICode>(Color("c_1"), args, "lib_so", "f"),
         "{\n\t\tint dsoArgc = 6;\n\t\tvoid *dsoArgv[6];\n\t\tdsoArgv[0] = &(v.c_1[polyCnt]);\n"
         "\t\tdsoArgv[1] = &(v.a_[polyCnt * 3]);\n\t\tdsoArgv[2] = &(u.b_1);\n"
         "\t\tdsoArgv[3] = &(v.x_1[polyCnt]);\n"
         "\t\tfloat temp4;\n\t\tASSIGN_FLOAT_FLOAT(temp4, 2.000000e+00);\n"
         "\t\tdsoArgv[4] = &temp4;\n"
         "\t\tconst char *temp5 = \"t\";\n\t\tdsoArgv[5] = &temp5;\n"
         "\t\tif (s_theDSOInfo[DSOINFO_lib_so_f].m_methodFunc)\n\t\t{\n"
         "\t\t\ts_theDSOInfo[DSOINFO_lib_so_f].m_methodFunc(s_theDSOInfo[DSOINFO_lib_so_f]."
         "m_initdata,dsoArgc, dsoArgv);\n\t\t}\n}\n"},
        {MakeShared<SlcCallDSOICode>(Varying("s_1", T::AString()), std::deque<SlcOperand>{},
                                     "lib_so", "g"),
         "{\n\t\tint dsoArgc = 1;\n\t\tvoid *dsoArgv[1];\n\t\tconst char *temp0 = 0;\n"
         "\t\tdsoArgv[0] = &(temp0);\n"
         "\t\tif (s_theDSOInfo[DSOINFO_lib_so_g].m_methodFunc)\n\t\t{\n"
         "\t\t\ts_theDSOInfo[DSOINFO_lib_so_g].m_methodFunc(s_theDSOInfo[DSOINFO_lib_so_g]."
         "m_initdata,dsoArgc, dsoArgv);\n"
         "\t\t\tASSIGN_STRING_STRING(v.s_1[polyCnt], temp0);\n\t\t}\n}\n"},
        {MakeShared<SlcConvertArrayDSOICode>(array, Varying("b_1", array->GetType()), true),
         "for (polyCnt = 0; polyCnt < numMp; ++polyCnt) {\n\t\tfor (int j = 0; j < 3; ++j) {\n"
         "\t\t\tASSIGN_FLOAT_FLOAT(v.a_[polyCnt * 3 + j], v.b_1[j * numMp + polyCnt]);\n"
         "\t\t}\n\t}\n"},
        {MakeShared<SlcConvertArrayDSOICode>(Varying("b_1", array->GetType()), array, false),
         "for (polyCnt = 0; polyCnt < numMp; ++polyCnt) {\n\t\tfor (int j = 0; j < 3; ++j) {\n"
         "\t\t\tASSIGN_FLOAT_FLOAT(v.b_1[j * numMp + polyCnt], v.a_[polyCnt * 3 + j]);\n"
         "\t\t}\n\t}\n"},
    });
}

TEST(SlcCStatementsDeathTest, RefusesCodeThatTheLoweringNeverEmits)
{
    EXPECT_EXIT(TextOf(MakeShared<SlcAssignToZeroICode>(Varying("x_1"))),
                testing::ExitedWithCode(1),
                "Cannot generate C\\+\\+ code for SlcAssignToZeroICode");
    EXPECT_EXIT(static_cast<void>(SlcEquCType().GetString(T::AVoid())), testing::ExitedWithCode(1),
                "SlcEquCType::No C Type:");
}
