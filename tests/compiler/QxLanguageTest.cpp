// Compares the names that `QxLanguage.h` lists for editors with those that the compiler accepts.

#include "compiler/QxLanguage.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "compiler/QxCompiler.h"

namespace {

constexpr const char* k_kinds[] = {"surface", "light", "volume", "displacement", "imager"};

bool IsAccepted(const std::string& source)
{
    QxCompileOptions options;
    options.output = QxCompileOptions::Output::Nothing;
    return QxCompileText("a.sl", source, options).succeeded;
}

std::string Reading(const QxIndexedName& variable)
{
    return variable.type + " x = " + variable.name + ";";
}

TEST(QxLanguage, ListsThePredefinedVariablesOfEachKindOfShader)
{
    std::map<std::string, QxIndexedName> all;
    for (const char* kind : k_kinds)
        for (const QxIndexedName& variable : QxPredefinedVariables(kind))
            all[variable.name] = variable;
    EXPECT_GT(all.size(), 20U);
    for (const std::string kind : k_kinds) {
        const auto listed = QxPredefinedVariables(kind);
        for (const auto& [name, variable] : all)
            EXPECT_EQ(IsAccepted(kind + " a() { " + Reading(variable) + " }"),
                      std::any_of(listed.begin(), listed.end(),
                                  [&](const QxIndexedName& one) { return one.name == name; }))
                << kind << ' ' << name;
        EXPECT_TRUE(IsAccepted(kind + " a() { " + Reading(QxPredefinedConstant()) + " }"));
    }
    EXPECT_TRUE(QxPredefinedVariables("nothing").empty());
    EXPECT_FALSE(QxLightLoopVariables().empty());
    for (const QxIndexedName& variable : QxLightLoopVariables()) {
        EXPECT_TRUE(IsAccepted("surface a() { illuminance(P) { " + Reading(variable) + " } }"));
        EXPECT_FALSE(IsAccepted("surface a() { " + Reading(variable) + " }")) << variable.name;
    }
}

TEST(QxLanguage, ListsKeywordsOfWhichOnlyKindsOfShadersCanBeNames)
{
    EXPECT_TRUE(IsAccepted("surface a() { float keyword = 1; }"));
    EXPECT_GT(QxKeywords().size(), 20U);
    for (const QxWord& word : QxKeywords())
        EXPECT_EQ(IsAccepted("surface a() { float " + std::string(word.word) + " = 1; }"),
                  word.kind == QxWordKind::Shader)
            << word.word;
}

/// Returns a shader that calls a built-in with one argument for each formal, of the formal's type.
/// A formal that accepts any type gets a float.
std::string Calling(const QxIndexedName& function, const std::string& kind)
{
    std::string locals;
    std::string arguments;
    for (std::size_t i = 0; i < function.formals.size(); ++i) {
        const QxIndexedFormal& formal = function.formals[i];
        const std::string name = "v" + std::to_string(i);
        const std::size_t bracket = formal.type.find('[');
        const std::string type = formal.type.substr(0, bracket);
        std::string length;
        if (bracket != std::string::npos)
            length = formal.type[bracket + 1] == ']' ? "[4]" : formal.type.substr(bracket);
        locals += formal.detail == QxDetail::Uniform ? "uniform " : "";
        locals += (type == "any" ? "float" : type) + " " + name + length + "; ";
        arguments += (i == 0 ? "" : ", ") + name;
    }
    const bool isVoid = function.type == "void";
    return kind + " a() { " + locals +
           (isVoid ? "" : function.type + " result = " + function.type + " ") + function.name +
           "(" + arguments + "); }";
}

TEST(QxLanguage, ListsTheOverloadsOfBuiltIns)
{
    const auto& functions = QxBuiltInFunctions();
    EXPECT_GT(functions.size(), 150U);
    for (const QxIndexedName& function : functions)
        EXPECT_TRUE(IsAccepted(Calling(function, "surface")) ||
                    IsAccepted(Calling(function, "light")))
            << function.declaration << '\n'
            << Calling(function, "surface");
}

}  // namespace
