#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "machine/run/QxShaderInfo.h"

struct QxMachineCode;
struct SqxShader;

/// Which kernels run a program: the best ones that the processor supports, or those for one
/// instruction set, for comparison. All compute the same values.
enum class QxKernelChoice { Best, Baseline, Avx2 };

/// A byte-code shader that has been verified and translated. Any number of runs (`QxMachineRun`) in
/// different threads may share it, if several threads may call its shadeops at the same time.
class QxMachineProgram {
public:
    /// `bytes` is the text of the file; `name` is for messages. Shadeop libraries are searched only
    /// in `shadeopFolders`, in order. The tables of the libraries are read here; a library is
    /// loaded at the first call of one of its functions, and stays loaded as long as the program
    /// exists. Throws `QxHostError` for an error in the file, the libraries or the choice of
    /// kernels. Keeps no reference to the arguments.
    QxMachineProgram(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// The same for a file that has been read completely.
    QxMachineProgram(const SqxShader& shader, std::string name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// Calls the cleanup functions of the shadeops that were called, and unloads their libraries.
    /// All runs must have been destroyed before.
    ~QxMachineProgram();
    QxMachineProgram(const QxMachineProgram&) = delete;
    QxMachineProgram& operator=(const QxMachineProgram&) = delete;

    [[nodiscard]] const QxShaderInfo& Info() const { return m_info; }
    /// True if the default value of the parameter at this index depends on shading data, so that it
    /// is recomputed for each grid unless the host sets a value. O(p) for p such parameters.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const;
    /// Returns the number of instructions in all blocks of the file.
    [[nodiscard]] std::size_t InstructionCount() const;

    /// True if AVX2 kernels were built and this processor can run them.
    [[nodiscard]] static bool HasAvx2();

    // For runs.

    [[nodiscard]] const QxMachineCode& Code() const { return *m_code; }
    [[nodiscard]] const std::string& Name() const { return m_name; }

private:
    std::string m_name;
    QxShaderInfo m_info;
    std::unique_ptr<const QxMachineCode> m_code;
};
