#include "shadeops/NativeShadeops.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

template <class Function>
Function Find(void* library, const std::string& name)
{
    return name.empty() ? nullptr : reinterpret_cast<Function>(::dlsym(library, name.c_str()));
}

}  // namespace

NativeShadeops::NativeShadeops(SqxMachine& machine, const std::string& folder)
{
    for (const std::string& library : machine.Shader().libraries) {
        m_libraries.push_back(::dlopen((folder + '/' + library).c_str(), RTLD_LAZY));
        EXPECT_NE(m_libraries.back(), nullptr) << library;
    }
    for (const auto& function : machine.Shader().functions) {
        void* const library = m_libraries[function.library];
        using Init = void* (*)();
        const auto init = Find<Init>(library, function.init);
        void* const data = init ? init() : nullptr;
        if (const auto cleanup = Find<Cleanup>(library, function.cleanup))
            m_started.push_back({cleanup, data});
        const auto method = Find<Method>(library, function.method);
        machine.SetShadeop(function.method, [=](const SqxCall& call) { Call(method, data, call); });
    }
}

NativeShadeops::~NativeShadeops()
{
    for (const Started& started : m_started)
        started.cleanup(started.data);
    for (void* library : m_libraries)
        if (library)
            ::dlclose(library);
}

void NativeShadeops::Call(Method method, void* data, const SqxCall& call)
{
    if (!method)
        return;
    std::vector<const char*> texts(call.Count());
    std::vector<void*> arguments(call.Count());
    for (std::size_t i = 0; i < call.Count(); ++i) {
        if (call.Variable(i).type == SqxType::String) {
            texts[i] = call.Texts(i)[0].c_str();
            arguments[i] = &texts[i];
        } else {
            arguments[i] = call.Numbers(i).data();
        }
    }
    method(data, static_cast<int>(call.Count()), arguments.data());
    if (call.Variable(0).type == SqxType::String)
        call.Set(0, std::string(texts[0]));
}
