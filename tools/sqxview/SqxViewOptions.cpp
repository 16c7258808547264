// The program's own options are taken out here; the rest is a command line of sqxshade and read as
// such.

#include "sqxview/SqxViewOptions.h"

#include <charconv>
#include <filesystem>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// Where a picture alone is wanted, and what would be no source.
constexpr std::string_view k_refusedOptions[] = {"-o"sv, "--sheet"sv, "--dso"sv, "--linear"sv};

int ReadNumber(const std::string& text, int most, const std::string& what)
{
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc() || rest != end || number < 1 || number > most)
        throw SqxViewUsageError("The " + what + " must be from 1 to " + std::to_string(most) +
                                ", but is '" + text + "'");
    return number;
}

/// What stands behind an option, glued to it or in the next word. Nothing if the word is another.
class Reader {
public:
    explicit Reader(std::span<const char* const> words) : m_rest(words) {}
    [[nodiscard]] bool Next(std::string& word)
    {
        if (m_rest.empty())
            return false;
        word = m_rest.front();
        m_rest = m_rest.subspan(1);
        return true;
    }
    [[nodiscard]] bool Value(const std::string& word, const std::string& option, std::string& value)
    {
        if (word.starts_with(option + "=")) {
            value = word.substr(option.size() + 1);
            return true;
        }
        if (word != option)
            return false;
        if (!Next(value))
            throw SqxViewUsageError("Option '" + option + "' needs a number behind it");
        return true;
    }

private:
    std::span<const char* const> m_rest;
};

void RefuseOption(const std::string& word)
{
    for (const std::string_view refused : k_refusedOptions)
        if (word == refused || (refused == "-o" && word.starts_with("-o")))
            throw SqxViewUsageError("Unknown option '" + word + "'");
}

/// True if the word is an option of this program alone.
bool ReadOwnOption(const std::string& word, Reader& reader, SqxViewOptions& options)
{
    constexpr int k_maxPort = 65535;
    constexpr int k_maxSeconds = 3600;
    std::string value;
    if (reader.Value(word, "--port", value))
        options.port = ReadNumber(value, k_maxPort, "port");
    else if (reader.Value(word, "--time-limit", value))
        options.timeLimit = std::chrono::seconds(ReadNumber(value, k_maxSeconds, "time limit"));
    else if (word == "--open")
        options.open = true;
    else if (word == "-w0" || word == "-w1" || word == "-w2")
        options.warnings = word;
    else
        return false;
    return true;
}

void CheckSources(const std::vector<SqxShadeOptions::Shader>& shaders)
{
    for (const SqxShadeOptions::Shader& shader : shaders)
        if (std::filesystem::path(shader.path).extension() != ".sl")
            throw SqxViewUsageError("'" + shader.path + "' is no source: its name must end in .sl");
}

}  // namespace

SqxViewOptions SqxReadViewOptions(std::span<const char* const> arguments)
{
    SqxViewOptions options;
    Reader reader(arguments);
    std::vector<std::string> others;
    for (std::string word; reader.Next(word);) {
        RefuseOption(word);
        if (!ReadOwnOption(word, reader, options))
            others.push_back(word);
    }
    try {
        options.shade = SqxReadShadeOptions(others);
    } catch (const SqxPictureError& error) {
        throw SqxViewUsageError(error.what());
    }
    options.help = options.shade.help;
    if (!options.help)
        CheckSources(options.shade.shaders);
    return options;
}
