#pragma once

#include <filesystem>
#include <istream>
#include <set>
#include <string>
#include <vector>

/// The paths that a compile searched before it found its files. A file that appears there later
/// would be used instead. Makefiles cannot express this, so builds check it with this class.
class SqxSearchedPlaces {
public:
    using Folders = std::vector<std::filesystem::path>;

    /// Adds the paths at which a preprocessor may have looked without success before it found each
    /// header of a preprocessed text, as its line markers imply: only for headers in `folders`, and
    /// only paths at which there is no file now. `folders` are those of `-I`, in order; relative
    /// ones refer to the working directory.
    void AddHeaders(std::istream& preprocessed, const Folders& folders);
    /// Adds a path at which a header was not found. A file that has appeared there meanwhile counts
    /// as new.
    void AddMissing(const std::filesystem::path& header);
    /// Adds the folders that were searched for shadeop libraries, and all libraries in them.
    /// `taken` are the libraries that the shader calls, and `folders` are in the order of the
    /// search, which ended at the last folder that contains one of `taken`. If none does, adds
    /// nothing.
    void AddLibraries(const std::set<std::string>& taken, const Folders& folders);

    /// Paths at which a header was not found.
    [[nodiscard]] const std::set<std::string>& MissingHeaders() const { return m_missing; }
    /// True if a file has appeared at one of the paths, or a library in one of the folders, since
    /// the compile.
    [[nodiscard]] bool HasNewFiles() const;

    // Conversion to the text of a file and back, so that a later run can call `HasNewFiles`.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] static SqxSearchedPlaces Read(std::istream& text);

private:
    std::set<std::string> m_missing;
    std::set<std::string> m_folders;    // searched for libraries
    std::set<std::string> m_libraries;  // libraries that were in them
};
