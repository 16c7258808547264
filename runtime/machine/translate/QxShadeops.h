#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kernels/QxKernel.h"
#include "sqx/SqxShader.h"

/// The shadeops that a program calls, with their libraries loaded. Libraries run in this process
/// with all its rights, so the folders must be trusted.
class QxShadeops {
public:
    /// Searches the libraries of the shader in the folders, in order, and calls the init function
    /// of each shadeop once. Throws `QxHostError` if a library or shadeop is missing, or is called
    /// with types that do not match its declaration; no library has been loaded then. Does not
    /// refer to the shader afterwards.
    QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders);
    /// Calls the cleanup functions and unloads.
    ~QxShadeops();
    QxShadeops(const QxShadeops&) = delete;
    QxShadeops& operator=(const QxShadeops&) = delete;

    /// The shadeops by their numbers in code. Several threads may call them concurrently, if the
    /// library allows that.
    [[nodiscard]] std::span<const QxLoadedShadeop> Loaded() const { return m_loaded; }

private:
    void Start(const SqxDSOFunction& function);

    std::vector<std::unique_ptr<void, int (*)(void*)>> m_libraries;
    std::vector<QxLoadedShadeop> m_loaded;  // by number
    std::vector<void (*)(void*)> m_cleanups;
};
