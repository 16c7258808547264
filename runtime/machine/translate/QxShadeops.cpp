// All calls are checked against the tables in the files before any library is loaded, since loading
// already runs its code.
//
// Tested by tests/machine/QxShadeopCheckTest.cpp and tests/shadeops.

#include "machine/translate/QxShadeops.h"

#include <bit>
#include <dlfcn.h>

#include "QxHostError.h"
#include "machine/translate/QxShadeopLibraries.h"
#include "machine/verify/QxShadeopCheck.h"

namespace {

template <class Function>
Function FunctionOf(void* library, const std::string& name)
{
    return name.empty() ? nullptr : std::bit_cast<Function>(dlsym(library, name.c_str()));
}

}  // namespace

QxShadeops::QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders)
{
    const QxShadeopLibraries files(shader.libraries, folders);
    QxShadeopCheck check(shader);
    for (std::size_t i = 0; i < shader.functions.size(); ++i)
        for (const std::string& declaration : files.DeclarationsOf(shader.functions[i]))
            check.Declare(i, declaration);
    check.Run();
    for (std::size_t i = 0; i < files.Count(); ++i) {
        m_libraries.emplace_back(dlopen(files.PathOf(i).c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
        if (!m_libraries.back())
            throw QxHostError("Cannot load shadeop library '" + files.PathOf(i) +
                              "': " + dlerror());
    }
    for (const SqxDSOFunction& function : shader.functions)
        Start(function);
}

QxShadeops::~QxShadeops()
{
    for (std::size_t i = 0; i < m_cleanups.size(); ++i)
        if (m_cleanups[i])
            m_cleanups[i](m_loaded[i].data);
}

void QxShadeops::Start(const SqxDSOFunction& function)
{
    void* const library = m_libraries[function.library].get();
    using Method = void (*)(void*, int, void**);
    m_loaded.push_back({FunctionOf<Method>(library, function.method), nullptr, function.method});
    if (auto* const init = FunctionOf<void* (*)()>(library, function.init))
        m_loaded.back().data = init();
    m_cleanups.push_back(FunctionOf<void (*)(void*)>(library, function.cleanup));
}
