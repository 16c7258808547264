#pragma once

#include <string>
#include <vector>

#include "machine/SqxMachine.h"

/// The loaded shadeop libraries of a byte-code shader, for the machine of the tests.
class NativeShadeops {
public:
    /// Makes `machine`, which must have loaded a shader, call the libraries in `folder`. Loads them
    /// and calls the init functions of the shadeops. Fails the test if a library cannot be loaded.
    /// The machine must not run the shader after the object has been destroyed.
    NativeShadeops(SqxMachine& machine, const std::string& folder);
    /// Calls the cleanup functions and unloads the libraries.
    ~NativeShadeops();
    NativeShadeops(const NativeShadeops&) = delete;
    NativeShadeops& operator=(const NativeShadeops&) = delete;

private:
    using Method = void (*)(void* data, int argc, void** argv);
    using Cleanup = void (*)(void* data);
    struct Started {
        Cleanup cleanup;
        void* data;
    };

    static void Call(Method method, void* data, const SqxCall& call);

    std::vector<void*> m_libraries;
    std::vector<Started> m_started;
};
