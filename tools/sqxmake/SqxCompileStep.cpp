// The compiler leaves its files beside the source and in the working directory, under the shader's
// name. So each step gives it a folder of its own, in which a link stands for the source, and takes
// the one `.sqx` file from there. Only the preprocessor runs in the user's working directory, on
// the source itself: names in reports are then those that the user wrote.
//
// Its command gets the names through shell variables which the default command does not quote. With
// the line break as only separator, blanks in them do no harm.

#include "sqxmake/SqxCompileStep.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "driver/SlcDefaultCommands.h"
#include "process/SqxProcess.h"
#include "sqxmake/SqxMakeState.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view k_linkStem = "source";

/// Text of a makefile: the blanks, and what has a meaning there, escaped.
[[nodiscard]] std::string MakeWord(const std::string& path)
{
    std::string escaped;
    for (const char c : path) {
        if (c == ' ' || c == '#')
            escaped += '\\';
        if (c == '$')
            escaped += '$';
        escaped += c;
    }
    return escaped;
}

class CompileStep {
public:
    explicit CompileStep(const SqxMakeOptions& options)
        : m_options(options),
          m_state(fs::absolute(options.stateFolder)),
          m_source(options.inputs.front()),
          m_id(SqxMakeState::IdOf(m_source)),
          m_work(m_state.WorkOf(m_id)),
          m_dependencies(options.stamp.string() + ".d"),
          m_ownCommand(std::getenv("SLC_CPP_COMMAND"))
    {
    }

    [[nodiscard]] int Run()
    {
        Prepare();
        const int status = Compile();
        ShowMessages();
        const bool taken = status == 0 && TakeOutput();
        if (!taken)
            Refuse();
        fs::remove_all(m_work);
        return taken ? 0 : 1;
    }

private:
    void Prepare() const
    {
        m_state.Create();
        std::error_code failed;
        fs::create_directories(m_options.outputFolder, failed);
        if (!failed)
            fs::remove_all(m_work, failed);
        if (!failed)
            fs::create_directory(m_work, failed);
        if (!failed)
            fs::create_symlink(fs::absolute(m_source), m_work / Link(), failed);
        if (failed)
            throw SqxMakeError("Cannot work in '" + m_work.string() + "': " + failed.message());
        fs::remove(m_state.FailureOf(m_id));
    }

    [[nodiscard]] static std::string Link() { return std::string(k_linkStem) + ".sl"; }

    /// The options for the preprocessor, each followed by `separator`.
    [[nodiscard]] std::string PreprocessorOptions(const std::string& separator) const
    {
        std::string text;
        for (const std::string& option : m_options.compilerOptions)
            if (option.starts_with("-I") || option.starts_with("-D"))
                text += option + separator;
        return text;
    }

    [[nodiscard]] std::string PreprocessCommand() const
    {
        const std::string start = "cd " + SqxShellWord(fs::current_path().string()) +
                                  " || exit; input_file=" + SqxShellWord(m_source.string());
        if (m_ownCommand)
            return start + "; cpp_options=" + SqxShellWord(PreprocessorOptions(" ")) + "; " +
                   m_ownCommand;
        const std::string options = PreprocessorOptions("\n") + "-MD\n-MQ\n" +
                                    m_options.stamp.string() + "\n-MF\n" + m_dependencies.string();
        return start + "; cpp_options=" + SqxShellWord(options) + "; set -f; IFS='\n'; " +
               DefaultPreprocessCommand();
    }

    [[nodiscard]] int Compile() const
    {
        SqxCommand command;
        command.words = {SqxProgramBeside("shaderqx").string()};
        if (access(command.words[0].c_str(), X_OK) != 0)
            throw SqxMakeError("There is no compiler '" + command.words[0] + "'");
        // Shadeop libraries of the working directory come first, as without this program.
        command.words.push_back("-I" + fs::current_path().string());
        for (const std::string& option : m_options.compilerOptions)
            command.words.push_back(
                option.starts_with("-I") ? "-I" + fs::absolute(option.substr(2)).string() : option);
        command.words.insert(command.words.end(), {"--keep-cpp-file", m_work / Link()});
        command.folder = m_work;
        command.output = m_work / "messages";
        const char* ownCC = std::getenv("SLC_CC_COMMAND");
        command.variables = {{"SLC_CPP_COMMAND", PreprocessCommand()},
                             {"SLC_CC_COMMAND", ownCC ? ownCC : DefaultCCCommand()}};
        const int status = SqxRunCommand(command);
        if (status == 0 && m_ownCommand)
            WriteDependenciesFromMarkers();
        return status;
    }

    /// The preprocessed file tells in line markers which files it was made of.
    void WriteDependenciesFromMarkers() const
    {
        std::set<std::string> files = {m_source.string()};
        std::ifstream preprocessed(m_work / (std::string(k_linkStem) + ".i"));
        for (std::string line; std::getline(preprocessed, line);) {
            const std::size_t first = line.find('"');
            const std::size_t last = line.rfind('"');
            if (line.starts_with('#') && first < last && line[first + 1] != '<')
                files.insert(line.substr(first + 1, last - first - 1));
        }
        std::string text = MakeWord(m_options.stamp.string()) + ":";
        for (const std::string& file : files)
            if (fs::is_regular_file(file))
                text += " \\\n " + MakeWord(file);
        SqxWriteText(m_dependencies, text + "\n");
    }

    /// The closing line of a refusal names the input, which is our link.
    void ShowMessages() const
    {
        const std::string head = "Compilation of ";
        const std::string own = head + m_work.string();
        std::ifstream messages(m_work / "messages");
        for (std::string line; std::getline(messages, line);) {
            const std::size_t tail = line.find(" aborted due to errors: ");
            const bool closing = line.starts_with(head) && tail != std::string::npos;
            std::cerr << (closing ? head + m_source.string() + line.substr(tail) : line) << '\n';
        }
        std::cerr.flush();
    }

    [[nodiscard]] fs::path CompiledFile() const
    {
        for (const auto& entry : fs::directory_iterator(m_work))
            if (entry.path().extension() == ".sqx")
                return entry.path();
        throw SqxMakeError("The compiler left no '.sqx' file for '" + m_source.string() + "'");
    }

    /// False after a report.
    [[nodiscard]] bool TakeOutput() const
    {
        const fs::path compiled = CompiledFile();
        const std::string name = compiled.filename().string();
        const std::string source = fs::absolute(m_source).lexically_normal().string();
        if (const auto owner = m_state.Claim(name, source)) {
            std::cerr << "sqxmake: '" << m_source.string() << "' and '" << *owner << "' both make '"
                      << name << "'\n";
            return false;
        }
        const auto known = SqxMakeState::ReadStamp(m_options.stamp);
        if (known && known->output != name)
            m_state.Discard(m_options.stamp, m_options.outputFolder);
        const fs::path target = m_options.outputFolder / name;
        const auto before = SqxReadText(target);
        if (!before || *before != SqxReadText(compiled)) {
            std::error_code failed;
            fs::rename(compiled, target, failed);
            if (failed)
                fs::copy_file(compiled, target, fs::copy_options::overwrite_existing);
        }
        SqxMakeState::WriteStamp(m_options.stamp, {source, name});
        return true;
    }

    void Refuse() const
    {
        m_state.Discard(m_options.stamp, m_options.outputFolder);
        SqxWriteText(m_state.FailureOf(m_id), m_source.string() + "\n");
    }

    const SqxMakeOptions& m_options;
    SqxMakeState m_state;
    fs::path m_source;
    std::string m_id;
    fs::path m_work;
    fs::path m_dependencies;
    const char* m_ownCommand;  // in place of the default preprocess command
};

}  // namespace

int SqxCompileStep(const SqxMakeOptions& options)
{
    return CompileStep(options).Run();
}
