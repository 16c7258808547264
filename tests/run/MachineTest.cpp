// Checks the machine of the tests itself: what it runs, which faults it finds, and its initial
// state.

#include <gtest/gtest.h>

#include <sstream>

#include "backends/SlcByteCode.h"
#include "machine/SqxScene.h"
#include "shaders/RunShader.h"
#include "sqx/SqxFileHead.h"

namespace {

/// Returns the file of a surface whose main block holds `instructions`: names, each with its
/// values. Its variables are the predefined varying number `s` (0), the locals, which are a uniform
/// flag (1), a varying flag (2) and a varying number (3), and the constants 2 (4) and false (5).
std::string FileOf(const std::string& instructions)
{
    std::istringstream words(instructions);
    std::vector<std::string> values;
    for (std::string word; words >> word;) {
        const bool isName = std::isalpha(static_cast<unsigned char>(word[0])) != 0;
        const int number = isName ? SlcByteCode::GetInstrNb(word) : std::stoi(word);
        values.push_back(std::to_string(number));
    }
    std::string text;
    for (const std::string_view line : k_sqxFileHead)
        text.append(line) += '\n';
    text += "0\n\n6\n1\ns\n0\n1\n10 1 0\n2\n10 1 0\n1 1 0\n2\n1 2.0e+00\n10 0\n\n0\n\n"
            "0\n0\n0\n0\n0\n0\n0\n0\n0\n0\n\n\n\n0\n0\n\n0\n0\n";
    text += std::to_string(values.size()) + '\n';
    for (const std::string& value : values)
        text += value + '\n';
    return text;
}

}  // namespace

TEST(Machine, KnowsEveryInstruction)
{
    for (int number = 0; number <= SqxHighestNumber(); ++number) {
        const SqxLayout* layout = SqxLayout::Find(number);
        EXPECT_TRUE(!layout || SqxProgram::Knows(layout->primitive)) << layout->name;
    }
}

TEST(Machine, FindsFaultsOfGeneratedCode)
{
    struct FaultCase {
        const char* code;
        const char* message;
    };
    static const FaultCase cases[] = {
        {"ASSIGN_FLOAT_FLOAT 0 4", "is varying, but is used outside the points"},
        {"BEGIN_PARALLEL IF_TRUE 2 END_IF END_PARALLEL", "Flag 2 is read before it is set"},
        {"SET_UNIFORM_BOOL_FLAG 1 2", "Flag 2 is read before it is set"},
        {"IF_TRUE 1 BEGIN_PARALLEL END_IF END_PARALLEL", "A bracket is closed that was not"},
        {"BEGIN_PARALLEL", "A bracket is not closed"},
        {"BEGIN_PARALLEL ASSIGN_BOOL_BOOL_SIMD 2 5 END_PARALLEL", "cannot stand within parallel"},
        {"BEGIN_PARALLEL GOTO 3 END_PARALLEL", "cannot stand within parallel"},
        {"GOTO 0", "The shader does not end"},
        {"CALL_PRIM_AMBIENT_SIMD 0", "Lights are asked for that were not run"},
        {"END_ILLUMINANCE 0", "a loop over lights that was not begun"},
        {"BEGIN_PARALLEL INIT_COLOR 0 4 4 4 END_PARALLEL", "has 1 numbers, not 3"},
        {"ARRAY_REF 0 1 4", "cannot stand for an element"},
        {"BEGIN_PARALLEL MULT_FLOAT_FLOAT 0 4 3 END_PARALLEL", "Nothing has written 's'"},
        {"BEGIN_PARALLEL CALL_PRIM_STEP 0 3 4 END_PARALLEL", "Nothing has written 's'"},
        {"BEGIN_PARALLEL BOOL_LESS_THEN_FLOAT_FLOAT 2 4 3 IF_TRUE 2 END_IF END_PARALLEL",
         "Flag 2 is read before it is set"},
        {"IF_TRUE 1 BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT 0 4 END_PARALLEL END_IF",
         "Nothing has written 's'"},
        {"IF_TRUE 1 ASSIGN_FLOAT_FLOAT_SIMD 0 4 END_IF", "Nothing has written 's'"},
        {"IF_TRUE 1 IF_TRUE 1 END_IF BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT 0 4 END_PARALLEL END_IF",
         "Nothing has written 's'"},
        {"BEGIN_PARALLEL ASSIGN_BOOL_BOOL 2 5 END_PARALLEL IF_TRUE 1 BEGIN_PARALLEL IF_TRUE 2 "
         "END_IF ASSIGN_FLOAT_FLOAT 0 4 END_PARALLEL END_IF",
         "Nothing has written 's'"},
    };
    for (const FaultCase& c : cases) {
        SqxMachine machine;
        machine.SetStepLimit(1000);
        const std::string file = FileOf(c.code);
        const bool good = machine.LoadText(file) && machine.Run();
        EXPECT_FALSE(good) << c.code;
        EXPECT_NE(machine.Message().find(c.message), std::string::npos)
            << c.code << ": " << machine.Message();
    }
}

TEST(Machine, StartsEachRunFromTheBeginning)
{
    SqxMachine machine;
    ASSERT_TRUE(machine.LoadText(
        ByteCodeOf("surface test(float k = 2; output varying float r = 0;) { r += k * u; }", 2)));
    for (int run = 0; run < 2; ++run) {
        ASSERT_TRUE(machine.Run()) << machine.Message();
        EXPECT_EQ(machine.ValueOf("r", 2), std::vector<float>{2});
    }
    machine.Set("k", {10});
    machine.Set("u", {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(machine.Run()) << machine.Message();
    EXPECT_EQ(machine.ValueOf("r", 5), std::vector<float>{60});
    EXPECT_TRUE(machine.ValueOf("nothing", 0).empty());
}

TEST(Machine, ComputesDefaultValues)
{
    SqxMachine machine;
    QxMatrix44 up = QxMatrix44::Identity();
    up[3][2] = 5;
    machine.SetSpace("world", up);
    ASSERT_TRUE(machine.LoadText(ByteCodeOf(
        "surface test(float a = 3; varying float b = 2 * s; float c = a + 1;"
        "             uniform float d[2] = {1, 2}; point p = point \"world\" (1, 2, 3);"
        "             string name = \"a\\\"b\"; color hue = 0.5; matrix m = 2;) { Ci = 0; }",
        0)));
    ASSERT_TRUE(machine.Run()) << machine.Message();
    EXPECT_EQ(machine.ValueOf("b", 1), std::vector<float>{1});
    EXPECT_EQ(machine.ValueOf("c", 0), std::vector<float>{4});
    EXPECT_EQ(machine.ValueOf("d", 0), (std::vector<float>{1, 2}));
    EXPECT_EQ(machine.ValueOf("p", 0), (std::vector<float>{1, 2, 8}));
    EXPECT_EQ(machine.TextOf("name", 0), "a\"b");
    EXPECT_EQ(machine.ValueOf("hue", 0), (std::vector<float>{0.5, 0.5, 0.5}));
    EXPECT_EQ(machine.ValueOf("m", 0)[5], 2);
}

TEST(Machine, ReportsABadIndexAndContinues)
{
    SqxMachine machine;
    const RunOutcome outcome = RunShader(
        machine, ByteCodeOf("surface test(output varying float r = 0;)\n"
                            "{ uniform float a[2] = {1, 2}; uniform float i = 7; r = a[i]; }",
                            0));
    EXPECT_EQ(outcome.fault, "");
    EXPECT_EQ(outcome.text, "test.sl:2: index 7 is outside of array 'a'\n");
    EXPECT_EQ(machine.ValueOf("r", 0), std::vector<float>{2});
}
