// Checks that calls of shadeops are refused if their library declares none that fits.

#include "machine/verify/QxShadeopCheck.h"

#include <gtest/gtest.h>

#include "QxHostError.h"
#include "machine/FileParts.h"
#include "machine/verify/QxVerifier.h"
#include "sqx/SqxReader.h"

namespace {

/// Returns the message for a main block that calls shadeop 0, whose library has one declaration;
/// empty if the block may run.
std::string Refusal(const char* code, const char* declaration)
{
    FileParts parts;
    parts.shadeops = "1\n\"lib.so\"\n1\n0 \"\" \"f\" \"\"\n";
    parts.code = code;
    SqxReader reader;
    EXPECT_TRUE(reader.Read(parts.Text())) << reader.Message();
    QxVerifier verifier;
    EXPECT_TRUE(verifier.Verify(reader.Shader())) << verifier.Message();
    QxShadeopCheck check(reader.Shader());
    check.Declare(0, declaration);
    try {
        check.Run();
    } catch (const QxHostError& error) {
        return error.what();
    }
    return "";
}

}  // namespace

TEST(QxShadeopCheck, ReportsThePlaceAndTheShadeop)
{
    EXPECT_EQ(Refusal("CALL_DSO 0 1 uf up", "float f(float)"),
              "line 66, main: Instruction CALL_DSO at 0: Shadeop 'f' is called with other types "
              "than its library declares");
}

TEST(QxShadeopCheck, RefusesCallsThatNoDeclarationFits)
{
    struct CallCase {
        const char* code;
        const char* declaration;
        bool good;
    };
    static const CallCase cases[] = {
        {"CALL_DSO 0 1 uf #1", "float f(float)", true},
        {"CALL_DSO 0 1 up up", "normal f(color)", true},  // triples of all types are stored alike
        {"CALL_DSO 0 1 us us", "string f(string)", true},
        {"CALL_DSO 0 2 uf ua uf", "float f(float[3], float)", true},
        {"CALL_DSO 0 2 uf ua uf", "float f(float[], float)", true},
        {"CALL_DSO 0 1 uf uf", "float f(float[1])", true},
        {"CALL_DSO 0 1 up uf", "float f(float)", false},  // the result
        {"CALL_DSO 0 1 uf us", "float f(float)", false},
        {"CALL_DSO 0 1 uf um", "float f(color)", false},
        {"CALL_DSO 0 0 uf", "float f(float)", false},
        {"CALL_DSO 0 2 uf uf uf", "float f(float)", false},
        {"CALL_DSO 0 1 uf ua", "float f(float)", false},
        {"CALL_DSO 0 1 uf uf", "float f(float[3])", false},
        {"CALL_DSO 0 1 uf ua", "float f(float[4])", false},
        {"CALL_DSO 0 1 uf ua", "float f(string[3])", false},
        // These declarations are of another function or invalid, so nothing fits.
        {"CALL_DSO 0 1 uf uf", "float g(float)", false},
        {"CALL_DSO 0 1 uf uf", "float f(float", false},
        {"CALL_DSO 0 1 uf uf", "float f(float) ;", false},
        {"CALL_DSO 0 0 uf", "float f()", false},
        {"CALL_DSO 0 1 um um", "matrix f(matrix)", false},
    };
    for (const CallCase& c : cases)
        EXPECT_EQ(Refusal(c.code, c.declaration).empty(), c.good)
            << c.code << ": " << c.declaration;
}
