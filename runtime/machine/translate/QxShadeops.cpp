// All calls are checked against the tables in the library files when a shader is opened. A library
// that is never called is never loaded.
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
    m_arrays = check.DeclaredArrays();
    for (std::size_t i = 0; i < files.Count(); ++i)
        m_libraries.emplace_back().path = files.PathOf(i);
    for (const SqxDSOFunction& function : shader.functions) {
        m_functions.emplace_back(m_libraries[function.library], function);
        m_loaded.push_back({Call, &m_functions.back(), function.method});
    }
}

QxShadeops::~QxShadeops()
{
    for (const Function& function : m_functions)
        if (function.cleanup)
            function.cleanup(function.data);
}

void QxShadeops::Call(void* function, int argc, void** argv)
{
    auto& shadeop = *static_cast<Function*>(function);
    std::call_once(shadeop.once, [&shadeop] { Start(shadeop); });
    shadeop.method(shadeop.data, argc, argv);
}

void* QxShadeops::Load(Library& library)
{
    std::call_once(library.once, [&library] {
        library.handle = {dlopen(library.path.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose};
        if (!library.handle)
            throw QxHostError("Cannot load shadeop library '" + library.path + "': " + dlerror());
    });
    return library.handle.get();
}

void QxShadeops::Start(Function& function)
{
    void* const library = Load(function.library);
    function.method = FunctionOf<Method>(library, function.names.method);
    // The file may have been replaced since it was checked.
    if (!function.method)
        throw QxHostError("Shadeop library '" + function.library.path + "' has no shadeop '" +
                          function.names.method + "'");
    if (auto* const init = FunctionOf<void* (*)()>(library, function.names.init))
        function.data = init();
    function.cleanup = FunctionOf<void (*)(void*)>(library, function.names.cleanup);
}
