// Prints compiled shaders as text.

#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"

namespace {

constexpr const char* k_usage =
    "Usage: sqxdump [--params | --section NAME] file.sqx...\n"
    "  --params        list only the kind of shader and its parameters\n"
    "  --section NAME  print only the code of main or of a parameter's initializer\n";

struct Options {
    bool parametersOnly = false;
    std::string_view section;  // empty: all
    std::vector<const char*> paths;
};

bool Report(const char* path, std::string_view fault)
{
    std::cerr << "sqxdump: " << path << ": " << fault << '\n';
    return false;
}

/// False after a report. Of a damaged file this prints what stands in front of the fault.
bool DumpFile(const char* path, const Options& options)
{
    SqxReader reader;
    const bool isWhole = reader.ReadFile(path);
    const SqxShader& shader = reader.Shader();
    if (options.paths.size() > 1 && shader.reached != SqxSection::None)
        std::cout << path << ":\n";
    if (options.parametersOnly && shader.reached >= SqxSection::Variables) {
        std::cout << SqxDumpParameters(shader);
    } else if (!options.section.empty()) {
        const std::string text = SqxDumpSection(shader, options.section);
        if (text.empty() && isWhole)
            return Report(path, "There is no section " + std::string(options.section));
        std::cout << text;
    } else if (!options.parametersOnly) {
        std::cout << SqxDump(shader);
    }
    return isWhole || Report(path, reader.Message());
}

/// What to end with at once; nothing if there are files to print.
std::optional<int> ReadArguments(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--params") {
            options.parametersOnly = true;
        } else if (argument == "--section" && i + 1 < argc) {
            options.section = argv[++i];
        } else if (argument == "-h" || argument == "--help") {
            std::cout << k_usage;
            return 0;
        } else if (argument.size() > 1 && argument.starts_with('-')) {
            std::cerr << "sqxdump: Unknown option " << argument << '\n' << k_usage;
            return 1;
        } else {
            options.paths.push_back(argv[i]);
        }
    }
    if (!options.paths.empty())
        return std::nullopt;
    std::cerr << k_usage;
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    Options options;
    if (const auto status = ReadArguments(argc, argv, options))
        return *status;
    bool good = true;
    for (const char* path : options.paths)
        good = DumpFile(path, options) && good;
    if (!std::cout.flush()) {
        std::cerr << "sqxdump: Cannot write standard output\n";
        return 1;
    }
    return good ? 0 : 1;
}
