#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "kernels/QxKernel.h"
#include "machine/verify/QxShadeopCheck.h"
#include "sqx/SqxShader.h"

/// The shadeops that a program calls. A library is loaded at the first call of one of its
/// functions. Its code runs in this process with all rights of the process, so the folders must be
/// trusted.
class QxShadeops {
public:
    /// Searches for the libraries of the shader in the folders, in order, and reads their tables
    /// without loading them. Throws `QxHostError` if a library is missing or damaged, if it does
    /// not declare and export the functions that the shader names, or if a call does not match the
    /// declared types. The shader must be verified; this object keeps no reference to it.
    QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders);
    /// Calls the cleanup functions of the shadeops that were called, and unloads the libraries.
    ~QxShadeops();
    QxShadeops(const QxShadeops&) = delete;
    QxShadeops& operator=(const QxShadeops&) = delete;

    /// Returns the shadeops, by their numbers in code; valid as long as this object. The first call
    /// of a shadeop loads its library, unless that is loaded, and calls its init function; it
    /// throws `QxHostError` if the library cannot be loaded or lacks the method. Several threads
    /// may call shadeops at the same time if the library allows that.
    [[nodiscard]] std::span<const QxLoadedShadeop> Loaded() const { return m_loaded; }
    /// True if a shadeop that is called with this number of arguments may write numbers to the
    /// argument of this number, from 1. O(log n).
    [[nodiscard]] bool MayWrite(std::size_t function, std::size_t arguments,
                                std::size_t argument) const
    {
        return m_arrays.contains({function, arguments, argument});
    }

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
    /// Called in place of each method; `function` is the `Function` that contains the method.
    static void Call(void* function, int argc, void** argv);

    std::deque<Library> m_libraries;
    std::deque<Function> m_functions;       // by number; destroyed before the libraries
    std::vector<QxLoadedShadeop> m_loaded;  // by number
    QxShadeopCheck::Arrays m_arrays;
};
