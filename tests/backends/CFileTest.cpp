// Compares whole generated C++ files, one for each kind of shader, with those under golden/, and
// checks parts of other files.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "CShader.h"
#include "frontend/SlcShaderTypeNode.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

using namespace CForm;

namespace {

using T = SlcTypeNode;
using D = SlcDetailNode;

SlcSurfaceShaderTypeNode surface;
SlcVolumeShaderTypeNode volume;
SlcLightShaderTypeNode light;
SlcDisplacementShaderTypeNode displacement;
SlcImagerShaderTypeNode imager;

SlcPtr<SlcListICode> List(std::initializer_list<SlcOperand> locals,
                          std::initializer_list<SlcPtr<SlcICode>> codes)
{
    const auto list = MakeShared<SlcListICode>();
    for (const SlcOperand& local : locals)
        list->AddLocalVar(local);
    for (const auto& code : codes)
        list->AddICode(code);
    return list;
}

void AddInBlock(Shader& shader, SlcPtr<SlcICode> code)
{
    shader.Add(MakeShared<SlcBeginParallelICode>(Label("L0")));
    shader.Add(std::move(code));
    shader.Add(MakeShared<SlcEndParallelICode>(Label("L0")));
}

void ExpectGolden(Shader& shader, const std::string& name)
{
    const std::string path = std::string(SLC_TESTS_FOLDER) + "/backends/golden/" + name + ".txt";
    const std::string text = shader.Write();
    if (std::getenv("SLC_UPDATE_GOLDEN"))
        std::ofstream(path) << text;
    std::ifstream file(path);
    std::ostringstream golden;
    golden << file.rdbuf();
    EXPECT_EQ(text, golden.str());
}

/// Returns the part of `file` that begins with `from` and ends before `to`; empty if there is none.
std::string Section(const std::string& file, const std::string& from, const std::string& to)
{
    const auto begin = file.find(from);
    return begin == std::string::npos ? "" : file.substr(begin, file.find(to, begin) - begin);
}

}  // namespace

TEST(SlcGenCCode, WritesSurface)
{
    Shader shader("plastic", &surface);
    const SlcOperand Ci = Predefined("i_hiddens.GetCi()", T::AColor());
    const SlcOperand u = Predefined("i_hiddens.GetU()", T::AFloat());
    const SlcOperand Cl = Predefined("(i_lights[lightCnt].Cl)", T::AColor());
    shader.AddHidden("Ci", Ci);
    shader.AddHidden("Cl", Cl);
    const SlcOperand Kd =
        shader.AddParameter("Kd", T::AFloat(), D::AUniform(), SlcLexType::Float(0.5));
    const SlcOperand tint = Uniform("T0_", T::AColor());
    const SlcOperand one = SlcLexType::Float(1);
    shader.AddParameter("tint", T::AColor(), D::AUniform(), tint,
                        List({tint}, {MakeShared<SlcColorICode>(tint, one, one, one)}), "rgb");
    const SlcOperand wave = Varying("T1_");
    shader.AddParameter("wave", T::AFloat(), D::AVarying(), wave,
                        List({wave}, {MakeShared<SlcBeginParallelICode>(Label("L1")),
                                      MakeShared<SlcMultICode>(wave, u, u),
                                      MakeShared<SlcEndParallelICode>(Label("L1"))}),
                        "", true);
    shader.AddOutputParameter("glow", T::AFloat(), SlcLexType::Float(0));
    const SlcOperand sum = Varying("sum_1", T::AColor());
    shader.AddLocal(sum);
    shader.Add(MakeShared<SlcBeginShaderICode>());
    shader.Add(MakeShared<SlcEvalLightForPICode>());
    shader.Add(MakeShared<SlcBeginIlluminanceICode>(Label("L2"), Label("L3")));
    AddInBlock(shader, MakeShared<SlcMultICode>(sum, Kd, Cl));
    shader.Add(MakeShared<SlcEndIlluminanceICode>(Label("L2")));
    shader.Add(MakeShared<SlcLabelICode>("L3"));
    shader.Add(MakeShared<SlcAssignSIMDICode>(Ci, sum));
    shader.Add(MakeShared<SlcEndShaderICode>());
    ExpectGolden(shader, "surface");
}

TEST(SlcGenCCode, WritesEmptyVolume)
{
    Shader shader("nothing", &volume);
    ExpectGolden(shader, "volume");
}

// No generated code calls the function that computes the default value of `dim`.
TEST(SlcGenCCode, WritesLight)
{
    Shader shader("lamp", &light);
    const SlcOperand Cl = Predefined("i_hiddens.GetCl()", T::AColor());
    const SlcOperand t = Predefined("i_hiddens.GetT()", T::AFloat());
    shader.AddHidden("Cl", Cl);
    shader.AddParameter("from", T::APoint(), D::AUniform(), Uniform("T0_", T::APoint()),
                        List({Uniform("T0_", T::APoint())}, {}), "object");
    shader.AddParameter("dim", T::AFloat(), D::AVarying(), t, List({}, {}), "", true);
    AddInBlock(shader, MakeShared<SlcColorICode>(Cl, t, t, t));
    ExpectGolden(shader, "light");
}

TEST(SlcGenCCode, WritesDisplacementWithStrings)
{
    Shader shader("dents", &displacement);
    shader.m_form.m_PModified = true;
    shader.AddSpace("my space");
    const SlcOperand map = shader.AddParameter("map", T::AString(), D::AUniform(), Text("dent.tx"));
    const SlcOperand name = Uniform("name_1", T::AString());
    const SlcOperand both = Uniform("both_1", ArrayOf(T::AString(), 2));
    const SlcOperand element = Uniform("T0_", RefTo(T::AString()));
    const SlcOperand depth = Varying("depth_1", ArrayOf(T::AFloat(), 4));
    const SlcOperand each = Varying("each_1", T::AString());
    const SlcOperand frame = Varying("frame_1", T::AMatrix());
    for (const SlcOperand& local : {name, both, element, depth, each, frame})
        shader.AddLocal(local);
    shader.Add(MakeShared<SlcAssignICode>(name, map));
    shader.Add(MakeShared<SlcArrayRefICode>(element, both, SlcLexType::Float(1)));
    shader.Add(MakeShared<SlcAssignICode>(element, name));
    ExpectGolden(shader, "displacement");
}

TEST(SlcGenCCode, WritesImagerWithShadeops)
{
    Shader shader("grain", &imager);
    shader.m_form.m_usesRaytracing = true;
    const auto shadeop = [](const char* method, const char* init, const char* cleanup) {
        SlcFuncSignature signature;
        signature.ident = SlcLexicalNode::CreateIdent(method);
        SlcShadeopInfo info;
        info.methodName = signature.ident;
        info.init = SlcLexicalNode::CreateIdent(init);
        info.cleanup = SlcLexicalNode::CreateIdent(cleanup);
        info.libraryBaseName = "my-ops";
        info.libraryExtension = "so";
        info.key = "my_2d_ops_so";
        return MakeShared<SlcFuncDSOSymbolEntry>(std::move(signature), std::move(info));
    };
    shader.m_form.m_dsoNames = {"my-ops.so"};
    shader.m_form.m_dsoFunctions = {shadeop("noise5", "start", "stop"), shadeop("grains", "", ""),
                                    shadeop("grains", "", "")};
    const SlcOperand alpha = Predefined("i_hiddens.GetAlpha()", T::AFloat());
    shader.AddHidden("alpha", alpha);
    AddInBlock(shader, MakeShared<SlcCallDSOICode>(alpha, std::deque<SlcOperand>{alpha},
                                                   "my_2d_ops_so", "grains"));
    ExpectGolden(shader, "imager");
}

TEST(SlcGenCCode, ComputesArraysAndStringsAtShadeTime)
{
    Shader shader("late", &surface);
    const SlcOperand values = Varying("T0_", ArrayOf(T::APoint(), 2));
    shader.AddParameter("way", ArrayOf(T::APoint(), 2), D::AVarying(), values, List({values}, {}),
                        "current", true);
    const SlcOperand name = Varying("T1_", T::AString());
    shader.AddParameter("tag", T::AString(), D::AVarying(), name, List({name}, {}), "", true);
    const SlcOperand frame = Uniform("T2_", T::AMatrix());
    shader.AddParameter("frame", T::AMatrix(), D::AVarying(), frame, List({frame}, {}), "current",
                        true);
    const std::string file = shader.Write();
    EXPECT_EQ(Section(file, "\ttypedef struct {\n\t\tQxMatrix44 T2_", "\tif ("),
              "\ttypedef struct {\n\t\tQxMatrix44 T2_;\n\t} QxLocalInitUniform;\n"
              "\tQxLocalInitUniform u;\n\tmemset(&u, 0, sizeof(QxLocalInitUniform));\n"
              "\ttypedef struct {\n\t\tQxVector3 *T0_;\n\t\tconst char * *T1_;\n"
              "\t} QxLocalInitVarying;\n\tQxLocalInitVarying v;\n"
              "\tchar *ptr = (char*)calloc(numMp, 6 * sizeof(float) + 1 * sizeof(const char *));\n"
              "\tchar *initPtr = ptr;\n"
              "\tv.T1_ = (const char **)ptr;\n\tptr += numMp * sizeof(const char *);\n"
              "\tv.T0_ = (QxVector3*)ptr;\n\tptr += numMp * sizeof(QxVector3[2]);\n");
    EXPECT_NE(file.find("\tASSIGN_POINT_POINT_SIMD((((QxVector3*)i_visibles[INDEX_way].Value()) + "
                        "int(1.000000e+00) * numMp), (v.T0_ + int(1.000000e+00) * numMp));\n"),
              std::string::npos);
    EXPECT_NE(file.find("\tASSIGN_STRING_STRING_SIMD(((const char **)i_visibles[INDEX_tag].Value()"
                        "), v.T1_);\n"),
              std::string::npos);
    EXPECT_NE(file.find("\tfor (polyCnt = 0; polyCnt < numMp; ++polyCnt) {\n"
                        "\tASSIGN_MATRIX_MATRIX(((QxMatrix44*)i_visibles[INDEX_frame].Value())"
                        "[polyCnt], u.T2_);\n\t}\n"),
              std::string::npos);
    EXPECT_NE(file.find("\tFREE_STRING((char*)v.T1_[polyCnt]);\n"), std::string::npos);
}

TEST(SlcGenCCode, PassesLightsToDefaultsThatNeedThem)
{
    Shader shader("lit", &surface);
    const SlcOperand value = Varying("T0_", T::AColor());
    shader.AddParameter("around", T::AColor(), D::AVarying(), value,
                        List({value}, {MakeShared<SlcEvalLightForPICode>()}), "rgb", true);
    const std::string file = shader.Write();
    EXPECT_NE(file.find("unsigned int numMp, unsigned int i_numLights, QxLightInput *i_lights)\n{\n"
                        "\tQxShaderSupport *shaderSupport = i_context.ShaderSupport();\n"
                        "\tbool mustEvalLights = true;\n\tunsigned int polyCnt;\n"
                        "\tunsigned int lightCnt = 0;\n"),
              std::string::npos);
    EXPECT_NE(file.find("numMpV, numMp, i_numLights, i_lights);\n"), std::string::npos);
}

TEST(SlcGenCCode, RefusesSpacesWithTheSameCppName)
{
    Shader shader("clash", &surface);
    shader.AddSpace("a b");
    shader.AddSpace("a_20_b");
    testing::internal::CaptureStderr();
    static_cast<void>(shader.Write());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Coordinate spaces \"a b\" and \"a_20_b\" have the same name in C++\n");
}
