// The shell commands that are the defaults if the environment sets none.
//
// Tested by tests/driver/SlcExternalCommandsTest.cpp and, for an installed tree, tests/install.

#include "driver/SlcDefaultCommands.h"

#include <filesystem>
#include <system_error>

#include "compiler/SlcPreprocessorMacros.h"

namespace {

/// Returns the folder of the run time's headers. Finds the installed one relative to the program,
/// so that the installed tree can be moved.
[[nodiscard]] std::filesystem::path RuntimeDirectory()
{
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (!failed) {
        const std::filesystem::path installed =
            (program.parent_path() / SLC_INSTALLED_RUNTIME).lexically_normal();
        if (std::filesystem::is_directory(installed, failed))
            return installed;
    }
    return SLC_SOURCE_RUNTIME;
}

}  // namespace

std::string SlcShellWord(const std::string& text)
{
    constexpr auto k_plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-";
    if (!text.empty() && text.find_first_not_of(k_plain) == std::string::npos)
        return text;
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string DefaultPreprocessCommand()
{
    std::string command = "sqxcpp";
    for (const auto& macro : SlcPreprocessorMacros())
        command += " -D" + macro.text;
    return command + " $cpp_options \"$input_file\" > \"$cpp_result\"";
}

std::string DefaultCCCommand()
{
    // Loops over points are vectorized from -O3 on, and only if operations may be executed
    // speculatively. As in byte-code, products and sums are not fused, so that values do not depend
    // on the processor. On x86 the object is built for the local processor, unless the variable
    // SLC_CC_PROCESSOR is set.
#if defined(__x86_64__) || defined(__i386__)
    const std::string processor = "${SLC_CC_PROCESSOR--march=native} ";
#else
    const std::string processor = "$SLC_CC_PROCESSOR ";
#endif
    return "c++ -O3 -ffp-contract=off -fno-math-errno -fno-trapping-math " + processor +
           "-fPIC -shared "
           "-o \"$output_dir/$output_file\" $SLC_CC_OPTIONS $SLC_CC_INCLUDE -I" +
           SlcShellWord(RuntimeDirectory().string()) + " \"$cc_input_file\"";
}
