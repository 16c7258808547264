#pragma once

#include <string>
#include <vector>

#include "QxShaderSupport.h"

/// Stores the handles of files that the host returns, so that the host is asked once for each file.
class QxFileHandles {
public:
    /// Returns the handle of a file, or null if the host has none for it. O(n) for n files. Throws
    /// what the host throws.
    [[nodiscard]] const void* Find(QxShaderSupport& host, QxFileKind kind, const char* name)
    {
        for (const File& file : m_files)
            if (file.kind == kind && file.name == name)
                return file.handle;
        const void* const handle = host.FindFile(kind, name);
        m_files.push_back({kind, name, handle});
        return handle;
    }
    /// Discards all handles: the host is asked again.
    void Forget() { m_files.clear(); }

private:
    struct File {
        QxFileKind kind;
        std::string name;
        const void* handle;
    };

    std::vector<File> m_files;
};
