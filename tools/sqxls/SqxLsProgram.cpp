#include "sqxls/SqxLsProgram.h"

namespace {

using namespace std::string_view_literals;

// clang-format off
constexpr std::string_view k_description[] = {
    "Answers questions of editors about shaders while they are written: it implements the Language Server Protocol 3.17 on its standard input and output. An editor starts it; docs/editors.md shows how to set up several of them.",
    "A source is compiled with the options of the last run of sqxmake(1) that compiled it, then those of the nearest 'compile_flags.txt' in its folder or above, which has one option per line, then those of the editor's settings. Later options override earlier ones.",
    "The program runs until the editor ends it or closes its input.",
};

//   word                       argument               effect
constexpr SqxOption k_options[] = {
    {"--stdio"sv,               ""sv,                  "uses the standard streams, as it always does"sv},
    {"-h, --help"sv,            ""sv,                  "prints this text"sv},
    {"--version"sv,             ""sv,                  "prints the version"sv},
};

constexpr SqxEntry k_files[] = {
    {"compile_flags.txt"sv, "options of the compiler"sv},
};

constexpr SqxEntry k_statuses[] = {
    {"0"sv, "the editor has ended the program as the protocol requires"sv},
    {"1"sv, "the input ended, or the output was closed, before that"sv},
    {"2"sv, "an option or an argument is invalid"sv},
};

constexpr SqxEntry k_examples[] = {
    {"nvim --cmd \"au FileType sl lua vim.lsp.start_client{cmd={'sqxls'}}\""sv, "starts Neovim, which starts sqxls when a shader is opened"sv},
};
// clang-format on

}  // namespace

const SqxProgram& SqxLsProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxls",     "answers questions of editors about shaders",
        "[options]", k_description,
        k_options,   {},
        k_files,     k_statuses,
        k_examples,  "",
    };
    return k_program;
}
