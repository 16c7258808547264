// Prints compiled shaders: their code as text, or the facts that their users need.

#include <iostream>
#include <string>
#include <string_view>

#include "QxHostError.h"
#include "sqx/SqxDump.h"
#include "sqx/SqxReader.h"
#include "sqxdump/SqxCompiledFile.h"
#include "sqxdump/SqxDumpOptions.h"
#include "sqxdump/SqxListing.h"

namespace {

using Form = SqxDumpOptions::Form;

bool Report(const std::string& file, std::string_view fault)
{
    std::cout.flush();
    std::cerr << "sqxdump: " << file << ": " << fault << '\n';
    return false;
}

/// Prints the code of one file. Like all functions here that return `bool`, reports errors itself
/// and then returns false.
bool PrintCode(const std::string& file, const SqxCompiledFile& compiled,
               const SqxDumpOptions& options)
{
    if (compiled.IsSharedObject())
        return Report(file, "A shared object has no byte-code; '--params' lists its interface");
    SqxReader reader;
    const bool isWhole = reader.Read(compiled.Bytes());
    const SqxShader& shader = reader.Shader();
    if (options.files.size() > 1 && shader.reached != SqxSection::None)
        std::cout << file << ":\n";
    if (options.section.empty()) {
        std::cout << SqxDump(shader);
    } else {
        const std::string text = SqxDumpSection(shader, options.section);
        if (text.empty() && isWhole)
            return Report(file, "There is no section " + options.section);
        std::cout << text;
    }
    return isWhole || Report(file, reader.Message());
}

bool HasWanted(const std::string& file, const SqxShaderFacts& facts,
               const std::vector<std::string>& wanted)
{
    bool good = true;
    for (const std::string& name : wanted)
        if (SqxWantedParameters(facts, {name}).empty())
            good = Report(file, "There is no parameter " + name);
    return good;
}

SqxShaderFacts FactsOf(const std::string& file, SqxCompiledFile& compiled,
                       const SqxDumpOptions& options)
{
    const SqxTrustedFolders folders =
        options.load ? SqxTrustedFolders(options.shadeopFolders) : std::nullopt;
    if (!compiled.IsSharedObject())
        return SqxByteCodeFacts(compiled.Bytes(), file, folders);
    if (auto stored = SqxStoredFacts(compiled.Bytes(), file, folders))
        return *std::move(stored);
    if (!options.load)
        throw QxHostError("This shared object does not say what it holds; '--load' loads it, which "
                          "runs its code");
    return SqxSharedObjectFacts(compiled.PathToLoad(), options.shadeopFolders);
}

bool PrintListing(const std::string& file, SqxCompiledFile& compiled, const SqxDumpOptions& options)
{
    const SqxListed listed = {file, compiled.ShaderName(), FactsOf(file, compiled, options)};
    if (options.form == Form::Json) {
        std::cout << SqxListingJson(listed, options.parameters);
    } else {
        if (options.files.size() > 1 && !listed.facts.type.empty())
            std::cout << (file == options.files.front() ? "" : "\n") << file << ":\n";
        std::cout << SqxListingText(listed, options.parameters);
    }
    if (listed.facts.fault)
        return Report(file, listed.facts.fault->message);
    const bool known = listed.facts.defaultsFault.empty() ||
                       Report(file, "Default values are not known: " + listed.facts.defaultsFault);
    return HasWanted(file, listed.facts, options.parameters) && known;
}

bool PrintFile(const std::string& file, const SqxDumpOptions& options)
{
    try {
        SqxCompiledFile compiled(file);
        return options.form == Form::Code ? PrintCode(file, compiled, options)
                                          : PrintListing(file, compiled, options);
    } catch (const QxHostError& error) {
        return Report(file, error.what());
    }
}

int Run(const SqxDumpOptions& options)
{
    if (options.information != SqxInformation::None)
        return SqxPrintInformation(SqxDumpProgram(), options.information);
    bool good = true;
    for (const std::string& file : options.files)
        good = PrintFile(file, options) && good;
    if (std::cout.flush())
        return good ? 0 : 1;
    std::cerr << "sqxdump: Cannot write standard output\n";
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(SqxReadDumpOptions({argv + 1, argv + argc}));
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxdump: " << error.what() << "; '--help' lists all options\n";
        return 2;
    }
}
