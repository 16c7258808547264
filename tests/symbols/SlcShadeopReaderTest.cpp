#include "symbols/SlcShadeopReader.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Returns the types and the name in the declaration, or which part of it is the first wrong one.
std::string Read(const std::string& text)
{
    SlcShadeopReader reader(text);
    const SlcTypeNode* returnType = reader.ReadReturnType();
    if (!returnType)
        return "return type";
    const SlcIdentNode* name = reader.ReadMethodName();
    if (!name)
        return "name";
    bool isGood = false;
    std::string result = returnType->ToString() + " " + name->GetName();
    for (const SlcTypeNode* type : reader.ReadArguments(isGood))
        result += " " + type->ToString();
    return isGood ? result : "signature";
}

std::string Repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

}  // namespace

TEST(SlcShadeopReader, ReadsDeclarations)
{
    struct Case {
        const char* text;
        const char* result;
    };
    static const Case cases[] = {
        {"float f(float)", "float f float"},
        {"color _f9(color,point,vector,normal,string)",
         "color _f9 color point vector normal string"},
        {"  string   f  (  float  ,  point  )  ", "string f float point"},
        {"vector f(float[3], color[], string [ 12 ] )", "vector f float[3] color[] string[12]"},
        {"normal f(point[0])", "normal f point[]"},
        {"point f(float[2147483647])", "point f float[2147483647]"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Read(c.text), c.result) << c.text;
}

TEST(SlcShadeopReader, RefusesMalformedDeclarations)
{
    struct Case {
        const char* text;
        const char* result;
    };
    static const Case cases[] = {
        {"", "return type"},
        {"   ", "return type"},
        {"void f(float)", "return type"},
        {"matrix f(float)", "return type"},
        {"varying float f(float)", "return type"},
        {"float[2] f(float)", "return type"},
        {"\tfloat f(float)", "return type"},
        {"Float f(float)", "return type"},
        {"floatf(float)", "return type"},
        {"float", "name"},
        {"float ", "name"},
        {"float (float)", "name"},
        {"float 9f(float)", "name"},
        {"float \xc3\xa4(float)", "name"},
        {"float f", "signature"},
        {"float f ", "signature"},
        {"float f float)", "signature"},
        {"float f)", "signature"},
        {"float f(", "signature"},
        {"float f()", "signature"},
        {"float f( )", "signature"},
        {"float f(float", "signature"},
        {"float f(float ", "signature"},
        {"float f(float,", "signature"},
        {"float f(float,)", "signature"},
        {"float f(,float)", "signature"},
        {"float f(float float)", "signature"},
        {"float f(float x)", "signature"},
        {"float f(float;float)", "signature"},
        {"float f(output float)", "signature"},
        {"float f(void)", "signature"},
        {"float f(float[)", "signature"},
        {"float f(float[3)", "signature"},
        {"float f(float[3", "signature"},
        {"float f(float[3 4])", "signature"},
        {"float f(float[x])", "signature"},
        {"float f(float[-1])", "signature"},
        {"float f(float[1.5])", "signature"},
        {"float f(float[2147483648])", "signature"},
        {"float f(float[3][3])", "signature"},
        {"float f([3])", "signature"},
        {"float f((float))", "signature"},
        {"float f(float))", "signature"},
        {"float f(float);", "signature"},
        {"float f(float) float g(float)", "signature"},
        {"float f(float)\n", "signature"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Read(c.text), c.result) << c.text;
}

TEST(SlcShadeopReader, ReadsDeclarationsOfAnyLength)
{
    const int count = 100000;
    EXPECT_EQ(Read("float f(float" + Repeated(", float[2]", count) + ")"),
              "float f float" + Repeated(" float[2]", count));
    const std::string name = Repeated("n", count);
    EXPECT_EQ(Read("float " + name + Repeated(" ", count) + "(float)"), "float " + name + " float");
    EXPECT_EQ(Read("float f(float[" + Repeated("1", count) + "])"), "signature");
    EXPECT_EQ(Read("float f(" + Repeated("x", count) + ")"), "signature");
    EXPECT_EQ(Read("float f" + Repeated("(", count)), "signature");
}
