// Compiles the changed sources of a library of shaders, or one source for another program.

#include <iostream>

#include "sqxmake/SqxCompileStep.h"
#include "sqxmake/SqxMakeBuild.h"
#include "support/QxDebug.h"

int main(int argc, char** argv)
{
    try {
        const SqxMakeOptions options = SqxReadMakeOptions({argv + 1, argv + argc});
        if (options.information != SqxInformation::None)
            return SqxPrintInformation(SqxMakeProgram(), options.information);
        // Crash reports are optional, so the program goes on without them.
        static_cast<void>(QxDebug::InitErrorSignalsHandling());
        QxDebug::EnableRemoval();
        if (!options.compileFolder.empty())
            return SqxCompileForAnother(options);
        return options.step ? SqxCompileStep(options) : SqxMakeBuild(options);
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxmake: " << error.what() << "; '--help' lists all options\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "sqxmake: " << error.what() << '\n';
        return 1;
    }
}
