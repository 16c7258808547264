#pragma once

#include <filesystem>
#include <istream>
#include <set>
#include <string>
#include <vector>

/// The places that a compile searched before it found its files: a file that appears there later
/// would be taken in its place. Makefiles have no words for that, so that builds have to ask.
class SqxSearchedPlaces {
public:
    using Folders = std::vector<std::filesystem::path>;

    /// The places of the headers that the preprocessed text is made of, according to its line
    /// markers. `folders` are those of `-I` in their order, as the preprocessor was given them;
    /// relative ones are of the working directory.
    void AddHeaders(std::istream& preprocessed, const Folders& folders);
    /// Adds a path at which a header was not found, unless there is one now.
    void AddMissing(const std::filesystem::path& header);
    /// Adds the places of the used shadeop libraries: all libraries in the searched folders.
    void AddLibraries(const std::set<std::string>& taken, const Folders& folders);

    /// Paths at which a header was not found.
    [[nodiscard]] const std::set<std::string>& MissingHeaders() const { return m_missing; }
    /// Something has come since then.
    [[nodiscard]] bool HasNews() const;

    // As the text of a file, to be asked another time.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] static SqxSearchedPlaces Read(std::istream& text);

private:
    std::set<std::string> m_missing;
    std::set<std::string> m_folders;    // looked through for libraries
    std::set<std::string> m_libraries;  // that were in them
};
