// Loads, verifies and runs a byte-code file with any contents.

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QxHostError.h"
#include "fuzz/FuzzTarget.h"
#include "host/QxByteCodeShader.h"
#include "host/QxHost.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"

namespace {

constexpr std::size_t k_stepLimit = 3000;
constexpr std::size_t k_memoryLimit = std::size_t{1} << 30;
constexpr unsigned int k_lights = 2;

/// Lights the points and answers all messages. Discards what a shader prints; other queries get the
/// neutral answers of the base class.
class FuzzScene : public QxShaderSupport {
public:
    void EvaluateLights(const QxVector3*, unsigned int points, QxLightInput* lights,
                        unsigned int count) override
    {
        for (unsigned int k = 0; k < count; ++k) {
            std::fill_n(lights[k].L, points, QxVector3{0, 1, -1});
            std::fill_n(lights[k].Cl, points, QxRGBColor{1, 1, 1});
            std::fill_n(lights[k].Ol, points, QxRGBColor{1, 1, 1});
        }
    }
    bool Message(QxMessage, const char*, const char*, const QxMessageValue& value) override
    {
        const std::vector<float> numbers(value.length * QxFloatCount(value.type), 0.5F);
        const std::vector<const char*> texts(value.length, "text");
        const bool isText = value.type == QxValueType::String;
        value.Store(isText ? static_cast<const void*>(texts.data()) : numbers.data());
        return true;
    }
    void Print(const char*) override {}
    void Report(const char*) override {}
};

/// Runs twice, since a run leaves state for the next one, and then reads all parameters.
void Shade(QxShaderInstance& instance, unsigned int columns, unsigned int rows)
{
    FuzzScene scene;
    QxHostGrid grid(columns, rows);
    for (int run = 0; run < 2; ++run)
        instance.Run(grid, scene, k_lights);
    for (const QxShader::Parameter& parameter : instance.Shader().Parameters())
        static_cast<void>(instance.Get(parameter.name));
}

void Run(std::string_view text, QxKernelChoice kernels)
{
    try {
        QxHostSpaces spaces;
        QxShaderInstance instance(std::make_shared<const QxByteCodeShader>(
                                      text, "fuzz", std::vector<std::string>(), kernels),
                                  spaces);
        instance.SetStepLimit(k_stepLimit);
        instance.SetMemoryLimit(k_memoryLimit);
        Shade(instance, 3, 2);
        Shade(instance, 1, 1);     // a grid of one point is a special case
        if (text.size() % 8 == 0)  // more than one strip of the machine
            Shade(instance, 20, 15);
    } catch (const QxHostError& error) {
        if (*error.what() == '\0')
            FuzzFault("refused without a message");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    SqxReader reader;
    if (reader.Read(text) == !reader.Message().empty())
        FuzzFault("refused without a message, or read with one: " + reader.Message());
    static_cast<void>(SqxDump(reader.Shader()));
    // The input selects the kernel set, so that running it again uses the same set.
    const bool baseline = size % 2 == 0 || !QxMachineProgram::HasAvx2();
    Run(text, baseline ? QxKernelChoice::Baseline : QxKernelChoice::Avx2);
    return 0;
}
