#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "kernels/QxKernel.h"
#include "sqx/SqxShader.h"

/// The shadeops that a program calls. A library is loaded for the first call of one of its
/// functions. It runs in this process with all its rights: the folders are those that the user
/// trusts.
class QxShadeops {
public:
    /// Looks for the libraries of the shader in the folders, in their order, and reads their tables
    /// without loading them. Throws `QxHostError` for a library or shadeop that is not there, or
    /// that is called with other types than it is declared with. Keeps nothing of the shader.
    QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders);
    /// Calls the cleanup functions of the shadeops that were called, and unloads.
    ~QxShadeops();
    QxShadeops(const QxShadeops&) = delete;
    QxShadeops& operator=(const QxShadeops&) = delete;

    /// By the numbers that code has for them. The first call of one loads its library and calls its
    /// init function, and throws `QxHostError` if that fails. Several threads may call them at a
    /// time, if the library allows that.
    [[nodiscard]] std::span<const QxLoadedShadeop> Loaded() const { return m_loaded; }

private:
    using Method = void (*)(void* data, int argc, void** argv);
    struct Library {
        std::string path;
        std::once_flag once;
        std::unique_ptr<void, int (*)(void*)> handle{nullptr, nullptr};
    };
    struct Function {
        Function(Library& itsLibrary, SqxDSOFunction itsNames)
            : library(itsLibrary),
              names(std::move(itsNames))
        {
        }

        Library& library;
        SqxDSOFunction names;
        std::once_flag once;
        Method method = nullptr;
        void* data = nullptr;
        void (*cleanup)(void*) = nullptr;
    };

    static void* Load(Library& library);
    static void Start(Function& function);
    /// Stands for each method; the data is its `Function`.
    static void Call(void* function, int argc, void** argv);

    std::deque<Library> m_libraries;
    std::deque<Function> m_functions;       // by number; they end before the libraries
    std::vector<QxLoadedShadeop> m_loaded;  // likewise
};
