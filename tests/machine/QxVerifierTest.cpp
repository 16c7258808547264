// Checks that the verifier rejects files that the machine could not run safely, with a message that
// names the place.

#include "machine/verify/QxVerifier.h"

#include <gtest/gtest.h>

#include "machine/FileParts.h"
#include "sqx/SqxReader.h"

namespace {

/// Returns the message of the reader or verifier that rejects the file; empty if it is accepted.
std::string Refusal(const std::string& text)
{
    SqxReader reader;
    if (!reader.Read(text))
        return reader.Message();
    QxVerifier verifier;
    const bool good = verifier.Verify(reader.Shader());
    EXPECT_EQ(good, verifier.Message().empty());
    return verifier.Message();
}

std::string RefusalOfCode(const std::string& code)
{
    FileParts parts;
    parts.code = code;
    return Refusal(parts.Text());
}

struct CodeCase {
    const char* code;
    const char* message;  // a part of it; empty: the file is accepted
};

void Expect(const CodeCase& c)
{
    const std::string message = RefusalOfCode(c.code);
    if (*c.message == '\0')
        EXPECT_EQ(message, "") << c.code;
    else
        EXPECT_NE(message.find(c.message), std::string::npos) << c.code << ": " << message;
}

}  // namespace

TEST(QxVerifier, ReportsLineSectionAndReason)
{
    // The code begins in line 64.
    EXPECT_EQ(RefusalOfCode("ASSIGN_FLOAT_FLOAT uf #1 ASSIGN_FLOAT_FLOAT uf up"),
              "line 69, main: Instruction ASSIGN_FLOAT_FLOAT at 3: Operand %7 is not a float");
    EXPECT_EQ(RefusalOfCode("GOTO 2 BEGIN_PARALLEL"),
              "line 66, main: Instruction BEGIN_PARALLEL at 2 is a bracket that is not closed");
}

TEST(QxVerifier, RefusesOperandsOfOtherTypes)
{
    static const CodeCase cases[] = {
        {"ASSIGN_FLOAT_FLOAT uf #1", ""},
        {"ADD_FLOAT_POINT up uf up", ""},
        {"ADD_FLOAT_POINT uf uf up", "%5 is not a point"},
        {"MULT_MATRIX_FLOAT um um up", "%7 is not a float"},
        {"ASSIGN_STRING_STRING us uf", "%5 is not a string"},
        {"ASSIGN_BOOL_BOOL ub uf", "%5 is not a flag"},
        {"ASSIGN_FLOAT_FLOAT uf ua", "%10 is not a float"},  // an array
        {"ASSIGN_FLOAT_FLOAT uf #0", "0 is not a float"},    // an integer
        {"ASSIGN_FLOAT_FLOAT #1 uf", "1 is a constant, but is written"},
        {"CALL_PRIM_NOISE_FLOAT_3D uf uf", "%5 is not a point"},
        {"CALL_PRIM_SPLINE_BASIS_1D 4 uf us uf uf uf", ""},
        {"CALL_PRIM_SPLINE_BASIS_1D 4 uf us uf uf up", "%7 is not a float"},
        {"CALL_PRIM_SPLINE_1D 2 uf uf uf", ""},
        {"CALL_PRIM_SPLINE_1D 1 uf uf", "has too few arguments"},  // no control value
        {"CALL_PRIM_SPLINE_BASIS_1D 2 uf us uf", "has too few arguments"},
        {"CALL_PRIM_MIN_1D 0 uf", "has too few arguments"},
        {"CALL_PRIM_MIN_1D -1 uf", "has a negative number of arguments"},
        {"CALL_PRIM_MIN_1D 30000 uf uf", "goes beyond the end of its block"},
        {"CALL_PRIM_PRINTF 2 us um", ""},
        {"CALL_PRIM_PRINTF 2 us ub", "%6 is not a value"},
        {"CALL_PRIM_TRACE_SIMD vc P P #0", ""},  // the distance is left out
        {"CALL_PRIM_TRACE_SIMD vc P P #1", "1 is a constant, but is written"},
        {"CALL_PRIM_SURFACE uf #a ua #1 #1 #1", ""},
        {"CALL_PRIM_MIX_3D_SIMD_IF_TRUE vc vb vc vc uf", ""},
        {"CALL_PRIM_MIX_3D_SIMD_IF_TRUE vc ub vc vc uf", "%6 is a condition, but is not varying"},
        {"ARRAY_REF ue ua #1", ""},
        {"ARRAY_REF uf ua #1", "%5 is not a reference"},
        {"ARRAY_REF ue uf #1", ""},  // an array of one
        {"ARRAY_REF ue up #1", "%7 holds other elements"},
        {"ARRAY_REF ue ue #1", "%11 is not an array"},
        {"CONVERT_ARRAY_DSO_TO va ua", ""},
        {"CONVERT_ARRAY_DSO_TO va uf", "%5 is an array of another type or size"},
    };
    for (const CodeCase& c : cases)
        Expect(c);
}

TEST(QxVerifier, RefusesVaryingValuesOutsideOfPoints)
{
    static const CodeCase cases[] = {
        {"ASSIGN_FLOAT_FLOAT vf #1", "has varying values outside the parallel brackets"},
        {"ASSIGN_FLOAT_FLOAT uf s", "has varying values outside the parallel brackets"},
        {"BEGIN_PARALLEL ASSIGN_FLOAT_FLOAT uf s END_PARALLEL", ""},  // the last point counts
        {"CALL_PRIM_NORMALIZE_SIMD up P", "gives varying values to a uniform variable"},
        {"CALL_PRIM_SURFACE_SIMD uf #a vf #1 #1 #1", ""},
        {"SET_UNIFORM_BOOL_FLAG ub vb", ""},
        {"OR_BOOL_FLAG ub vb vb", "gives varying values to a uniform variable"},
        {"CALL_PRIM_DIFFUSE up up", "gives varying values to a uniform variable"},
        {"BEGIN_PARALLEL CALL_PRIM_DIFFUSE up P END_PARALLEL", ""},
        {"BEGIN_PARALLEL CALL_PRIM_DIFFUSE_SIMD vc P END_PARALLEL", "cannot stand within"},
        {"BEGIN_PARALLEL SET_UNIFORM_BOOL_FLAG ub vb END_PARALLEL", "cannot stand within"},
        {"IF_TRUE vb END_IF", "has varying values outside"},
        {"ARRAY_REF ve va uf", ""},
        {"ARRAY_REF ve va s", "has varying values outside"},
        {"ARRAY_REF ve ua uf", ""},
        {"ARRAY_REF ue va uf", "%11 is uniform, but its element is varying"},
        {"BEGIN_PARALLEL ARRAY_REF ue ua s END_PARALLEL", "%11 is uniform, but its element"},
    };
    for (const CodeCase& c : cases)
        Expect(c);
}

TEST(QxVerifier, RefusesBracketsAndJumpsThatDoNotNest)
{
    static const CodeCase cases[] = {
        {"BEGIN_PARALLEL IF_TRUE vb END_IF END_PARALLEL", ""},
        {"BEGIN_PARALLEL IF_TRUE vb END_PARALLEL END_IF", "closes a bracket that was not"},
        {"END_IF", "closes a bracket that was not opened last"},
        {"IF_TRUE ub", "is a bracket that is not closed"},
        {"BEGIN_PARALLEL BEGIN_PARALLEL END_PARALLEL END_PARALLEL", "cannot stand within"},
        {"BEGIN_ILLUMINANCE 4 END_ILLUMINANCE 2", ""},
        {"BEGIN_ILLUMINANCE 2 END_ILLUMINANCE 2", "does not end the loop over lights"},
        {"BEGIN_ILLUMINANCE 4 END_ILLUMINANCE 0", "does not end the loop over lights"},
        {"BEGIN_ILLUMINANCE 6 GOTO 6 END_ILLUMINANCE 2", ""},  // leaves the loop
        {"GOTO 4 BEGIN_ILLUMINANCE 6 END_ILLUMINANCE 4", "goes into or out of brackets"},
        {"IF_TRUE ub GOTO 5 END_IF", "goes into or out of brackets"},
        {"IF_TRUE ub GOTO 4 END_IF", ""},
        {"GOTO 4 IF_TRUE ub END_IF", "goes into or out of brackets"},
        {"BEGIN_PARALLEL GOTO 4 END_PARALLEL", "goes into or out of brackets"},
        {"GOTO 3 BEGIN_PARALLEL END_PARALLEL", "goes into or out of brackets"},
        {"GOTO 2", ""},
    };
    for (const CodeCase& c : cases)
        Expect(c);
    std::string deep;
    for (std::size_t i = 0; i < QxVerifier::k_deepestNesting; ++i)
        deep = "IF_TRUE ub " + deep + " END_IF";
    Expect({deep.c_str(), ""});
    deep = "IF_TRUE ub " + deep + " END_IF";
    Expect({deep.c_str(), "is a bracket that is nested too deeply"});
}

TEST(QxVerifier, RefusesUnboundReferences)
{
    static const CodeCase cases[] = {
        {"ASSIGN_FLOAT_FLOAT uf ue", "uses reference %11, which may stand for nothing yet"},
        {"ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue", ""},
        {"ASSIGN_FLOAT_FLOAT ue uf ARRAY_REF ue ua #1", "uses reference %11"},
        {"ARRAY_REF ue ua ue", "uses reference %11"},
        {"GOTO 6 ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue", "uses reference %11"},
        {"IF_TRUE_GOTO ub 7 ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue", "uses reference %11"},
        // A loop whose backward jump keeps the bindings made before it.
        {"ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue IF_TRUE_GOTO ub 4", ""},
        // The backward path binds the reference, but the first path does not.
        {"GOTO 6 ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue GOTO 2", "uses reference %11"},
        // A jump into the middle of the loop passes over the binding.
        {"IF_TRUE_GOTO ub 10 ARRAY_REF ue ua #1 ASSIGN_FLOAT_FLOAT uf ue IF_TRUE_GOTO ub 7",
         "uses reference %11"},
        {"IF_TRUE ub ARRAY_REF ue ua #1 END_IF BEGIN_PARALLEL IF_TRUE vb "
         "ASSIGN_FLOAT_FLOAT vf ue END_IF END_PARALLEL",
         ""},
        {"BEGIN_ILLUMINANCE 8 ARRAY_REF ue ua #1 END_ILLUMINANCE 2 ASSIGN_FLOAT_FLOAT uf ue",
         "uses reference %11"},
        {"ARRAY_REF ue ua #1 ARRAY_REF ue uf #1", "binds a reference to elements of two arrays"},
    };
    for (const CodeCase& c : cases)
        Expect(c);
}

TEST(QxVerifier, RefusesInvalidSizesNamesAndValues)
{
    struct PartCase {
        std::string FileParts::*part;
        const char* text;
        const char* message;
    };
    static const PartCase cases[] = {
        {&FileParts::uniforms, "7\n1 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n1 0 0\n1 1 1\n",
         "line 24, variables: Variable %10 is an array of a length that cannot be"},
        {&FileParts::uniforms, "7\n1 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n1 1048577 0\n1 1 1\n",
         "%10 is an array of a length that cannot be"},
        {&FileParts::uniforms, "7\n1 1 0\n10 2 0\n2 1 0\n7 1 0\n4 1 0\n1 3 0\n1 1 1\n",
         "%6 is an array of flags"},
        {&FileParts::uniforms, "7\n5 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n1 3 0\n1 1 1\n",
         "%5 has a type that it cannot have"},
        {&FileParts::uniforms, "7\n1 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n1 3 0\n1 2 1\n",
         "%11 is a reference and an array"},
        {&FileParts::uniforms, "7\n1 1 0\n10 1 0\n2 1 0\n7 1 0\n4 1 0\n7 1048576 0\n7 2 0\n",
         "The variables are too large"},
        {&FileParts::varyings, "6\n1 1 0\n10 1 0\n3 1 0\n4 1 0\n7 262144 0\n1 1 1\n",
         "The variables are too large"},
        {&FileParts::predefined, "3\ns\ns\nCi\n", "line 13, variables: 's' is there twice"},
        {&FileParts::parameters,
         "2\n\"Kd\" \"uniform float\" \"\" 2 1 1\n\"Kd\" \"uniform float\" \"\" 2 1 1\n",
         "'Kd' is there twice"},
        {&FileParts::parameters,
         "2\n\"Kd\" \"uniform bool\" \"\" 2 10 1\n\"w\" \"varying color\" \"\" 3 3 1\n",
         "Variable Kd has a type that it cannot have"},
        {&FileParts::constants, "4\n1 1e39\n4 \"a\"\n5 0\n10 1\n",
         "does not fit into single precision"},
        {&FileParts::constants, "4\n1 -1.5e+999\n4 \"a\"\n5 0\n10 1\n",
         "does not fit into single precision: -1.5e+999"},
        {&FileParts::constants, "4\n1 0.01e99999999999999999999\n4 \"a\"\n5 0\n10 1\n",
         "does not fit into single precision"},
        {&FileParts::shadeops, "1\n\"../x.so\"\n0\n",
         "shadeops: Library \"../x.so\" is not a plain file name"},
    };
    for (const PartCase& c : cases) {
        FileParts parts;
        parts.*c.part = c.text;
        const std::string message = Refusal(parts.Text());
        EXPECT_NE(message.find(c.message), std::string::npos) << c.text << message;
    }
}

TEST(QxVerifier, RefusesInvalidInitializers)
{
    static const std::string none = "0\n0\n0\n0\n0\n";
    const auto group = [](const std::string& code, const std::string& result) {
        return "1\n3\n1\n1 1 0\n1\n3 1 0\n1\n1 2.0\n0\n" + CodeText(code) + result + '\n';
    };
    const auto message = [](const std::string& once, const std::string& perPoint) {
        FileParts parts;
        parts.initializers = once + perPoint;
        return Refusal(parts.Text());
    };
    // The variables of the group have the numbers 22 to 24: a uniform float, a varying color, and
    // 2.
    EXPECT_EQ(message(group("ASSIGN_FLOAT_FLOAT 22 24", "22"), none), "");
    EXPECT_EQ(message(none, group("ASSIGN_FLOAT_FLOAT Kd 24", "3")), "");
    struct Row {
        std::string message;
        std::string expected;
    };
    const Row rows[] = {
        {message(group("ASSIGN_FLOAT_FLOAT 22 s", "22"), none),
         "initializer of Kd: Instruction ASSIGN_FLOAT_FLOAT at 0 has varying values outside"},
        {message(group("CALL_PRIM_AMBIENT_SIMD 23", "22"), none), "needs a grid"},
        {message(group("BEGIN_PARALLEL END_PARALLEL", "22"), none), "needs a grid"},
        {message(group("ASSIGN_FLOAT_FLOAT uf 24", "22"), none), "%5 belongs to main"},
        {message(group("", "23"), none), "initializer of Kd: %23 cannot become the parameter's"},
        {message(group("", "5"), none), "%5 cannot become the parameter's value"},
        {message(none, group("CALL_PRIM_AMBIENT 23", "22")), ""},
        {message(none, group("ASSIGN_FLOAT_FLOAT 22 s", "22")), "has varying values outside"},
        {message(group("", "22"), group("", "24")), "initializer of Kd: The parameter has two"},
    };
    for (const Row& row : rows)
        EXPECT_TRUE(row.expected.empty() ? row.message.empty()
                                         : row.message.find(row.expected) != std::string::npos)
            << row.expected << ": " << row.message;
}
