#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

/// A shader in a shared object that `shaderqx --dso` built, loaded.
///
/// Its parameters get values in instances of it, see `QxShaderInstance`. A file can be loaded once
/// at a time, since what it keeps is one for the process.
class QxShaderObject {
public:
    struct Parameter {
        std::string name;
        QxValueType type;  // points, vectors and normals are all `Point`
        bool varying;
        std::size_t length;  // array elements, 1 for what is no array
        bool output;
    };

    /// Throws `QxHostError`, which tells why it is not a shader that can be loaded. The spaces are
    /// looked up by name in `spaces`, which must outlive the object; they may be defined, and
    /// defined anew, until a shader runs. Shadeop libraries are looked for in `shadeopFolders`.
    QxShaderObject(const std::string& path, QxSpaceRegistry& spaces,
                   const std::vector<std::string>& shadeopFolders = {});
    ~QxShaderObject();
    QxShaderObject(const QxShaderObject&) = delete;
    QxShaderObject& operator=(const QxShaderObject&) = delete;

    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] QxShaderInterface::QxType Type() const { return m_type; }
    [[nodiscard]] const std::vector<Parameter>& Parameters() const { return m_parameters; }
    /// The shader reads or writes this predefined variable, such as "dPdu".
    [[nodiscard]] bool Uses(std::string_view predefined) const;
    [[nodiscard]] bool TracesRays() const { return m_tracesRays; }
    [[nodiscard]] bool ModifiesP() const { return m_modifiesP; }

    /// Where its spaces are looked up.
    [[nodiscard]] const QxSpaceRegistry& Spaces() const { return m_spaces; }

    // For instances.

    /// Makes the variables, as many as there are parameters, those of an instance.
    void Declare(std::vector<QxVar>& variables) const;
    [[nodiscard]] QxShadingContext Context(QxShaderSupport& support, const QxVector3& eye) const;
    /// Gives the variables that the host has not set their default values.
    void Initialize(const QxShadingContext& context, std::vector<QxVar>& variables) const;
    void Evaluate(unsigned int columns, unsigned int rows, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights) const;

private:
    class Life;

    void ReadInterface(const std::vector<std::string>& shadeopFolders);

    std::string m_path;
    QxSpaceRegistry& m_spaces;
    std::unique_ptr<Life> m_life;  // loaded, from its first entry point to the last

    QxShaderInterface::QxType m_type = QxShaderInterface::e_typeSurface;
    std::vector<Parameter> m_parameters;
    std::vector<std::string> m_predefined;
    bool m_tracesRays = false;
    bool m_modifiesP = false;
};
