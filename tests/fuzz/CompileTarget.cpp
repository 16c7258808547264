// Compiles a source in memory with the compiler's library, to both outputs.
//
// A digit from 0 to 7 before the text selects the optimization level (the digit modulo 4) and, from
// 4 on, the strict rules. No shader begins with a digit.

#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "compiler/QxCompiler.h"
#include "fuzz/FuzzTarget.h"

namespace {

using Severity = QxCompileReport::Severity;

QxCompileOptions Options(char digit, QxCompileOptions::Output output)
{
    QxCompileOptions options;
    const int choice = digit - '0';
    options.optimizationLevel = choice % 4;
    options.isStrict = choice >= 4;
    options.output = output;
    options.warningLevel = 2;
    // Each included file is empty, so that no source of this machine is read.
    options.readFile = [](const std::string&) { return std::optional(std::string()); };
    return options;
}

void Check(const QxCompileResult& result)
{
    const bool hasError =
        std::any_of(result.reports.begin(), result.reports.end(),
                    [](const auto& report) { return report.severity == Severity::Error; });
    if (result.failure == QxCompileResult::Failure::Compiler)
        FuzzFault("fatal: " + result.messages);
    if (result.succeeded && hasError)
        FuzzFault("accepted with errors: " + result.messages);
    if (!result.succeeded && !hasError)
        FuzzFault("refused without an error: " + result.messages);
    if (result.succeeded == result.output.empty())
        FuzzFault("an output of a refused source, or none of an accepted one");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    char digit = '2';
    if (!text.empty() && text.front() >= '0' && text.front() <= '7') {
        digit = text.front();
        text.remove_prefix(1);
    }
    for (const auto output : {QxCompileOptions::Output::ByteCode, QxCompileOptions::Output::Cpp})
        try {
            Check(QxCompileText("a.sl", std::string(text), Options(digit, output)));
        } catch (const std::exception& fault) {
            FuzzFault(std::string("uncaught ") + fault.what());
        }
    return 0;
}
