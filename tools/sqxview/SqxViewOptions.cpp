// The options are those of sqxshade, with some added and some removed. The reader of sqxshade calls
// back here before it reads an option itself.
//
// Tested by tests/sqxview/SqxViewOptionsTest.cpp.

#include "sqxview/SqxViewOptions.h"

#include <filesystem>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// Options of sqxshade that do not apply to a page: those for the written picture and shared
/// objects.
constexpr std::string_view k_refusedOptions[] = {"-o"sv, "--sheet"sv, "--dso"sv, "--linear"sv};

void RefuseOption(const SqxOptionWords& words)
{
    for (const std::string_view refused : k_refusedOptions)
        if (words.Is(refused) || (refused == "-o" && words.Word().starts_with("-o")))
            words.RefuseWord();
}

/// Reads an option that only this program has; returns false for any other word. Throws
/// `SqxUsageError` for a refused option of sqxshade.
bool ReadOwnOption(SqxOptionWords& words, SqxViewOptions& options)
{
    RefuseOption(words);
    constexpr int k_maxPort = 65535;
    constexpr int k_maxSeconds = 3600;
    if (const auto port = words.Value("--port", "a number"))
        options.port = SqxReadNumber(*port, k_maxPort, "port");
    else if (const auto seconds = words.Value("--time-limit", "a number"))
        options.timeLimit =
            std::chrono::seconds(SqxReadNumber(*seconds, k_maxSeconds, "time limit"));
    else if (words.Is("--open"))
        options.open = true;
    else if (words.Is("-w0, -w1, -w2"))
        options.warnings = words.Word();
    else
        return false;
    return true;
}

void CheckSources(const std::vector<SqxShadeOptions::Shader>& shaders)
{
    for (const SqxShadeOptions::Shader& shader : shaders)
        if (std::filesystem::path(shader.path).extension() != ".sl")
            throw SqxUsageError("'" + shader.path + "' is no source: its name must end in .sl");
}

}  // namespace

SqxViewOptions SqxReadViewOptions(const std::vector<std::string>& arguments)
{
    SqxViewOptions options;
    options.shade = SqxReadShadeOptions(
        arguments, [&options](SqxOptionWords& words) { return ReadOwnOption(words, options); });
    options.information = options.shade.information;
    if (options.information == SqxInformation::None)
        CheckSources(options.shade.shaders);
    return options;
}
