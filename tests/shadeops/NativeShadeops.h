#pragma once

#include <string>
#include <vector>

#include "machine/SqxMachine.h"

/// Loads the shadeops of a byte-code shader from their libraries, as long as the object lives.
class NativeShadeops {
public:
    /// Makes `machine`, which must have loaded a shader, call the libraries in `folder`.
    NativeShadeops(SqxMachine& machine, const std::string& folder);
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
