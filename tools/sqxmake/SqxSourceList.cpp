// Folders are walked to their ground and the sources sorted, so that a library is compiled in the
// same order everywhere. What begins with a dot is passed over, as are folders of that kind, since
// version control and editors keep copies there. A source that is named twice is taken once.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxSourceList.h"

#include <set>
#include <system_error>

#include "sqxmake/SqxMakeOptions.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* k_extension = ".sl";

class Sources {
public:
    void AddFile(const fs::path& path)
    {
        if (path.extension() != k_extension)
            throw SqxMakeError("'" + path.string() + "' does not end with '.sl'");
        if (path.string().find('\n') != std::string::npos)
            throw SqxMakeError("A name with a line break cannot be built: '" + path.string() + "'");
        m_paths.insert(path.lexically_normal());
    }

    void AddFolder(const fs::path& folder)
    {
        const std::size_t before = m_paths.size();
        std::error_code failed;
        fs::recursive_directory_iterator entry(folder, failed);
        for (; !failed && entry != fs::recursive_directory_iterator(); entry.increment(failed)) {
            const bool isFolder = entry->is_directory();
            if (entry->path().filename().string().starts_with('.')) {
                if (isFolder)
                    entry.disable_recursion_pending();
            } else if (!isFolder && entry->path().extension() == k_extension) {
                AddFile(entry->path());
            }
        }
        if (failed)
            throw SqxMakeError("Folder '" + folder.string() +
                               "' cannot be read: " + failed.message());
        if (m_paths.size() == before)
            throw SqxMakeError("There are no shaders in '" + folder.string() + "'");
    }

    [[nodiscard]] std::vector<fs::path> Take() const { return {m_paths.begin(), m_paths.end()}; }

private:
    std::set<fs::path> m_paths;
};

}  // namespace

std::vector<fs::path> SqxListSources(const std::vector<std::string>& inputs)
{
    Sources sources;
    for (const std::string& input : inputs) {
        std::error_code failed;
        if (!fs::exists(input, failed))
            throw SqxMakeError("There is no file or folder '" + input + "'");
        if (fs::is_directory(input, failed))
            sources.AddFolder(input);
        else
            sources.AddFile(input);
    }
    return sources.Take();
}
