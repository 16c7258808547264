// Tested by tests/make/run.sh.

#include "sqxmake/SqxNameConflicts.h"

#include <iostream>

#include "sqxmake/SqxMakeState.h"
#include "sqxmake/SqxShaderName.h"

SqxNameConflicts SqxFindNameConflicts(const std::vector<SqxSource>& sources,
                                      const SqxMakeOptions& options)
{
    SqxNameConflicts makers;
    for (const SqxSource& source : sources)
        if (const auto name = SqxShaderName(SqxReadText(source.path).value_or("")))
            makers[((options.tree ? source.folder : "") / (*name + ".sqx")).lexically_normal()]
                .push_back(source.path);
    std::erase_if(makers, [](const auto& output) { return output.second.size() < 2; });
    return makers;
}

void SqxReportNameConflicts(const SqxNameConflicts& conflicts, const SqxMakeOptions& options)
{
    for (const auto& [output, sources] : conflicts) {
        std::cerr << "sqxmake: " << sources.size() << " sources make '" << output.string()
                  << "':\n";
        for (const std::filesystem::path& source : sources)
            std::cerr << "  " << source.string() << '\n';
    }
    if (!conflicts.empty() && !options.keepGoing)
        std::cerr << "sqxmake: Nothing was built"
                  << (options.tree ? "" : "; '--tree' mirrors the folders of the sources")
                  << "; '-k' builds the other shaders\n";
}
