#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// State that builds keep from one run to the next, in a separate folder: `stamps/ID` for each
/// source that is compiled (its path, and the name of its output), `owners/SHADER.sqx` for each
/// output (the path of its source), `failed/ID` for each source that was refused the last time it
/// was compiled (the reports), `searched/ID` for where the last good compile of a source looked in
/// vain, `work/ID` while a source is being compiled, and `options`, which are those of the last
/// build, for editors.
class SqxMakeState {
public:
    struct Stamp {
        std::string source;
        std::string output;  // a path, in the output folder
    };

    /// Looks at nothing yet.
    explicit SqxMakeState(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Makes the folders. Throws `SqxMakeError`.
    void Create() const;

    [[nodiscard]] const std::filesystem::path& Folder() const { return m_folder; }
    /// A name for the source that no other source has, readable and fit for a file. It follows from
    /// the absolute path alone, so that a source keeps it.
    [[nodiscard]] static std::string IdOf(const std::filesystem::path& source);
    // The files of a source by that name, whether they are there or not.
    [[nodiscard]] std::filesystem::path StampOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path FailureOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path SearchedOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path WorkOf(const std::string& id) const;

    /// Nothing if there is no such stamp, or none that was written whole.
    [[nodiscard]] static std::optional<Stamp> ReadStamp(const std::filesystem::path& path);
    /// Its time is what ninja compares. Throws `SqxMakeError`.
    static void WriteStamp(const std::filesystem::path& path, const Stamp& stamp);

    /// Makes `source` the owner of the output. Gives another source that owns it already and is
    /// still there, or nothing. Of two that claim it at a time one gets it. `output`: as in a
    /// stamp; `source`: an absolute path. Throws `SqxMakeError`.
    [[nodiscard]] std::optional<std::string> Claim(const std::string& output,
                                                   const std::string& source) const;
    /// Options of the compiler, and the folder that relative paths in them begin at.
    struct Options {
        std::filesystem::path folder;
        std::vector<std::string> words;
    };
    /// Throws `SqxMakeError`.
    void WriteOptions(const Options& options) const;
    /// Empty if no build has written them.
    [[nodiscard]] Options ReadOptions() const;

    /// Steps that begin after `Stop` do nothing, until `Resume`. Throws `SqxMakeError`.
    void Stop() const;
    void Resume() const;
    [[nodiscard]] bool IsStopped() const;

    /// Forgets the stamp, and removes the output that it names, unless that is another source's by
    /// now. A missing file is not a fault.
    void Discard(const std::filesystem::path& stamp,
                 const std::filesystem::path& outputFolder) const;

private:
    std::filesystem::path m_folder;
};

/// The text of a small file, nothing if it cannot be read.
[[nodiscard]] std::optional<std::string> SqxReadText(const std::filesystem::path& path);
/// Writes a file whole or not at all. Throws `SqxMakeError`.
void SqxWriteText(const std::filesystem::path& path, const std::string& text);
