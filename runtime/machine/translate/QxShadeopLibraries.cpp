// A shader names functions of libraries, and may come from an untrusted source. So only methods
// for which a library exports a table, and functions that it names, are called: a shader that calls
// `system` is rejected, since no library has a table for it.
//
// Tested by tests/shadeops.

#include "machine/translate/QxShadeopLibraries.h"

#include <filesystem>
#include <system_error>

#include "QxHostError.h"
#include "sqx/SqxShadeopTable.h"

namespace {

/// True if the method's table, whose records these are, has any, and they name its init and cleanup
/// functions: otherwise the shader could call any function that the library exports. The two names
/// may come from different records: for all overloads, the compiler uses the first of each kind.
bool IsListed(const std::vector<SqxShadeopRecord>& records, const SqxDSOFunction& function)
{
    bool listsInit = function.init.empty();
    bool listsCleanup = function.cleanup.empty();
    for (const SqxShadeopRecord& record : records) {
        listsInit = listsInit || function.init == record.init;
        listsCleanup = listsCleanup || function.cleanup == record.cleanup;
    }
    return !records.empty() && listsInit && listsCleanup;
}

std::string MissingText(const std::string& library, const std::string& shadeop,
                        const std::string& function)
{
    const std::string text = "Shadeop library '" + library + "' has no ";
    if (function == shadeop)
        return text + "shadeop '" + shadeop + "'";
    return text + "function '" + function + "', which shadeop '" + shadeop + "' needs";
}

}  // namespace

std::string QxShadeopLibraries::PathIn(const std::vector<std::string>& folders,
                                       const std::string& library)
{
    for (const std::string& folder : folders) {
        std::string path = folder;
        path.append("/").append(library);
        std::error_code error;  // a folder that cannot be read has no library
        if (std::filesystem::is_regular_file(path, error))
            return std::filesystem::absolute(path).string();
    }
    return "";
}

QxShadeopLibraries::QxShadeopLibraries(const std::vector<std::string>& names,
                                       const std::vector<std::string>& folders)
{
    for (const std::string& name : names) {
        std::string path = PathIn(folders, name);
        if (path.empty())
            throw QxHostError("There is no shadeop library '" + name + "' in the given folders");
        SqxElfFile file = SqxElfFile::Open(path);
        if (!file.IsLibrary())
            throw QxHostError("Cannot load shadeop library '" + path +
                              "': it is no library of this machine, or cut short");
        m_libraries.push_back({name, std::move(path), std::move(file)});
    }
}

std::vector<std::string> QxShadeopLibraries::DeclarationsOf(const SqxDSOFunction& shadeop) const
{
    const Library& library = m_libraries[shadeop.library];
    const SqxShadeopTable table(library.file, shadeop.method);
    if (!IsListed(table.Records(), shadeop))
        throw QxHostError(MissingText(library.name, shadeop.method, shadeop.method));
    for (const std::string& function : {shadeop.method, shadeop.init, shadeop.cleanup})
        if (!function.empty() && library.file.Find(function).kind != SqxElfFile::Kind::Function)
            throw QxHostError(MissingText(library.name, shadeop.method, function));
    std::vector<std::string> declarations;
    for (const SqxShadeopRecord& record : table.Records())
        declarations.emplace_back(record.declaration);
    return declarations;
}
