#include "shaders/RunShader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <functional>

#include "backends/SlcGenByteCode.h"
#include "compiler/SlcOptimizationLevel.h"
#include "helpers/CheckedShader.h"
#include "helpers/ICodeReadBack.h"
#include "machine/SqxScene.h"
#include "machine/verify/QxVerifier.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

namespace {

// The predefined variables that a shader may write.
constexpr const char* k_predefinedOutputs[] = {"Ci", "Oi", "P", "N", "Cl", "Ol", "L", "I", "alpha"};

bool IsClose(float a, float b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b || std::abs(a - b) <= 1e-4F * std::max({1.0F, std::abs(a), std::abs(b)});
}

RunOutcome::Output ReadOutput(SqxMachine& machine, const std::string& name, std::size_t points)
{
    RunOutcome::Output output = {name, {}};
    for (std::size_t i = 0; i < points; ++i) {
        const std::vector<float> numbers = machine.ValueOf(name, i);
        output.numbers.insert(output.numbers.end(), numbers.begin(), numbers.end());
    }
    return output;
}

std::vector<std::string> OutputNames(const SqxShader& shader)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < shader.predefinedCount; ++i)
        for (const char* output : k_predefinedOutputs)
            if (shader.variables[i].name == output)
                names.emplace_back(output);
    for (std::size_t i = 0; i < shader.parameterCount; ++i)
        if (shader.Parameter(i).output && shader.Parameter(i).type != SqxType::String)
            names.push_back(shader.Parameter(i).name);
    return names;
}

/// Writes the source to the folder that the environment variable SLC_KEEP_SOURCES names, if it is
/// set, so that other tests can run it.
void Keep(const std::string& source)
{
    if (const char* folder = std::getenv("SLC_KEEP_SOURCES"))
        std::ofstream(std::string(folder) + '/' + std::to_string(std::hash<std::string>()(source)) +
                      ".sl")
            << source;
}

/// Expects that the reader and the verifier of the product's machine accept the byte-code.
void ExpectVerified(const std::string& byteCode, const std::string& source)
{
    SqxReader reader;
    EXPECT_TRUE(reader.Read(byteCode)) << reader.Message() << '\n' << source;
    QxVerifier verifier;
    EXPECT_TRUE(verifier.Verify(reader.Shader())) << verifier.Message() << '\n' << source;
}

}  // namespace

std::string ByteCodeOf(const std::string& source, int level)
{
    Keep(source);
    SlcOptionsControl options;
    options.m_validateICode = true;
    SetOptimizationLevel(level, options);
    options.m_convertTmpVarDetail = false;  // as the driver has it for byte-code
    const CheckedShader checked(source, options);
    if (!checked.IsAccepted()) {
        ADD_FAILURE() << checked.Output() << source;
        return {};
    }
    SlcText text;
    bool written = false;
    testing::internal::CaptureStderr();
    try {
        SlcInterForm form(options);
        form.GenInterForm(checked.Root());
        form.Optimize();
        EXPECT_EQ(ICodeReadBackFault(*form.m_mainList), "") << source;
        SlcGenByteCode(form.m_errors, text).GenByteCode(form);
        written = form.m_errors->NoError();
    } catch (const SlcCompilationError&) {
        written = false;
    }
    const std::string reports = testing::internal::GetCapturedStderr();
    if (written) {
        ExpectVerified(text.Str(), source);
        return text.Str();
    }
    if (reports.find("does not fit into byte-code") == std::string::npos)
        ADD_FAILURE() << "refused by the generator: " << reports << source;
    return {};
}

RunOutcome RunShader(SqxMachine& machine, const std::string& byteCode)
{
    constexpr std::size_t points = 6;
    SqxScene scene;
    machine.SetSupport(&scene);
    RunOutcome outcome;
    if (!machine.LoadText(byteCode) || !machine.Run()) {
        outcome.fault = machine.Message();
        return outcome;
    }
    for (const std::string& name : OutputNames(machine.Shader()))
        outcome.outputs.push_back(ReadOutput(machine, name, points));
    outcome.text = scene.Printed();
    for (const std::string& report : scene.Reports())
        outcome.text += report + '\n';
    return outcome;
}

std::string ShapeDifference(const RunOutcome& first, const RunOutcome& second)
{
    if (first.fault != second.fault)
        return "fault '" + first.fault + "' and '" + second.fault + "'";
    if (first.text != second.text)
        return "text '" + first.text + "' and '" + second.text + "'";
    if (first.outputs.size() != second.outputs.size())
        return std::to_string(first.outputs.size()) + " and " +
               std::to_string(second.outputs.size()) + " outputs";
    for (std::size_t i = 0; i < first.outputs.size(); ++i) {
        const auto& a = first.outputs[i];
        const auto& b = second.outputs[i];
        if (a.name != b.name)
            return "outputs " + a.name + " and " + b.name;
        if (a.numbers.size() != b.numbers.size())
            return a.name + ": " + std::to_string(a.numbers.size()) + " and " +
                   std::to_string(b.numbers.size()) + " numbers";
    }
    return {};
}

std::string Difference(const RunOutcome& first, const RunOutcome& second)
{
    if (std::string difference = ShapeDifference(first, second); !difference.empty())
        return difference;
    for (std::size_t i = 0; i < first.outputs.size(); ++i) {
        const auto& a = first.outputs[i];
        const auto& b = second.outputs[i];
        for (std::size_t j = 0; j < a.numbers.size(); ++j)
            if (!IsClose(a.numbers[j], b.numbers[j]))
                return a.name + "[" + std::to_string(j) + "]: " + std::to_string(a.numbers[j]) +
                       " and " + std::to_string(b.numbers[j]);
    }
    return {};
}
