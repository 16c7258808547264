#pragma once

#include <cstddef>
#include <string>

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
    /// The address of what it exports by that name; null if there is nothing.
    [[nodiscard]] const void* Find(const std::string& name) const;
    /// How many bytes an object that `Find` gave takes; 0 if the library does not say.
    [[nodiscard]] static std::size_t SizeOf(const void* object);

private:
    void* m_handle = nullptr;
};
