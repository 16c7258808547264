// Options that exclude each other are refused rather than one of them ignored: a script that asks
// for a section of the table has a mistake in it.
//
// Tested by tests/run/SqxDumpToolTest.cpp.

#include "sqxdump/SqxDumpOptions.h"

#include <string_view>

namespace {

// clang-format off
constexpr std::string_view k_description[] = {
    "Prints byte-code as text: its sections, then one instruction a line. With '--params' or '--json' it tells of each shader what its user has to know: its parameters with their default values, and what it does with lights, rays and predefined variables.",
    "Default values are computed, in a scene that knows nothing. For that a shared object is loaded, and so are shadeop libraries that stand in a folder of '-I': name only files that you trust.",
    "Of a damaged file it prints what stands in front of the fault.",
};

//   word             argument  effect
constexpr SqxOption k_options[] = {
    {"--params",      "",       "prints a table of the parameters and facts of each shader, also of shared objects"},
    {"--json",        "",       "prints the same as one JSON object a line, for each file"},
    {"--param",       "NAME",   "lists only this parameter; can be repeated"},
    {"--section",     "NAME",   "prints only the code of 'main' or of a parameter's initializer"},
    {"-I",            "DIR",    "searches DIR for the shadeop libraries that default values need"},
    {"-h, --help",    "",       "prints this text"},
};

constexpr SqxEntry k_files[] = {
    {"SHADER.sqx", "a compiled shader, byte-code or a shared object"},
    {"-", "standard input"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "all was printed"},
    {"1", "a file is damaged or cannot be read, or what was asked for is not in it"},
    {"2", "the command line makes no sense"},
};

constexpr SqxEntry k_examples[] = {
    {"sqxdump --params marble.sqx", "tells of the parameters of a shader"},
    {"sqxdump --json shaders/*.sqx > shaders.json", "the same of a library, for programs"},
    {"sqxdump --section main marble.sqx", "prints the instructions of its main block"},
};
// clang-format on

/// Walks over the words and takes the value of an option from its own word or the next one.
class Words {
public:
    explicit Words(std::span<const char* const> words) : m_rest(words) {}
    [[nodiscard]] bool Empty() const { return m_rest.empty(); }
    [[nodiscard]] std::string_view Take()
    {
        const std::string_view word = m_rest.front();
        m_rest = m_rest.subspan(1);
        return word;
    }
    [[nodiscard]] std::string TakeValue(std::string_view option, const char* what)
    {
        if (Empty() || *m_rest.front() == '\0')
            throw SqxDumpUsageError("Option '" + std::string(option) + "' needs " + what +
                                    " behind it");
        return std::string(Take());
    }

private:
    std::span<const char* const> m_rest;
};

void ReadOption(std::string_view word, Words& rest, SqxDumpOptions& options)
{
    if (word == "-h" || word == "--help")
        options.help = true;
    else if (word == "--params")
        options.form = SqxDumpOptions::Form::Table;
    else if (word == "--json")
        options.form = SqxDumpOptions::Form::Json;
    else if (word == "--param")
        options.parameters.push_back(rest.TakeValue(word, "the name of a parameter"));
    else if (word == "--section")
        options.section = rest.TakeValue(word, "the name of a section");
    else if (word == "-I")
        options.shadeopFolders.push_back(rest.TakeValue(word, "a folder"));
    else if (word.starts_with("-I"))
        options.shadeopFolders.emplace_back(word.substr(2));
    else
        throw SqxDumpUsageError("Unknown option '" + std::string(word) + "'");
}

void Complete(SqxDumpOptions& options)
{
    if (options.help)
        return;
    using Form = SqxDumpOptions::Form;
    if (options.files.empty())
        throw SqxDumpUsageError("No file is given");
    if (!options.parameters.empty() && options.form == Form::Code)
        options.form = Form::Table;
    if (!options.section.empty() && options.form != Form::Code)
        throw SqxDumpUsageError("A section is code, which is not listed with parameters");
}

}  // namespace

const SqxProgram& SqxDumpProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxdump",
        "tells what compiled shaders hold",
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

SqxDumpOptions SqxReadDumpOptions(std::span<const char* const> arguments)
{
    SqxDumpOptions options;
    Words rest(arguments);
    bool optionsEnd = false;
    while (!rest.Empty()) {
        const std::string_view word = rest.Take();
        if (!optionsEnd && word == "--")
            optionsEnd = true;
        else if (!optionsEnd && word.size() > 1 && word.starts_with('-'))
            ReadOption(word, rest, options);
        else
            options.files.emplace_back(word);
    }
    Complete(options);
    return options;
}
