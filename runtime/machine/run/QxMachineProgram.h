#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

struct QxMachineCode;
struct SqxShader;

/// Which kernels run a program: the best ones that the processor supports, or those for one
/// instruction set, for comparison. All compute the same values.
enum class QxKernelChoice { Best, Baseline, Avx2 };

/// A byte-code shader that has been verified and translated. It never changes, so any number of
/// runs (`QxMachineRun`) in different threads may share it.
class QxMachineProgram {
public:
    struct Parameter {
        std::string name;
        QxValueType type;
        bool varying;
        std::size_t length;  // array elements; 1 if not an array
        bool output;
        bool needsObjectSpace;  // to compute its default value
        std::string space;      // space of the default value; empty for none
    };

    /// `bytes` is the text of the file; `name` is for messages. Shadeop libraries are searched only
    /// in `shadeopFolders`, in order; they are loaded and initialized here, and stay loaded as long
    /// as the program exists. Throws `QxHostError` if there is something wrong with the file, the
    /// libraries, or the choice of kernels. The arguments are copied.
    QxMachineProgram(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// The same for a file that has been read completely.
    QxMachineProgram(const SqxShader& shader, std::string name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// Calls the cleanup functions of shadeops. All runs must have been destroyed.
    ~QxMachineProgram();
    QxMachineProgram(const QxMachineProgram&) = delete;
    QxMachineProgram& operator=(const QxMachineProgram&) = delete;

    [[nodiscard]] QxShaderInterface::QxType Type() const { return m_type; }
    /// In source order, which is also the order of the variables of an instance.
    [[nodiscard]] const std::vector<Parameter>& Parameters() const { return m_parameters; }
    /// Names of the predefined variables that the shader reads or writes.
    [[nodiscard]] const std::vector<std::string>& Predefined() const { return m_predefined; }
    /// Names of its coordinate spaces, by the numbers that `QxShadingContext` uses.
    [[nodiscard]] const std::vector<std::string>& Spaces() const { return m_spaces; }
    /// File names of the shadeop libraries that it calls into.
    [[nodiscard]] const std::vector<std::string>& ShadeopLibraries() const
    {
        return m_shadeopLibraries;
    }
    [[nodiscard]] bool TracesRays() const { return m_tracesRays; }
    [[nodiscard]] bool ModifiesP() const { return m_modifiesP; }
    /// True for a light without `illuminate` and `solar`.
    [[nodiscard]] bool IsAmbient() const { return m_isAmbient; }
    /// True if the default value of the parameter at this index depends on shading data, so that it
    /// is recomputed for each grid. O(p) for p such parameters.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const;
    /// The number of instructions in all blocks of the file.
    [[nodiscard]] std::size_t InstructionCount() const;

    /// Sets the names, types and lengths of the variables, one per parameter. They have no values
    /// until `QxMachineRun::Initialize`.
    void Declare(std::vector<QxVar>& variables) const;

    /// True if this processor can run AVX2 kernels.
    [[nodiscard]] static bool HasAvx2();

    // For runs.

    [[nodiscard]] const QxMachineCode& Code() const { return *m_code; }
    [[nodiscard]] const std::string& Name() const { return m_name; }

private:
    std::string m_name;
    QxShaderInterface::QxType m_type = QxShaderInterface::e_typeSurface;
    std::vector<Parameter> m_parameters;
    std::vector<std::string> m_predefined;
    std::vector<std::string> m_spaces;
    std::vector<std::string> m_shadeopLibraries;
    bool m_tracesRays = false;
    bool m_modifiesP = false;
    bool m_isAmbient = false;
    std::unique_ptr<const QxMachineCode> m_code;
};
