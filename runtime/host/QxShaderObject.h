#pragma once

#include "host/QxShader.h"

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
    /// A shared object does not tell: it has zero in place of such a value.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t) const override { return false; }

private:
    class Life;
    class Run;

    void ReadInterface();
    void ReadDefaultSpaces();
    [[nodiscard]] bool LeavesNoDirection() const;

    const Life& m_life;  // loaded, from its first entry point to the last
};
