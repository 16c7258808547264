// Writes manual pages and command line completion of all programs of this build into a folder.

#include <fstream>
#include <iostream>

#include "manual/ShaderqxProgram.h"
#include "manual/SqxManualPage.h"
#include "manual/SqxShellCompletion.h"
#include "sqxcpp/SqxCppOptions.h"
#include "sqxdump/SqxDumpOptions.h"
#include "sqxmake/SqxMakeOptions.h"
#ifdef SLC_HAS_SQXSHADE
#include "sqxshade/SqxShadeOptions.h"
#endif
#include "sqxls/SqxLsProgram.h"
#include "sqxview/SqxViewProgram.h"

namespace {

/// Returns false, after a report, if the file cannot be written.
bool WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream file(path);
    file << text;
    file.close();
    if (!file)
        std::cerr << "sqxmanual: Cannot write '" << path << "'\n";
    return !file.fail();
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: sqxmanual DIR\n";
        return 2;
    }
    const SqxProgram* const programs[] = {
        &ShaderqxProgram(), &SqxCppProgram(), &SqxDumpProgram(), &SqxMakeProgram(),
#ifdef SLC_HAS_SQXSHADE
        &SqxShadeProgram(),
#endif
#ifdef SLC_HAS_SQXVIEW
        &SqxViewProgram(),
#endif
#ifdef SLC_HAS_SQXLS
        &SqxLsProgram(),
#endif
    };
    const std::string folder = argv[1];
    bool good = WriteFile(folder + "/shaderqx.bash", SqxBashCompletion(programs));
    good = WriteFile(folder + "/_shaderqx", SqxZshCompletion(programs)) && good;
    for (const SqxProgram* program : programs)
        good = WriteFile(folder + "/" + std::string(program->name) + ".1",
                         SqxManualPage(*program, programs)) &&
               WriteFile(folder + "/" + std::string(program->name) + ".fish",
                         SqxFishCompletion(*program)) &&
               good;
    return good ? 0 : 1;
}
