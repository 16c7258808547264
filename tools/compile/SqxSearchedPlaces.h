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

    /// Adds the paths for the headers of a preprocessed text, according to its line markers.
    /// `folders` are those of `-I`, in order; relative ones refer to the working directory.
    void AddHeaders(std::istream& preprocessed, const Folders& folders);
    /// Adds a path at which a header was not found. A file that has appeared there meanwhile counts
    /// as new.
    void AddMissing(const std::filesystem::path& header);
    /// Adds the places of shadeop libraries. `taken` are the libraries that the shader calls, and
    /// `folders` are searched in this order: of those up to the last one that contains such a
    /// library, adds each folder and all libraries in it.
    void AddLibraries(const std::set<std::string>& taken, const Folders& folders);

    /// Paths at which a header was not found.
    [[nodiscard]] const std::set<std::string>& MissingHeaders() const { return m_missing; }
    /// True if a file has appeared since then.
    [[nodiscard]] bool HasNewFiles() const;

    // Conversion to the text of a file, so that a later run can check.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] static SqxSearchedPlaces Read(std::istream& text);

private:
    std::set<std::string> m_missing;
    std::set<std::string> m_folders;    // searched for libraries
    std::set<std::string> m_libraries;  // libraries that were in them
};
