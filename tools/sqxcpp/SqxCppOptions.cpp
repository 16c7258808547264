// The options are named as in C compilers, since makefiles use those names.
//
// Tested by tests/preprocessor.

#include "sqxcpp/SqxCppOptions.h"

#include "make/SqxMakeWord.h"

namespace {

// clang-format off
constexpr std::string_view k_description[] = {
    "Preprocesses a shader's source: includes files, replaces macros and takes out comments. The result has line markers, so that reports name the lines of the source. What no C program may hold, such as a lone apostrophe, passes through: the compiler reports it.",
    "The compiler does the same by itself. This program shows the result, or the files that a source is made of.",
};

//   word               argument     effect
constexpr SqxOption k_options[] = {
    {"-D",              "NAME",      "defines a macro as 1; '-DNAME=VALUE' gives it a value"},
    {"-U",              "NAME",      "takes the definition of a macro back"},
    {"-I",              "DIR",       "searches DIR for included files; can be repeated"},
    {"-o",              "FILE",      "writes FILE in place of standard output"},
    {"-M",              "",          "writes a rule for makefiles, which names all files that were read, in place of the text"},
    {"-MD",             "",          "writes the text, and the rule into a file: that of '-MF', or else SOURCE.d in the working directory"},
    {"-MF",             "FILE",      "writes the rule into FILE"},
    {"-MT",             "TARGET",    "the rule makes TARGET in place of SOURCE.sqx; can be repeated"},
    {"-MQ",             "TARGET",    "the same, with what makefiles read in another way escaped"},
    {"-w0, -w",         "",          "no warnings"},
    {"-w1",             "",          "the important warnings; the default"},
    {"-w2",             "",          "all warnings"},
    {"-h, --help",      "",          "prints this text"},
    {"--version",       "",          "prints the version"},
};

constexpr SqxEntry k_environment[] = {
    {"SOURCE_DATE_EPOCH", "the time for '__DATE__' and '__TIME__', in seconds since 1970, in place of that of now"},
};

constexpr SqxEntry k_files[] = {
    {"SOURCE.sl", "the source; '-' is standard input"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "the source is preprocessed"},
    {"1", "the source is at fault, or a file cannot be read or written"},
    {"2", "an option or an argument is invalid"},
};

constexpr SqxEntry k_examples[] = {
    {"sqxcpp -Iinclude marble.sl", "shows what the compiler reads"},
    {"sqxcpp -M -Iinclude marble.sl", "lists the files that the source is made of"},
};
// clang-format on

/// Returns false if the option does not concern the rule.
bool ReadRuleOption(SqxOptionWords& words, SqxCppOptions& options)
{
    using Rule = SqxCppOptions::Rule;
    if (words.Is("-M"))
        options.rule = Rule::Alone;
    else if (words.Is("-MD"))
        options.rule = Rule::Beside;
    else if (const auto file = words.Value("-MF", "a file"))
        options.ruleFile = *file;
    else if (const auto target = words.Value("-MT", "a target"))
        options.targets.push_back(*target);
    else if (const auto quoted = words.Value("-MQ", "a target"))
        options.targets.push_back(SqxMakeTarget(*quoted, SqxRuleReader::Make));
    else
        return false;
    return true;
}

void ReadOption(SqxOptionWords& words, SqxCppOptions& options)
{
    if (words.AsksFor(options.information))
        return;
    if (words.Is("-w0, -w"))
        options.warningLevel = 0;
    else if (words.Is("-w1"))
        options.warningLevel = 1;
    else if (words.Is("-w2"))
        options.warningLevel = 2;
    else if (ReadRuleOption(words, options))
        return;
    else if (const auto macro = words.Value("-D", "a macro"))
        options.preprocessor.macros.push_back({*macro, true});
    else if (const auto undefined = words.Value("-U", "a macro"))
        options.preprocessor.macros.push_back({*undefined, false});
    else if (const auto folder = words.Value("-I", "a folder"))
        options.preprocessor.folders.push_back(*folder);
    else if (const auto output = words.Value("-o", "a file"))
        options.output = *output;
    else
        words.RefuseWord();
}

}  // namespace

const SqxProgram& SqxCppProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxcpp",
        "preprocesses a shader",
        "[options] SOURCE.sl",
        k_description,
        k_options,
        k_environment,
        k_files,
        k_statuses,
        k_examples,
        "sl h",
    };
    return k_program;
}

SqxCppOptions SqxReadCppOptions(const std::vector<std::string>& arguments)
{
    SqxCppOptions options;
    const auto readSource = [&](const std::string& word) {
        if (!options.source.empty())
            throw SqxUsageError("There is more than one source");
        options.source = word;
    };
    SqxReadWords(
        arguments, [&](SqxOptionWords& words) { ReadOption(words, options); }, readSource);
    if (options.source.empty() && options.information == SqxInformation::None)
        throw SqxUsageError("No source is given");
    if (options.rule == SqxCppOptions::Rule::None &&
        !(options.ruleFile.empty() && options.targets.empty()))
        throw SqxUsageError("A file or a target for a rule needs '-M' or '-MD'");
    return options;
}
