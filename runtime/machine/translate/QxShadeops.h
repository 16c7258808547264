#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kernels/QxKernel.h"
#include "sqx/SqxShader.h"

/// The shadeops that a program calls, with their libraries loaded. Libraries run in this process
/// with all its rights: the folders are those that the user trusts.
class QxShadeops {
public:
    /// Looks for the libraries of the shader in the folders, in their order, and calls the init
    /// functions, once for each shadeop. Throws `QxHostError` for a library or shadeop that is not
    /// there, or that is called with other types than it is declared with; then none of them was
    /// loaded. Keeps nothing of the shader.
    QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders);
    /// Calls the cleanup functions and unloads.
    ~QxShadeops();
    QxShadeops(const QxShadeops&) = delete;
    QxShadeops& operator=(const QxShadeops&) = delete;

    /// By the numbers that code has for them. Several threads may call them at a time, if the
    /// library allows that.
    [[nodiscard]] std::span<const QxLoadedShadeop> Loaded() const { return m_loaded; }

private:
    void Start(const SqxDSOFunction& function);

    std::vector<std::unique_ptr<void, int (*)(void*)>> m_libraries;
    std::vector<QxLoadedShadeop> m_loaded;  // by number
    std::vector<void (*)(void*)> m_cleanups;
};
