#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

struct QxMachineCode;
struct SqxShader;

/// Which kernels run a program: the best ones that the processor can run, or those of one
/// instruction set, for comparison. Values are the same with all of them.
enum class QxKernelChoice { Best, Baseline, Avx2 };

/// A shader in byte-code, verified and made ready to run once. It never changes, so that any number
/// of runs, see `QxMachineRun`, may share it, each in a thread of its own.
class QxMachineProgram {
public:
    struct Parameter {
        std::string name;
        QxValueType type;
        bool varying;
        std::size_t length;  // array elements, 1 for what is no array
        bool output;
        bool needsObjectSpace;  // to compute its default value
        std::string space;      // in which the default value is given; empty for none
    };

    /// `bytes`: the text of the file; `name`: for messages. Shadeop libraries are looked for in
    /// `shadeopFolders`, in their order, and nowhere else; they are loaded and initialized here,
    /// and stay as long as the program. Throws `QxHostError`, which tells what is wrong with the
    /// file, the libraries, or the choice of kernels. Nothing of the arguments is kept but copies.
    QxMachineProgram(std::string_view bytes, const std::string& name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// The same for a file that was read whole, less what nothing refers to.
    QxMachineProgram(const SqxShader& shader, std::string name,
                     const std::vector<std::string>& shadeopFolders = {},
                     QxKernelChoice kernels = QxKernelChoice::Best);
    /// Calls the cleanup functions of shadeops. No run may be left.
    ~QxMachineProgram();
    QxMachineProgram(const QxMachineProgram&) = delete;
    QxMachineProgram& operator=(const QxMachineProgram&) = delete;

    [[nodiscard]] QxShaderInterface::QxType Type() const { return m_type; }
    /// In the order of the source, which is that of the variables of an instance.
    [[nodiscard]] const std::vector<Parameter>& Parameters() const { return m_parameters; }
    /// Names of the predefined variables that the shader reads or writes.
    [[nodiscard]] const std::vector<std::string>& Predefined() const { return m_predefined; }
    /// Names of its coordinate spaces, by the numbers that a `QxShadingContext` takes.
    [[nodiscard]] const std::vector<std::string>& Spaces() const { return m_spaces; }
    /// File names of the shadeop libraries that it calls into.
    [[nodiscard]] const std::vector<std::string>& ShadeopLibraries() const
    {
        return m_shadeopLibraries;
    }
    [[nodiscard]] bool TracesRays() const { return m_tracesRays; }
    [[nodiscard]] bool ModifiesP() const { return m_modifiesP; }
    /// A light without `illuminate` and `solar`.
    [[nodiscard]] bool IsAmbient() const { return m_isAmbient; }
    /// The default value of a parameter, by its position, is computed from shading data, and so for
    /// each grid anew. O(p) for p such parameters.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const;
    /// Instructions of all its blocks, as the file has them.
    [[nodiscard]] std::size_t InstructionCount() const;

    /// Gives the variables, as many as there are parameters, their names, types and lengths. They
    /// have no values yet: see `QxMachineRun::Initialize`.
    void Declare(std::vector<QxVar>& variables) const;

    /// AVX2 kernels can run here.
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
