// Folders are searched recursively and the sources are sorted, so that a library is listed in the
// same order everywhere. The search skips files and folders whose names start with a dot, since
// version control and editors keep copies there. A source that is named twice is listed once.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxSourceList.h"

#include <map>
#include <system_error>

#include "make/SqxMakeWord.h"
#include "sqxmake/SqxMakeOptions.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* k_extension = ".sl";

class Sources {
public:
    /// `root` is the folder that was named, or the working directory for a file that was named.
    void AddFile(const fs::path& path, const fs::path& root)
    {
        if (path.extension() != k_extension)
            throw SqxMakeError("'" + path.string() + "' does not end with '.sl'");
        if (SqxHasLineBreak(path.string()))
            throw SqxMakeError("A name with a line break cannot be built: '" + path.string() + "'");
        const fs::path whole = fs::absolute(path).lexically_normal();
        m_sources.try_emplace(whole, SqxSource{path.lexically_normal(), FolderBelow(whole, root)});
    }

    void AddFolder(const fs::path& folder)
    {
        bool isEmpty = true;
        std::error_code failed;
        fs::recursive_directory_iterator entry(folder, failed);
        for (; !failed && entry != fs::recursive_directory_iterator(); entry.increment(failed)) {
            const bool isFolder = entry->is_directory();
            if (entry->path().filename().string().starts_with('.')) {
                if (isFolder)
                    entry.disable_recursion_pending();
            } else if (!isFolder && entry->path().extension() == k_extension) {
                AddFile(entry->path(), folder);
                isEmpty = false;
            }
        }
        if (failed)
            throw SqxMakeError("Folder '" + folder.string() +
                               "' cannot be read: " + failed.message());
        if (isEmpty)
            throw SqxMakeError("There are no shaders in '" + folder.string() + "'");
    }

    [[nodiscard]] std::vector<SqxSource> All() const
    {
        std::vector<SqxSource> sources;
        for (const auto& [path, source] : m_sources)
            sources.push_back(source);
        return sources;
    }

private:
    /// Returns the folder of the file `whole`, an absolute path, relative to `root`, for the output
    /// folder to mirror; "." if the file is not below `root`.
    [[nodiscard]] static fs::path FolderBelow(const fs::path& whole, const fs::path& root)
    {
        const fs::path from = (fs::absolute(root) / "").lexically_normal();
        const fs::path below = whole.parent_path().lexically_relative(from);
        return *below.begin() == ".." ? "." : below;
    }

    std::map<fs::path, SqxSource> m_sources;  // by absolute path
};

}  // namespace

std::vector<SqxSource> SqxListSources(const std::vector<std::string>& inputs)
{
    Sources sources;
    for (const std::string& input : inputs) {
        std::error_code failed;
        if (!fs::exists(input, failed))
            throw SqxMakeError("There is no file or folder '" + input + "'");
        if (fs::is_directory(input, failed))
            sources.AddFolder(input);
        else
            sources.AddFile(input, ".");
    }
    return sources.All();
}
