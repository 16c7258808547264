#pragma once

#include <string>

#include "support/QxMemoryRanges.h"

/// A shared library, open as long as the object lives.
///
/// The loader of the system trusts a file's word about its own length, and a cut one ends the
/// process. So whatever is no whole library of this machine is not given to it.
class QxSharedLibrary {
public:
    /// Runs the initializers of the library. `path` holds a "/", or the system's directories are
    /// searched.
    explicit QxSharedLibrary(const std::string& path);
    ~QxSharedLibrary();
    QxSharedLibrary(const QxSharedLibrary&) = delete;
    QxSharedLibrary& operator=(const QxSharedLibrary&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_handle != nullptr; }
    /// It, or a library that it needs, exports something by that name.
    [[nodiscard]] bool Exports(const std::string& name) const;
    /// The data object of its own that it exports by that name; empty if there is none. One whose
    /// size the library does not tell goes to the end of its segment.
    [[nodiscard]] QxMemoryRanges::Bytes FindObject(const std::string& name) const;
    /// What the library itself takes of memory.
    [[nodiscard]] const QxMemoryRanges& Memory() const { return m_memory; }

private:
    void* m_handle = nullptr;
    QxMemoryRanges m_memory;
};
