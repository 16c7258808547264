// Prints compiled shaders as text.

#include <iostream>
#include <string_view>
#include <vector>

#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"

namespace {

constexpr const char* k_usage = "Usage: sqxdump [--params] file.sqx...\n"
                                "  --params  list only the kind of shader and its parameters\n";

/// False after a report.
bool DumpFile(const char* path, bool parametersOnly, bool withName)
{
    SqxReader reader;
    if (!reader.ReadFile(path)) {
        std::cerr << "sqxdump: " << path << ": " << reader.Message() << '\n';
        return false;
    }
    if (withName)
        std::cout << path << ":\n";
    const SqxShader& shader = reader.Shader();
    std::cout << (parametersOnly ? SqxDumpParameters(shader) : SqxDump(shader));
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    bool parametersOnly = false;
    std::vector<const char*> paths;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--params") {
            parametersOnly = true;
        } else if (argument == "-h" || argument == "--help") {
            std::cout << k_usage;
            return 0;
        } else if (argument.size() > 1 && argument.starts_with('-')) {
            std::cerr << "sqxdump: Unknown option " << argument << '\n' << k_usage;
            return 1;
        } else {
            paths.push_back(argv[i]);
        }
    }
    if (paths.empty()) {
        std::cerr << k_usage;
        return 1;
    }
    bool good = true;
    for (const char* path : paths)
        good = DumpFile(path, parametersOnly, paths.size() > 1) && good;
    if (!std::cout.flush()) {
        std::cerr << "sqxdump: Cannot write standard output\n";
        return 1;
    }
    return good ? 0 : 1;
}
