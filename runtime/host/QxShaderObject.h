#pragma once

#include <set>

#include "host/QxShader.h"

class QxLoadedObject;

/// A loaded shared object that `shaderqx --dso` built.
///
/// Opening a file again while it is loaded shares the loaded code and the shadeop libraries that
/// were found when it was loaded. The file is unloaded when the last of these objects that share it
/// is destroyed, which may happen in any thread.
class QxShaderObject : public QxShader {
public:
    /// Loads the file. Its code runs in this process with all rights of the process, so it must be
    /// trusted like a program. Throws `QxHostError` like `QxLoadedObject::Acquire`, and if the
    /// facts that the compiler wrote into the file (`SqxObjectFacts`) describe other parameters
    /// than the code of the file.
    QxShaderObject(const std::string& path, const std::vector<std::string>& shadeopFolders);
    ~QxShaderObject() override;

    [[nodiscard]] std::unique_ptr<QxShaderRun> NewRun() const override;

protected:
    /// False for all parameters of an object without valid facts, such as from an older compiler:
    /// it is not known which default values depend on the point. `QxInitialize` sets parameters
    /// with such a default to zero or to an empty text.
    [[nodiscard]] bool IsDefaultPerPoint(std::size_t parameter) const override
    {
        return m_perPoint.contains(parameter);
    }

private:
    class Run;

    void ReadInterface();
    void ReadFacts();
    void ReadDefaultSpaces();
    [[nodiscard]] bool ClearsDirection() const;

    std::set<std::size_t> m_perPoint;  // parameters whose default values depend on the point
    std::unique_ptr<const QxLoadedObject, void (*)(const QxLoadedObject*)> m_object;
};
