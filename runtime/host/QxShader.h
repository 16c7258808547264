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

/// Identifies a parameter of a shader by its position. A host gets it once from `QxShader::Handle`,
/// in place of repeated look-ups by name; it is valid for all instances and parameter sets of the
/// shader.
enum class QxParameterHandle : std::size_t {};

/// Runs a shader, for one grid and in one thread at a time. An instance has several of these
/// objects: a grid that is nested in another one needs its own.
class QxShaderRun {
public:
    virtual ~QxShaderRun() = default;

    /// Computes the default values of all variables that the host has not set, except default
    /// values that depend on the shading point. `spaces` is the list of spaces of the context.
    /// Throws `QxHostError`, what `new` throws, and any exception that an answer throws.
    virtual void Initialize(const QxShadingContext& context, const QxFrame3D** spaces,
                            std::vector<QxVar>& variables) = 0;
    /// Shades the points of a grid: reads and writes the predefined variables of `hidden` and the
    /// parameters in `variables`. The parameters must have room for all points and must be set or
    /// initialized; the run computes only the default values that depend on the shading point. A
    /// shared object computes these only for surfaces and volumes, and leaves others unchanged.
    /// `lights` is memory for the values of each light: the run asks the support of the context to
    /// fill it, and uses what this leaves there. Throws like `Initialize`.
    virtual void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                          const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                          std::vector<QxLightInput>& lights) = 0;
    /// Limits the steps of each call of `Initialize` or `Evaluate`; a call that takes more throws
    /// `QxHostError`. No effect on a run that cannot count steps.
    virtual void SetStepLimit(std::size_t) {}
    /// Limits the memory that each call of `Initialize` or `Evaluate` allocates for variables of
    /// the shader other than its parameters, in bytes; a call that needs more throws `QxHostError`.
    /// No effect on a run that does not allocate the variables itself.
    virtual void SetMemoryLimit(std::size_t) {}
    /// Sets a test that `Initialize` and `Evaluate` call every few milliseconds; if it returns
    /// true, they throw `QxHostStopped`. An empty test removes it. No effect on a run that cannot
    /// be stopped.
    virtual void SetStopTest(QxStopTest) {}
    /// Discards the handles of files that `QxShaderSupport::FindFile` returned, so that the next
    /// evaluation asks for them again.
    virtual void ForgetFiles() = 0;
};

/// A compiled shader, in byte-code or in a shared object. It never changes.
///
/// The values of its parameters are stored in instances (`QxShaderInstance`) and in parameter sets
/// (`QxParameterSet`). Any number of instances may exist, also in several threads.
class QxShader {
public:
    using Parameter = QxShaderParameter;

    /// Opens byte-code or a shared object; the first bytes of the file determine which it is.
    /// Shadeop libraries are searched for in `shadeopFolders`, in that order; a shared object that
    /// is loaded already keeps the libraries that it has. Throws `QxHostError`, which says why the
    /// file cannot be run.
    [[nodiscard]] static std::shared_ptr<const QxShader>
    Open(const std::string& path, const std::vector<std::string>& shadeopFolders = {});
    /// Reads the bytes of a byte-code file, which are not needed after the call. `name` stands for
    /// the path in errors. Throws like `Open`, also for a shared object.
    [[nodiscard]] static std::shared_ptr<const QxShader>
    Read(std::string_view bytes, const std::string& name,
         const std::vector<std::string>& shadeopFolders = {});

    virtual ~QxShader() = default;
    QxShader(const QxShader&) = delete;
    QxShader& operator=(const QxShader&) = delete;

    /// The path that was passed to `Open`, or the name that was passed to `Read`.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// Whether it is a surface, a light, a volume, a displacement or an imager.
    [[nodiscard]] QxShaderInterface::QxType Type() const { return m_info.type; }
    /// The parameters in source order.
    [[nodiscard]] const std::vector<Parameter>& Parameters() const { return m_info.parameters; }
    /// Returns the handle of the parameter of that name. Throws `QxHostError` if there is none.
    /// O(n).
    [[nodiscard]] QxParameterHandle Handle(std::string_view name) const;
    /// Computes the default value of each parameter, in source order: a point in the space in which
    /// the source specifies it, a color in RGB. A default that depends on the shading point has no
    /// value, but is zero in a shared object that an older compiler built. What the computation
    /// prints is discarded. Throws `QxHostError` if a value cannot be computed.
    [[nodiscard]] std::vector<std::optional<QxHostValue>> Defaults() const;
    /// Names of the predefined variables that the shader reads or writes, such as "dPdu".
    [[nodiscard]] const std::vector<std::string>& Predefined() const { return m_info.predefined; }
    /// True if `Predefined` contains this name. O(n).
    [[nodiscard]] bool Uses(std::string_view predefined) const;
    /// True if the default value of some parameter needs the "object" space.
    [[nodiscard]] bool NeedsObjectSpace() const;
    /// True if the shader calls `trace`; other calls that send rays do not count.
    [[nodiscard]] bool TracesRays() const { return m_info.tracesRays; }
    /// True if the shader can write `P`: by an assignment, or as an argument that a call can write.
    [[nodiscard]] bool ModifiesP() const { return m_info.modifiesP; }
    /// True for a light without `illuminate` and `solar`, whose light has no direction. For a
    /// shared object that an older compiler built, this is determined by a run at one point.
    [[nodiscard]] bool IsAmbient() const { return m_info.isAmbient; }
    /// Returns the file names, without folders, of the shadeop libraries whose functions the shader
    /// calls.
    [[nodiscard]] const std::vector<std::string>& ShadeopLibraries() const
    {
        return m_info.shadeopLibraries;
    }

    /// Returns the word of the shading language for a type: "surface", "light" and so on.
    [[nodiscard]] static const char* TypeName(QxShaderInterface::QxType type);

    // For instances.

    /// Names of the spaces that the shader uses, in the order of the list of spaces of a context.
    [[nodiscard]] const std::vector<std::string>& SpaceNames() const { return m_info.spaces; }
    /// Sets the name, type and length of each variable to those of the parameter at its position;
    /// there must be no more variables than parameters. The shader must outlive the variables.
    void Declare(std::vector<QxVar>& variables) const { m_info.Declare(variables); }
    /// Creates an object that runs this shader, which must outlive it. May be called in any thread.
    [[nodiscard]] virtual std::unique_ptr<QxShaderRun> NewRun() const = 0;

protected:
    explicit QxShader(std::string name) : m_name(std::move(name)) {}

    /// Declares `variables`, one for each parameter, and computes their default values with every
    /// space equal to the current space, so that no value is transformed between spaces.
    void ComputeDefaults(std::vector<QxVar>& variables) const;
    /// True if the default value of the parameter depends on the shading point.
    [[nodiscard]] virtual bool IsDefaultPerPoint(std::size_t parameter) const = 0;

    std::string m_name;
    QxShaderInfo m_info;
};
