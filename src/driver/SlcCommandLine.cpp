// An argument that is not an option of the table in SlcOptionRows.cpp is the input file or a fault.
//
// Tested by tests/driver/SlcCommandLineTest.cpp.

#include "driver/SlcCommandLine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>

#include "driver/SlcDefaultCommands.h"
#include "driver/SlcOptionRows.h"
#include "driver/SlcProgramName.h"
#include "support/QxVersion.h"
#include "support/SlcDiagnostics.h"

namespace {

constexpr std::string_view k_sourceExtension = ".sl";

[[nodiscard]] bool Fail(std::string_view message)
{
    SeverError(k_programName, message);
    return false;
}

void PrintVersion()
{
    const std::unique_ptr<char, decltype(&std::free)> version(QxGetVersionString(), &std::free);
    std::printf("shaderqx version %s.\n", version.get());
    std::printf("%s\n", QxGetCopyrightString());
}

/// True if the file can be opened for reading. False for a directory, which can also be opened but
/// is not a source.
[[nodiscard]] bool IsReadableFile(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return false;
    std::FILE* file = std::fopen(path.c_str(), "r");
    if (!file)
        return false;
    static_cast<void>(std::fclose(file));
    return true;
}

[[nodiscard]] bool SetInputFile(SlcCommandLine& line, std::string_view path)
{
    if (!line.m_inputFile.empty())
        return Fail("Cannot provide multiple input files.");
    line.m_inputFile = path;
    if (!path.ends_with(k_sourceExtension))
        return Fail("Input file provided doesn't ends with the '.sl' extension: " +
                    line.m_inputFile);
    if (!IsReadableFile(line.m_inputFile))
        return Fail("File '" + line.m_inputFile + "' doesn't seem to exist.");
    return true;
}

[[nodiscard]] bool ParseArgument(SlcCommandLine& line, SlcArgumentList& arguments)
{
    const std::string_view argument = arguments.Front();
    const SlcOptionResult result = SlcReadOption(line, arguments);
    if (result != SlcOptionResult::NoOption)
        return result == SlcOptionResult::Done;
    if (argument.starts_with('-'))
        return Fail("Invalid option: " + std::string(argument));
    return SetInputFile(line, argument);
}

/// Prints the information that the argument requests. False if it requests none.
[[nodiscard]] bool PrintInformation(std::string_view argument)
{
    if (argument == "-h" || argument == "--help")
        PrintUsage();
    else if (argument == "-v" || argument == "--version")
        PrintVersion();
    else
        return false;
    return true;
}

void ReadEnvironment(SlcCommandLine& line)
{
    const char* preprocessCommand = std::getenv("SLC_CPP_COMMAND");
    const char* ccCommand = std::getenv("SLC_CC_COMMAND");
    if (preprocessCommand)
        line.m_preprocessCommand = preprocessCommand;
    line.m_ccCommand = ccCommand ? ccCommand : DefaultCCCommand();
    const char* advice = std::getenv("SLC_ADVICE");
    line.m_compile.showsAdvice = advice && std::string_view(advice) == "1";
    if (const char* librariesFile = std::getenv("SLC_SHADEOP_LIBRARIES"))
        line.m_librariesFile = librariesFile;
    if (!preprocessCommand)
        SevereWarning(k_programName, "'SLC_CPP_COMMAND' environment variable dosen't seems to "
                                     "exist. Will use '" +
                                         DefaultPreprocessCommand() +
                                         "' has command for preprocessing.");
    if (!ccCommand)
        SevereWarning(k_programName, "'SLC_CC_COMMAND' environment variable dosen't seems to "
                                     "exist. Will use '" +
                                         line.m_ccCommand + "' has command for C++ compiling .");
}

}  // namespace

std::string SlcCommandLine::PreprocessorOptions() const
{
    std::string options;
    for (const std::string& argument : m_preprocessorArguments)
        options += argument + ' ';
    return options;
}

bool ParseOptions(std::span<const char* const> arguments, SlcCommandLine& line)
{
    line = SlcCommandLine();
    if (arguments.size() == 1 && PrintInformation(arguments.front()))
        return false;

    for (SlcArgumentList rest(arguments); !rest.Empty(); rest.Pop())
        if (!ParseArgument(line, rest))
            return false;
    if (line.m_inputFile.empty())
        return Fail("No input file has been provided.");

    const std::size_t stemLength = line.m_inputFile.size() - k_sourceExtension.size();
    line.m_preprocessedFile = line.m_inputFile.substr(0, stemLength) + ".i";
    ReadEnvironment(line);
    return true;
}

void PrintUsage()
{
    std::printf("Usage: %.*s [options] source_file\n\nOptions: \n",
                static_cast<int>(k_programName.size()), k_programName.data());
    for (const SlcOptionRow& row : SlcOptionRows())
        std::printf("%.*s\n", static_cast<int>(row.usage.size()), row.usage.data());
    std::printf("\n");
}
