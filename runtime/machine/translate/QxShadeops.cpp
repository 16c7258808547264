// A file of byte-code names functions of libraries, and may come from anywhere. So only what stands
// in the table that a library exports is ever called: `system` in a file is refused, since no
// library lists it. All calls are checked before the first init function runs.
//
// Tested by tests/machine/QxShadeopCheckTest.cpp and tests/shadeops.

#include "machine/translate/QxShadeops.h"

#include <bit>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>

#include "QxHostError.h"
#include "QxShadeop.h"
#include "machine/verify/QxShadeopCheck.h"

namespace {

std::string PathOf(const std::string& library, const std::vector<std::string>& folders)
{
    for (const std::string& folder : folders) {
        std::string path = folder;
        path.append("/").append(library);
        if (std::filesystem::is_regular_file(path))
            return std::filesystem::absolute(path).string();
    }
    throw QxHostError("There is no shadeop library '" + library + "' in the given folders");
}

/// A method is one only if the library's own table lists it, and with it the init and cleanup
/// functions: the file could name any function of the process otherwise. They may come from two
/// rows, since the overloads that a shader calls share theirs.
bool IsListed(const QxShadeop* row, const SqxDSOFunction& function)
{
    bool listsInit = function.init.empty();
    bool listsCleanup = function.cleanup.empty();
    for (; row->declaration && *row->declaration; ++row) {
        listsInit = listsInit || (row->init && function.init == row->init);
        listsCleanup = listsCleanup || (row->cleanup && function.cleanup == row->cleanup);
    }
    return listsInit && listsCleanup;
}

template <class Function>
Function FunctionOf(void* library, const std::string& name)
{
    return name.empty() ? nullptr : std::bit_cast<Function>(dlsym(library, name.c_str()));
}

}  // namespace

QxShadeops::QxShadeops(const SqxShader& shader, const std::vector<std::string>& folders)
{
    for (const std::string& library : shader.libraries) {
        const std::string path = PathOf(library, folders);
        m_libraries.emplace_back(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL), dlclose);
        if (!m_libraries.back())
            throw QxHostError("Cannot load shadeop library '" + path + "': " + dlerror());
    }
    QxShadeopCheck check(shader);
    for (std::size_t i = 0; i < shader.functions.size(); ++i)
        Find(shader, i, check);
    check.Run();
    for (std::size_t i = 0; i < m_loaded.size(); ++i) {
        const SqxDSOFunction& function = shader.functions[i];
        void* const library = m_libraries[function.library].get();
        if (auto* const init = FunctionOf<void* (*)()>(library, function.init))
            m_loaded[i].data = init();
        m_cleanups.push_back(FunctionOf<void (*)(void*)>(library, function.cleanup));
    }
}

QxShadeops::~QxShadeops()
{
    for (std::size_t i = 0; i < m_cleanups.size(); ++i)
        if (m_cleanups[i])
            m_cleanups[i](m_loaded[i].data);
}

void QxShadeops::Find(const SqxShader& shader, std::size_t number, QxShadeopCheck& check)
{
    const SqxDSOFunction& function = shader.functions[number];
    void* const handle = m_libraries[function.library].get();
    using Method = void (*)(void*, int, void**);
    const auto method = FunctionOf<Method>(handle, function.method);
    const auto* row =
        static_cast<const QxShadeop*>(dlsym(handle, (function.method + "_shadeops").c_str()));
    if (!method || !row || !IsListed(row, function))
        throw QxHostError("Shadeop library '" + shader.libraries[function.library] +
                          "' has no shadeop '" + function.method + "'");
    for (; row->declaration && *row->declaration; ++row)
        check.Declare(number, row->declaration);
    m_loaded.push_back({method, nullptr, function.method});
}
