#include "sqxview/SqxViewProgram.h"

namespace {

using namespace std::string_view_literals;

// clang-format off
constexpr std::string_view k_description[] = {
    "Serves one page on this machine that shows a picture of a shader, its parameters, what the compiler says of it, and its byte-code. The address is printed; only this machine can reach it. Once the source or a file that it includes is saved, it is compiled and shaded again.",
    "Several shaders work together as with sqxshade(1): one of each kind, and any number of lights. The page shows the command of sqxshade that makes the same picture.",
    "The program runs until Ctrl-C ends it.",
};

//   word                       argument               effect
constexpr SqxOption k_options[] = {
    {"--port"sv,                "N"sv,                 "serves on that port in place of a free one"sv},
    {"--open"sv,                ""sv,                  "opens the page in the browser"sv},
    {"--time-limit"sv,          "SECONDS"sv,           "ends a picture that takes longer; 10 by default"sv},
    {"-w0, -w1, -w2"sv,         ""sv,                  "level of warnings; -w1 by default"sv},
    {"--param"sv,               "NAME=VALUE"sv,        "sets a parameter of the shader before it, as with sqxshade(1)"sv},
    {"--sphere, --square, --torus"sv, ""sv,            "the shape to shade; a sphere by default"sv},
    {"--size"sv,                "WIDTHxHEIGHT"sv,      "pixels; 256x256 by default"sv},
    {"--samples"sv,             "N"sv,                 "N times N samples smooth each pixel; 3 by default"sv},
    {"--background"sv,          "COLOR"sv,             "what is seen beside and through the shape"sv},
    {"--color"sv,               "COLOR"sv,             "the surface's color Cs; white by default"sv},
    {"--opacity"sv,             "COLOR"sv,             "the surface's opacity Os; 1 by default"sv},
    {"--light"sv,               "KIND[:SETTING...]"sv, "a light in place of the default ones, as with sqxshade(1); can be repeated"sv},
    {"-I"sv,                    "DIR"sv,               "searches DIR for included files and for shadeop libraries"sv},
    {"-D"sv,                    "NAME[=VALUE]"sv,      "defines a preprocessor symbol"sv},
    {"--texture"sv,             "NAME=FILE.png"sv,     "what shaders see as the texture NAME; without one it is a check"sv},
    {"--threads"sv,             "N"sv,                 "shades on N cores; on all by default"sv},
    {"-h, --help"sv,            ""sv,                  "prints this text"sv},
    {"--version"sv,             ""sv,                  "prints the version"sv},
};

constexpr SqxEntry k_environment[] = {
    {"SLC_CPP_COMMAND"sv, "the preprocess command, as for shaderqx(1)"sv},
};

constexpr SqxEntry k_statuses[] = {
    {"0"sv, "the program was ended"sv},
    {"1"sv, "a file is missing, or the page cannot be served"sv},
    {"2"sv, "an option or an argument is invalid"sv},
};

constexpr SqxEntry k_examples[] = {
    {"sqxview --open brick.sl"sv, "shows a shader in the browser"sv},
    {"sqxview --square --size 512x512 brick.sl dents.sl --param depth=0.2"sv, "shows a surface and a displacement together on a square"sv},
};
// clang-format on

}  // namespace

const SqxProgram& SqxViewProgram()
{
    static constexpr SqxProgram k_program = {
        "sqxview",
        "shows a shader in the browser while it is written",
        "[options] SHADER.sl...",
        k_description,
        k_options,
        k_environment,
        {},
        k_statuses,
        k_examples,
        "sl",
    };
    return k_program;
}
