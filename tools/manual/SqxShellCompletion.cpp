// The completion files call only functions that come with the shells: not every system has the
// library of completion functions for bash.
//
// Tested by tests/manual/run.sh, with the shells that are installed.

#include "manual/SqxShellCompletion.h"

#include <algorithm>
#include <vector>

namespace {

/// Returns the spellings of all options, separated by blanks, without the argument that -I and -D
/// have in the same word.
[[nodiscard]] std::string OptionWords(std::span<const SqxOption> options)
{
    std::string text;
    for (const SqxOption& option : options)
        for (std::string_view word : SqxSpellings(option.word)) {
            if (word.starts_with("-I") || word.starts_with("-D"))
                word = word.substr(0, 2);
            text.append(text.empty() ? "" : " ").append(word);
        }
    return text;
}

/// Returns the options whose value, the next word, is a folder, with bars between them.
[[nodiscard]] std::string FolderOptions(std::span<const SqxOption> options)
{
    std::string text;
    for (const SqxOption& option : options)
        if (option.argument == "DIR")
            text += (text.empty() ? "" : "|") + std::string(option.word);
    return text;
}

/// Returns `text` with a backslash before each of the characters.
[[nodiscard]] std::string WithBackslashes(std::string_view text, std::string_view characters)
{
    std::string escaped;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos)
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// Returns the text in single quotes, as zsh reads it.
[[nodiscard]] std::string ZshQuoted(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

/// Returns the text in single quotes, as fish reads it.
[[nodiscard]] std::string FishQuoted(std::string_view text)
{
    return "'" + WithBackslashes(text, "\\'") + "'";
}

/// Returns "-I" for "-IDIR" and for "-I" followed by "DIR", since users write the value in the same
/// word; "-D" likewise. Returns an empty text for other options.
[[nodiscard]] std::string_view GluedOption(std::string_view word)
{
    return word.starts_with("-I") || word.starts_with("-D") ? word.substr(0, 2)
                                                            : std::string_view();
}

/// Returns the spellings, but only the first one of `-D` and `-I`.
[[nodiscard]] std::vector<std::string_view> DistinctSpellings(const SqxOption& option)
{
    std::vector<std::string_view> words = SqxSpellings(option.word);
    const auto isRepeated = [&](std::string_view word) {
        return word != words.front() && !GluedOption(word).empty();
    };
    std::erase_if(words, isRepeated);
    return words;
}

/// Returns a line of the call of `_arguments`, such as '*-o[effect]:DIR:_files -/', which ends with
/// a backslash.
[[nodiscard]] std::string ZshOption(std::string_view word, const SqxOption& option)
{
    const std::string_view glued = GluedOption(word);
    std::string spec = "*" + std::string(glued.empty() ? word : glued);
    if (!glued.empty())
        spec += '-';
    else if (!option.argument.empty() && word.starts_with("--"))
        spec += '=';
    spec += '[' + WithBackslashes(option.effect, "[]") + ']';
    const bool takesFolder = option.argument == "DIR" || glued == "-I";
    if (!glued.empty() || !option.argument.empty())
        spec += ':' + WithBackslashes(option.argument.empty() ? "value" : option.argument, ":") +
                ':' +
                (takesFolder                           ? "_files -/"
                 : option.argument.starts_with("FILE") ? "_files"
                                                       : "");
    return "        " + ZshQuoted(spec) + " \\\n";
}

/// Returns an option as `complete` of fish expects it: "-l size", "-o O2" after a single dash, or
/// "-s I" for an option that `GluedOption` returns. Other options of one letter do not use "-s",
/// since the programs do not accept several letters after one dash.
[[nodiscard]] std::string FishWord(std::string_view word)
{
    if (word.starts_with("--"))
        return "-l " + FishQuoted(word.substr(2));
    const std::string_view name = word.substr(1);
    return (GluedOption(word).empty() ? "-o " : "-s ") + FishQuoted(name);
}

/// Returns "sl|sqx" for "sl sqx".
[[nodiscard]] std::string Alternatives(std::string_view endings)
{
    std::string pattern(endings);
    for (char& c : pattern)
        c = c == ' ' ? '|' : c;
    return pattern;
}

/// Returns the argument of `_arguments` for words that are not options: files with these endings.
[[nodiscard]] std::string ZshFiles(std::string_view endings)
{
    if (endings.empty())
        return "'*: :_message \"takes no files\"'";
    return "'*:file:_files -g \"*.(" + Alternatives(endings) + ")(-.)\"'";
}

}  // namespace

std::string SqxBashCompletion(std::span<const SqxProgram* const> all)
{
    std::string text =
        R"bash(# Completion of the command lines of shaderqx and the programs beside it, for bash.

# usage: _shaderqx_words "OPTIONS" "FOLDER OPTIONS" "FILE ENDINGS"
_shaderqx_words() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    COMPREPLY=()
    case "|$2|" in
        *"|$before|"*)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
    esac
    case $word in
        -*) mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word") ;;
        *)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X "!*.@($3)" -- "$word")
            ;;
    esac
}
)bash";
    for (const SqxProgram* program : all) {
        const std::string endings = Alternatives(program->fileEndings);
        const std::string name(program->name);
        text += "_" + name + "() { shopt -s extglob; _shaderqx_words '" +
                OptionWords(program->options) + "' '" + FolderOptions(program->options) + "' '" +
                endings + "'; }\ncomplete -F _" + name + " " + name + "\n";
    }
    return text;
}

std::string SqxZshCompletion(std::span<const SqxProgram* const> all)
{
    std::string names;
    std::string cases;
    for (const SqxProgram* program : all) {
        names += ' ' + std::string(program->name);
        cases += "    " + std::string(program->name) + ")\n        _arguments \\\n";
        for (const SqxOption& option : program->options)
            for (const std::string_view word : DistinctSpellings(option))
                cases += ZshOption(word, option);
        cases += "        " + ZshFiles(program->fileEndings) + " ;;\n";
    }
    return "#compdef" + names + "\n\ncase $service in\n" + cases + "esac\n";
}

std::string SqxFishCompletion(const SqxProgram& program)
{
    const std::string command = "complete -c " + std::string(program.name);
    std::string text = command + " -f\n";
    std::string_view endings = program.fileEndings;
    while (!endings.empty()) {
        const std::string_view ending = endings.substr(0, endings.find(' '));
        endings.remove_prefix(std::min(ending.size() + 1, endings.size()));
        text += command + " -a '(__fish_complete_suffix ." + std::string(ending) + ")'\n";
    }
    for (const SqxOption& option : program.options)
        for (const std::string_view word : DistinctSpellings(option)) {
            const std::string_view glued = GluedOption(word);
            text += command + ' ' + FishWord(glued.empty() ? word : glued) + " -d " +
                    FishQuoted(option.effect);
            if (option.argument == "DIR" || glued == "-I")
                text += " -x -a '(__fish_complete_directories)'";
            else if (option.argument.starts_with("FILE"))
                text += " -r -F";
            else if (!glued.empty() || !option.argument.empty())
                text += " -x";
            text += '\n';
        }
    return text;
}
