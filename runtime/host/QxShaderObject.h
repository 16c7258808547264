#pragma once

#include <set>

#include "host/QxShader.h"

class QxObjectLife;

/// A shader in a shared object that `shaderqx --dso` built, loaded.
///
/// A file that is opened again while it is loaded is the one that is loaded, with the shadeop
/// libraries that were found for it then. It is unloaded when the last shader of it goes, which may
/// be in any thread.
class QxShaderObject : public QxShader {
public:
    /// Loads the file, which may then do whatever it likes in this process: it is code, to be
    /// trusted like a program. Throws `QxHostError` if it is no shader of this interface version.
    QxShaderObject(const std::string& path, const std::vector<std::string>& shadeopFolders);
    ~QxShaderObject() override;

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    /// Never of an object of an older compiler, which does not say: it has zero in place of such a
    /// value.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override
    {
        return m_perPoint.contains(parameter);
    }

private:
    class Run;

    void ReadInterface();
    void ReadFacts();
    void ReadDefaultSpaces();
    [[nodiscard]] bool LeavesNoDirection() const;

    std::set<std::size_t> m_perPoint;  // parameters with such default values
    std::unique_ptr<const QxObjectLife, void (*)(const QxObjectLife*)> m_life;
};
