#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kernels/QxKernel.h"
#include "sqx/SqxShader.h"

/// The shadeops that a program calls, with their libraries loaded.
class QxShadeops {
public:
    /// Looks for the libraries of the shader in the folders, and calls the init functions. Throws
    /// `QxHostError` for a library or shadeop that is not there.
    QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders);
    /// Calls the cleanup functions and unloads.
    ~QxShadeops();
    QxShadeops(const QxShadeops&) = delete;
    QxShadeops& operator=(const QxShadeops&) = delete;

    [[nodiscard]] std::span<const QxLoadedShadeop> Loaded() const { return m_loaded; }

private:
    void Find(const SqxDSOFunction& function, const std::string& library);

    std::vector<std::unique_ptr<void, int (*)(void*)>> m_libraries;
    std::vector<QxLoadedShadeop> m_loaded;  // by number
    std::vector<void (*)(void*)> m_cleanups;
};
