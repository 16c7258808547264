#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QxDerivatives.h"
#include "QxShaderSupport.h"
#include "host/QxHostValue.h"
#include "machine/run/QxShaderInfo.h"
#include "machine/run/QxStopTest.h"

/// A parameter of a shader, by its position: to look its name up once. Good for all instances of
/// the shader.
enum class QxParameterHandle : std::size_t {};

/// Shades with a shader for one user at a time, in one thread at a time.
class QxShaderRun {
public:
    virtual ~QxShaderRun() = default;

    /// Gives the variables that the host has not set their default values. `spaces` is the list of
    /// the context. Throws `QxHostError`, as `Evaluate` does.
    virtual void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                            std::vector<QxVar>& variables) = 0;
    /// Shades the points of a grid: reads and writes the predefined variables of `hidden`, and the
    /// parameters in `variables`, which have room for all points, and their values by then, but for
    /// default values that are computed from shading data.
    /// `lights`: room for the values of each light, with nothing in it that counts; they are asked
    /// of the context's support.
    virtual void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                          const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                          std::vector<QxLightInput>& lights) = 0;
    /// An evaluation that takes more steps is ended with a `QxHostError`, if steps can be counted.
    virtual void SetStepLimit(std::size_t) {}
    /// An evaluation that needs more memory for its variables, in bytes, throws `QxHostError`, if
    /// the run allocates them.
    virtual void SetMemoryLimit(std::size_t) {}
    /// An evaluation asks `test` now and then and ends with a `QxHostStopped` when it says so. Does
    /// nothing for a run that cannot be stopped.
    virtual void SetStopTest(QxStopTest) {}
    /// Handles of files are asked for again; until then each is kept.
    virtual void ForgetFiles() = 0;
};

/// A shader that was read from a file and does not change any more: byte-code or a shared object.
///
/// Its parameters get values in instances of it, see `QxShaderInstance`; as many as are wanted,
/// also in several threads at a time.
class QxShader {
public:
    using Parameter = QxShaderParameter;

    /// Looks at the file to see what it is. Throws `QxHostError`, which tells why it is not a
    /// shader that can be run. Shadeop libraries are looked for in `shadeopFolders`.
    [[nodiscard]] static std::shared_ptr<const QxShader>
    Open(const std::string& path, const std::vector<std::string>& shadeopFolders = {});
    /// The same for the bytes of a byte-code file; errors call it by `name`.
    [[nodiscard]] static std::shared_ptr<const QxShader>
    Read(std::string_view bytes, const std::string& name,
         const std::vector<std::string>& shadeopFolders = {});

    virtual ~QxShader() = default;
    QxShader(const QxShader&) = delete;
    QxShader& operator=(const QxShader&) = delete;

    /// The path of its file, or its name.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] QxShaderInterface::QxType Type() const { return m_info.type; }
    [[nodiscard]] const std::vector<Parameter>& Parameters() const { return m_info.parameters; }
    /// The parameter of that name. Throws `QxHostError` if there is none. O(n).
    [[nodiscard]] QxParameterHandle Handle(std::string_view name) const;
    /// The default value of each parameter, in the space that it is given in. A value that needs
    /// the shading point has none. What a computation prints is dropped. It costs what the
    /// computation of all of them does.
    [[nodiscard]] std::vector<std::optional<QxHostValue>> Defaults() const;
    /// The predefined variables that it reads or writes, such as "dPdu".
    [[nodiscard]] const std::vector<std::string>& Predefined() const { return m_info.predefined; }
    [[nodiscard]] bool Uses(std::string_view predefined) const;
    /// The default value of some parameter needs the object space.
    [[nodiscard]] bool NeedsObjectSpace() const;
    [[nodiscard]] bool TracesRays() const { return m_info.tracesRays; }
    [[nodiscard]] bool ModifiesP() const { return m_info.modifiesP; }
    /// A light that comes from everywhere: it has neither `illuminate` nor `solar`.
    [[nodiscard]] bool IsAmbient() const { return m_info.isAmbient; }
    /// File names of the shadeop libraries that it calls into.
    [[nodiscard]] const std::vector<std::string>& ShadeopLibraries() const
    {
        return m_info.shadeopLibraries;
    }

    /// What a shader's user calls its type: "surface", "light" and so on.
    [[nodiscard]] static const char* TypeName(QxShaderInterface::QxType type);

    // For instances.

    /// The spaces that it names, in the order of the space list of a context.
    [[nodiscard]] const std::vector<std::string>& SpaceNames() const { return m_info.spaces; }
    /// The shader must outlive the variables.
    void Declare(std::vector<QxVar>& variables) const { m_info.Declare(variables); }
    /// What shades for one instance. The shader must outlive it. May be called in any thread.
    [[nodiscard]] virtual std::unique_ptr<QxShaderRun> NewRun() const = 0;

protected:
    explicit QxShader(std::string name) : m_name(std::move(name)) {}

    /// Makes variables of which each has the default value, as it is given.
    void ComputeDefaults(std::vector<QxVar>& variables) const;
    /// The default value of a parameter depends on the shading point.
    [[nodiscard]] virtual bool IsDefaultPerPoint(std::size_t parameter) const = 0;

    std::string m_name;
    QxShaderInfo m_info;
};
