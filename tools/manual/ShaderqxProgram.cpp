// The options come from the compiler's table; the other texts of the manual page are here.

#include "manual/ShaderqxProgram.h"

#include <vector>

#include "driver/SlcOptionRows.h"

namespace {

// clang-format off
constexpr std::string_view k_description[] = {
    "Compiles one shader, written in the RenderMan Shading Language, into one file 'SHADER.sqx', named for the shader: byte-code for a shading virtual machine, or with '--dso' a shared object.",
    "The source passes through a preprocessor first, as that of C; sqxcpp(1) is a program of it. Reports give file, line and the source line at fault; they go to standard error.",
    "Options work in their order, so that a later one overrules an earlier one.",
};

constexpr SqxEntry k_environment[] = {
    {"SLC_CPP_COMMAND", "the preprocess command, run by the shell with the variables 'cpp_options', 'cpp_arguments' (the same, quoted), 'input_file' and 'cpp_result'"},
    {"SLC_CC_COMMAND", "the C++ command of '--dso', run by the shell with the variables 'output_dir', 'output_file' and 'cc_input_file'"},
    {"SLC_CC_OPTIONS, SLC_CC_INCLUDE", "added to the default C++ command"},
    {"SLC_CC_PROCESSOR",
     "the processor that the default C++ command builds for, by default -march=native"},
    {"SLC_ADVICE", "with the value 1, advice follows errors at every level of warnings, not at '-w2' alone"},
    {"SLC_SHADEOP_LIBRARIES", "a file for the paths of the shadeop libraries that the shader calls, one per line, for build systems"},
};

constexpr SqxEntry k_files[] = {
    {"SHADER.sqx", "the compiled shader"},
    {"SHADER.cpp", "the C++ of a shared object, in the working directory"},
    {"SOURCE.i", "the preprocessed source, beside the source"},
};

constexpr SqxEntry k_statuses[] = {
    {"0", "the shader is compiled"},
    {"1", "any failure, and also '--help' and '--version'"},
    {"2", "a token is longer than 8191 characters"},
};

constexpr SqxEntry k_examples[] = {
    {"shaderqx -d shaders matte.sl", "compiles a shader into the folder 'shaders'"},
    {"shaderqx --dso -O3 -Iinclude marble.sl", "builds a shared object, highly optimized"},
};
// clang-format on

[[nodiscard]] std::vector<SqxOption> Options()
{
    std::vector<SqxOption> options;
    for (const SlcOptionRow& row : SlcOptionRows())
        options.push_back({row.words, row.argument, row.meaning});
    return options;
}

}  // namespace

const SqxProgram& ShaderqxProgram()
{
    static const std::vector<SqxOption> options = Options();
    static const SqxProgram program = {
        "shaderqx",
        "compiles a shader",
        "[options] SOURCE.sl",
        k_description,
        options,
        k_environment,
        k_files,
        k_statuses,
        k_examples,
        "sl",
    };
    return program;
}
