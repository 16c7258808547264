// The options select the stages: -E stops after the preprocessor, -c before the C++ compiler.
//
// Tested by tests/golden.

#include "driver/SlcMain.h"

#include <span>

#include "driver/SlcCommandLine.h"
#include "driver/SlcCompileSource.h"
#include "driver/SlcExternalCommands.h"
#include "support/QxDebug.h"
#include "support/SlcDiagnostics.h"

namespace {

int RunStages(SlcCommandLine& line, SlcRunFiles& files)
{
    if (!PreprocessSource(line, files))
        return 1;
    if (!line.m_runCompile)
        return 0;
    if (!CompileSource(line, files))
        return 1;
    if (!line.m_runCCBuild)
        return 0;
    if (line.m_compile.output == QxCompileOptions::Output::Cpp && !BuildSharedObject(line, files))
        return 1;
    return 0;
}

}  // namespace

int main_(int argumentCount, char** arguments)
{
    // Without the handlers a crash is not reported, but compilation works.
    static_cast<void>(QxDebug::InitErrorSignalsHandling());
    QxDebug::EnableRemoval();
    SlcCommandLine line;
    const std::span<const char* const> all(arguments, static_cast<std::size_t>(argumentCount));
    if (!ParseOptions(all.subspan(all.empty() ? 0 : 1), line))
        return 1;
    SlcRunFiles files;
    try {
        return RunStages(line, files);
    } catch (const SlcCompilationEnd& end) {
        KeepPreprocessedText(line, files);
        return end.status;
    }
}
