// A section together with a listing is refused, since a script that asks for both has a mistake. Of
// `--params` and `--json`, the last one counts.
//
// Tested by tests/run/SqxDumpToolTest.cpp.

#include "sqxdump/SqxDumpOptions.h"

#include <string_view>

namespace {

// clang-format off
constexpr std::string_view k_description[] = {
    "Prints byte-code as text: its sections, then one instruction per line. With '--params' or '--json' it prints the interface of each shader: its parameters with their default values, and what it does with lights, rays and predefined variables.",
    "Default values are computed, in a scene that knows nothing. No native code runs, unless '--load' allows it: for shadeop libraries whose functions default values call, and shared objects that do not say what they hold. Name only what you trust then.",
    "Of a damaged file it prints the part before the fault.",
};

//   word             argument  effect
constexpr SqxOption k_options[] = {
    {"--params",      "",       "prints a table of the parameters and facts of each shader, also of shared objects"},
    {"--json",        "",       "prints the same as one JSON object per file, each on one line"},
    {"--param",       "NAME",   "lists only this parameter; can be repeated"},
    {"--section",     "NAME",   "prints only the code of 'main' or of a parameter's initializer"},
    {"-I",            "DIR",    "searches DIR for the shadeop libraries that '--load' loads"},
    {"--load",        "",       "loads what runs code: shared objects of older compilers, and libraries that default values call"},
    {"-h, --help",    "",       "prints this text"},
    {"--version",     "",       "prints the version"},
};

constexpr SqxEntry k_files[] = {
    {"SHADER.sqx", "a compiled shader, byte-code or a shared object"},
    {"-", "standard input"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "all was printed"},
    {"1", "a file is damaged or cannot be read, or what was asked for is not in it"},
    {"2", "an option or an argument is invalid"},
};

constexpr SqxEntry k_examples[] = {
    {"sqxdump --params marble.sqx", "lists the parameters of a shader"},
    {"sqxdump --json shaders/*.sqx > shaders.json", "the same of a library, for programs"},
    {"sqxdump --section main marble.sqx", "prints the instructions of its main block"},
};
// clang-format on

void ReadOption(SqxOptionWords& words, SqxDumpOptions& options)
{
    if (words.AsksFor(options.information))
        return;
    if (words.Is("--params"))
        options.form = SqxDumpOptions::Form::Table;
    else if (words.Is("--json"))
        options.form = SqxDumpOptions::Form::Json;
    else if (const auto parameter = words.Value("--param", "the name of a parameter"))
        options.parameters.push_back(*parameter);
    else if (const auto section = words.Value("--section", "the name of a section"))
        options.section = *section;
    else if (const auto folder = words.Value("-I", "a folder"))
        options.shadeopFolders.push_back(*folder);
    else if (words.Is("--load"))
        options.load = true;
    else
        words.RefuseWord();
}

void Complete(SqxDumpOptions& options)
{
    if (options.information != SqxInformation::None)
        return;
    using Form = SqxDumpOptions::Form;
    if (options.files.empty())
        throw SqxUsageError("No file is given");
    if (!options.parameters.empty() && options.form == Form::Code)
        options.form = Form::Table;
    if (!options.section.empty() && options.form != Form::Code)
        throw SqxUsageError("A section is code, which is not listed with parameters");
}

}  // namespace

const SqxProgram& SqxDumpProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxdump",
        "shows the contents of compiled shaders",
        "[options] FILE.sqx...",
        k_description,
        k_options,
        {},
        k_files,
        k_statuses,
        k_examples,
        "sqx",
    };
    return k_program;
}

SqxDumpOptions SqxReadDumpOptions(const std::vector<std::string>& arguments)
{
    SqxDumpOptions options;
    SqxReadWords(
        arguments, [&](SqxOptionWords& words) { ReadOption(words, options); },
        [&](const std::string& word) { options.files.push_back(word); });
    Complete(options);
    return options;
}
