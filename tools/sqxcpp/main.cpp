// Preprocesses a source like the compiler, but without the macros that it predefines. Writes
// the text, so that users can inspect it, a rule for makefiles that lists the files that were read,
// or both.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "make/SqxMakeWord.h"
#include "preprocessor/SlcPreprocessor.h"
#include "sqxcpp/SqxCppOptions.h"

namespace {

using Rule = SqxCppOptions::Rule;

/// Returns false, after a report, if the text cannot be written.
bool Write(const std::string& path, const std::string& text)
{
    if (path.empty()) {
        std::cout << text << std::flush;
        if (!std::cout)
            std::cerr << "sqxcpp: Cannot write standard output\n";
        return static_cast<bool>(std::cout);
    }
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        std::cerr << "sqxcpp: Cannot write '" << path << "'\n";
    return !file.fail();
}

std::string RuleText(const SqxCppOptions& options, const SlcPreprocessed& result)
{
    std::vector<std::string> targets = options.targets;
    if (targets.empty())
        targets = {SqxMakeTarget(std::filesystem::path(options.source).stem().string() + ".sqx",
                                 SqxRuleReader::Make)};
    return SqxMakeRule(targets, result.files, SqxRuleReader::Make);
}

/// Returns false, after a report, if the rule cannot be written.
bool WriteRule(const std::string& path, const SqxCppOptions& options, const SlcPreprocessed& result)
{
    for (const std::string& file : result.files)
        if (SqxHasLineBreak(file)) {
            std::cerr << "sqxcpp: No rule can name a file with a line break: '" << file << "'\n";
            return false;
        }
    return Write(path, RuleText(options, result));
}

SlcPreprocessed Preprocess(const SqxCppOptions& options)
{
    SlcReportPrinter printer([](std::string_view text) { std::cerr << text << std::flush; },
                             options.warningLevel);
    SlcPreprocessorOptions wanted = options.preprocessor;
    wanted.report = [&](const SlcPreprocessorReport& report) { printer.Print(report); };
    if (options.source != "-")
        return SlcPreprocess(options.source, wanted);
    return SlcPreprocessText("<stdin>", {std::istreambuf_iterator<char>(std::cin), {}}, wanted);
}

/// Writes the text, the rule, or both. If the source has errors, writes no rule, since builds would
/// treat it as complete; the text, which may then be incomplete, is written unless only the rule is
/// requested. Returns false after an error.
bool Run(const SqxCppOptions& options)
{
    const SlcPreprocessed result = Preprocess(options);
    if (options.rule == Rule::Alone) {
        const std::string& file = options.ruleFile.empty() ? options.output : options.ruleFile;
        return result.succeeded && WriteRule(file, options, result);
    }
    const bool isWritten = Write(options.output, result.text);
    if (!isWritten || !result.succeeded || options.rule == Rule::None)
        return isWritten && result.succeeded;
    const std::string besides = std::filesystem::path(options.source).stem().string() + ".d";
    return WriteRule(options.ruleFile.empty() ? besides : options.ruleFile, options, result);
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        const SqxCppOptions options = SqxReadCppOptions({argv + 1, argv + argc});
        if (options.information != SqxInformation::None)
            return SqxPrintInformation(SqxCppProgram(), options.information);
        return Run(options) ? 0 : 1;
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxcpp: " << error.what() << "; '--help' lists all options\n";
        return 2;
    }
}
