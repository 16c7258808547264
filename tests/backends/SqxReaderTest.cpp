// Checks that the reader of byte-code files returns their contents, and refuses invalid files.

#include "sqx/SqxReader.h"

#include <gtest/gtest.h>

#include "backends/FormBuilder.h"
#include "sqx/SqxDump.h"
#include "symbols/SlcFuncDSOSymbolEntry.h"

namespace {

using T = SlcTypeNode;

/// Returns a file with entries in all sections except that of the shadeop libraries.
std::string SampleFile()
{
    FormBuilder b;
    b.Space("world");
    const SlcOperand P = b.Predefined("P");
    const SlcOperand u = b.Parameter("u1", Number(0.5));
    b.InitialCode(true).AddICode(MakeShared<SlcAssignICode>(u, Number(2)));
    const SlcOperand array = b.Local(T::CreateArrayType(T::AFloat(), 3));
    const SlcOperand element = b.Local(T::CreateArrayRefType(T::AFloat()));
    const SlcLabel end = MakeShared<SlcLabelICode>("E");
    b.Add(MakeShared<SlcGotoICode>(end));
    b.Add(MakeShared<SlcArrayRefICode>(element, array, Number(1)));
    b.Add(MakeShared<SlcTransformToSpaceICode>(P, P, T::APoint(), SlcLexType::String("\"world\""),
                                               SlcGridForm::Whole()));
    b.Add(MakeShared<SlcCallICode>(SqxPrimitive::CALL_PRIM_PRINTF,
                                   std::deque<SlcOperand>{SlcLexType::String("\"a\\\"\n%f\""), u},
                                   nullptr, SlcCallICode::ArgumentList::Counted,
                                   SlcGridForm::Plain(), nullptr));
    b.Add(end);
    return b.Text();
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

}  // namespace

TEST(SqxReader, ReadsBackEverything)
{
    SqxReader reader;
    ASSERT_TRUE(reader.Read(SampleFile())) << reader.Message();
    EXPECT_EQ(SqxDump(reader.Shader()),
              "surface shader\n"
              "predefined\n  0  P  varying point\n"
              "parameters\n  1  u1  uniform float\n"
              "locals\n  2  %2  varying float[3]\n  3  %3  varying float reference\n"
              "constants\n  4  1  uniform float\n  5  \"a\\\"\\n%f\"  uniform string\n"
              "  6  \"world\"  uniform string\n"
              "spaces \"object\" \"shader\" \"world\"\n"
              "initializer of u1 (per point)\n     0  ASSIGN_FLOAT_FLOAT u1 2\n  value 0.5\n"
              "traces rays: no\nmodifies P: no\n"
              "main\n"
              "     0  GOTO ->14\n"
              "     2  ARRAY_REF %3 %2 1\n"
              "     6  CALL_PRIM_TRANSFORM_FROM_CURRENT_SIMD P P \"world\"\n"
              "    10  CALL_PRIM_PRINTF (2) \"a\\\"\\n%f\" u1\n");
}

TEST(SqxReader, NamesTheFaultAndItsLine)
{
    struct FaultCase {
        const char* from;
        const char* to;
        const char* message;
    };
    static const FaultCase cases[] = {
        {"\x7Fomb", "\x7Fomc", "line 1: Not a byte-code file of version 5"},
        {"5 0", "6 0", "line 7: Not a byte-code file of version 5"},
        {"5 0\n0\n", "5 0\n5\n", "line 8: Unknown shader type 5"},
        {"\n7\n1\nP", "\n8\n1\nP",
         "line 10, variables: The sections hold another number of variables than 8"},
        {"\nP\n", "\nQ\n", "line 12, variables: Unknown predefined variable Q"},
        {"float\" \"\" 2 1 1", "float\" \"\" 2 6 1", "line 14, variables: Unknown type 6"},
        {"float\" \"\" 2 1 1", "float\" \"\" 1 1 1", "line 14, variables: Unknown class 1"},
        {"1 1.000000e+00", "1 nan", "line 20, variables: Constant is not a number: nan"},
        {"\n1\n\"world\"\n", "\n1\nworld\n",
         "line 26, spaces: Coordinate space is not a quoted text"},
        {"14\n432\n14\n", "14\n432\n13\n",
         "line 58, main: Instruction GOTO at 0 has the bad value 13"},
        {"14\n432\n14\n", "14\n432\n15\n", "Instruction GOTO at 0 has the bad value 15"},
        {"14\n432\n14\n", "14\n432\n-1\n", "Instruction GOTO at 0 has the bad value -1"},
        {"14\n432\n14\n", "14\n211\n14\n", "Unknown instruction 211 at 0"},
        {"14\n432\n14\n", "14\n40000\n14\n", "Value 40000 does not fit into 16 bits"},
        {"349\n2\n", "349\n3\n", "Instruction CALL_PRIM_PRINTF at 10 goes beyond the end"},
        {"445\n3\n2\n4\n", "445\n3\n2\n7\n", "Instruction ARRAY_REF at 2 has the bad value 7"},
    };
    const std::string good = SampleFile();
    for (const FaultCase& c : cases) {
        SqxReader reader;
        EXPECT_FALSE(reader.Read(Replaced(good, c.from, c.to))) << c.to;
        EXPECT_NE(reader.Message().find(c.message), std::string::npos)
            << c.to << ": " << reader.Message();
    }
}

TEST(SqxReader, SurvivesAnyFile)
{
    // The part before a fault can be printed too.
    const auto survive = [](const std::string& text) {
        SqxReader reader;
        const bool good = reader.Read(text);
        EXPECT_EQ(good, reader.Message().empty());
        EXPECT_EQ(SqxDump(reader.Shader()).empty(), reader.Shader().reached == SqxSection::None);
        return good;
    };
    const std::string good = SampleFile();
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(survive(good.substr(0, length))) << length;
    for (std::size_t i = 0; i < good.size(); ++i)
        for (const char byte : {'9', '-', '\n', '"', '\0', '\x80'}) {
            std::string changed = good;
            changed[i] = byte;
            survive(changed);
        }
}

TEST(SqxReader, KeepsThePartBeforeAFault)
{
    const std::string good = SampleFile();
    SqxReader reader;
    EXPECT_FALSE(reader.Read(Replaced(good, "445\n3\n2\n4\n", "445\n3\n2\n7\n")));
    const std::string dump = SqxDump(reader.Shader());
    EXPECT_NE(dump.find("main\n     0  GOTO ->14\n"), std::string::npos) << dump;
    EXPECT_EQ(dump.find("ARRAY_REF"), std::string::npos) << dump;
    EXPECT_FALSE(reader.Read(Replaced(good, "\n1\n\"world\"\n", "\n1\nworld\n")));
    EXPECT_TRUE(SqxDump(reader.Shader()).ends_with("  6  \"world\"  uniform string\n"));
}

TEST(SqxReader, ReportsUnreadableFilesWithoutTheResultsOfEarlierOnes)
{
    const std::string good = SampleFile();
    const auto ignoresTheFile = [](SqxReader& reader, const char* path, const char* message) {
        EXPECT_FALSE(reader.ReadFile(path));
        EXPECT_EQ(reader.Message(), message);
        EXPECT_EQ(reader.FaultLine(), 0);
        EXPECT_EQ(SqxDump(reader.Shader()), "");
    };
    SqxReader reader;
    ASSERT_TRUE(reader.Read(good));
    ignoresTheFile(reader, "/no/such/file.sqx", "No such file or directory");
    EXPECT_FALSE(reader.ReadFile("/dev/null"));
    EXPECT_EQ(reader.Message(), "line 1: Not a byte-code file of version 5");
    EXPECT_EQ(reader.FaultLine(), 1);
    ignoresTheFile(reader, "/", "Is a directory");
    EXPECT_FALSE(reader.Read("?"));
    EXPECT_TRUE(reader.Read(good));
    EXPECT_EQ(reader.Message(), "");
    EXPECT_EQ(reader.FaultLine(), 0);
}

TEST(SqxLiteralText, KnowsTheEscapesOfC)
{
    const struct {
        const char* literal;
        const char* text;
    } cases[] = {
        {R"("plain")", "plain"},       {R"("a\nb\tc\rd")", "a\nb\tc\rd"},
        {R"("\a\b\f\v")", "\a\b\f\v"}, {R"("\"\\\'\?")", "\"\\'?"},
        {R"("\101\60x")", "A0x"},      {R"("\1011")", "A1"},
        {R"("\d\9")", "d9"},           {R"("")", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SqxLiteralText(c.literal), c.text) << c.literal;
}

TEST(SqxReader, ChecksShadeopNumbersAgainstTheTable)
{
    FormBuilder b;
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent("grains");
    SlcShadeopInfo info;
    info.methodName = signature.ident;
    info.init = info.cleanup = SlcLexicalNode::CreateIdent("");
    info.libraryBaseName = "ops";
    info.libraryExtension = "so";
    info.key = "ops_so";
    b.Form().m_dsoNames = {"ops.so"};
    b.Form().m_dsoFunctions = {
        MakeShared<SlcFuncDSOSymbolEntry>(std::move(signature), std::move(info))};
    const SlcOperand x = b.Parameter("x1", Number(0.5));
    const auto call = MakeShared<SlcCallDSOICode>(x, std::deque<SlcOperand>(), "ops_so", "grains");
    b.InitialCode(false).AddICode(call);
    b.Add(call);

    const std::string good = b.Text();
    SqxReader reader;
    ASSERT_TRUE(reader.Read(good)) << reader.Message();
    // The first call belongs to the initializer, which precedes the table.
    const std::string first = Replaced(good, "\n459\n0\n", "\n459\n1\n");
    EXPECT_FALSE(reader.Read(first));
    EXPECT_NE(reader.Message().find("initializer of x1"), std::string::npos) << reader.Message();
    EXPECT_NE(reader.Message().find("CALL_DSO at 0 has the bad value 1"), std::string::npos);
    const std::size_t main = good.rfind("\n459\n0\n");
    EXPECT_FALSE(reader.Read(good.substr(0, main) + "\n459\n-1\n" + good.substr(main + 7)));
    EXPECT_NE(reader.Message().find("main: Instruction CALL_DSO at 0 has the bad value -1"),
              std::string::npos)
        << reader.Message();
}
