// The compiler itself links only the standard library and has its options in a table of its own, so
// its page stands here. A test compares the two.

#include "manual/ShaderqxProgram.h"

namespace {

// clang-format off
constexpr std::string_view k_description[] = {
    "Compiles one shader, written in the RenderMan Shading Language, into one file 'SHADER.sqx', named for the shader: byte-code for a shading virtual machine, or with '--dso' a shared object.",
    "The source passes through the C preprocessor first. Reports tell file, line and the source line at fault; they go to standard error.",
    "Options work in their order, so that a later one overrules an earlier one.",
};

constexpr SqxOption k_options[] = {
    {"-d",                     "DIR", "writes the compiled shader into DIR in place of the working directory"},
    {"--int",                  "",    "writes byte-code; the default"},
    {"--dso",                  "",    "writes SHADER.cpp into the working directory and builds a shared object from it"},
    {"-c",                     "",    "with '--dso': writes the C++ file, but does not build it"},
    {"-E",                     "",    "runs only the preprocessor; the result, SOURCE.i, stays beside the source"},
    {"-O0",                    "",    "no optimization"},
    {"-O1",                    "",    "recycled temporaries, whole-grid instructions, merged parallel blocks"},
    {"-O2, -O",                "",    "also constant folding, copy propagation, dead code elimination; the default"},
    {"-O3",                    "",    "also loop-invariant code motion, more whole-grid calls, no checks of array indices"},
    {"--no-array-check",       "",    "no checks of array indices; a level behind it turns them on again"},
    {"-w0, -w",                "",    "no warnings"},
    {"-w1",                    "",    "the important warnings; the default"},
    {"-w2",                    "",    "all warnings"},
    {"-IDIR",                  "",    "searches DIR for included files, and for shadeop libraries behind the working directory"},
    {"-DNAME, -DNAME=VALUE",   "",    "defines a preprocessor symbol"},
    {"--strict",               "",    "a function body does not see the variables around it"},
    {"--keep-cpp-file, --dont-keep-cpp-file", "", "keeps the preprocessed file, SOURCE.i; not kept by default"},
    {"--keep-c++-file, --dont-keep-c++-file", "", "keeps the C++ file of '--dso'; kept by default"},
    {"--use-shadeops, --dont-use-shadeops",   "", "looks for unknown functions in shadeop libraries; on by default"},
    {"-v, --version",          "",    "alone: prints the version"},
    {"-h, --help",             "",    "alone: prints the options"},
};

constexpr SqxEntry k_environment[] = {
    {"SLC_CPP_COMMAND", "the preprocess command, run by the shell with the variables 'cpp_options', 'cpp_arguments' (the same, quoted), 'input_file' and 'cpp_result'"},
    {"SLC_CC_COMMAND", "the C++ command of '--dso', run by the shell with the variables 'output_dir', 'output_file' and 'cc_input_file'"},
    {"SLC_CC_OPTIONS, SLC_CC_INCLUDE", "added to the default C++ command"},
    {"SLC_ADVICE", "with the value 1, advice follows errors at every level of warnings, not at '-w2' alone"},
    {"SLC_SHADEOP_LIBRARIES", "a file for the paths of the shadeop libraries that the shader calls into, one a line, for build systems"},
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

}  // namespace

const SqxProgram& ShaderqxProgram()
{
    static constexpr SqxProgram k_program = {
        "shaderqx",    "compiles a shader", "[options] SOURCE.sl",
        k_description, k_options,           k_environment,
        k_files,       k_statuses,          k_examples,
        "sl",
    };
    return k_program;
}
