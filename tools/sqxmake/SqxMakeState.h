#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The state that builds keep from one run to the next, in a separate folder: `stamps/ID` for each
/// compiled source (its path, and that of its output), `owners/OUTPUT` for each output (the path of
/// its source), `failed/ID` for each source whose last compile failed (the reports), `searched/ID`
/// for the paths that the last successful compile searched, `unnamed/ID` for files that the compile
/// has read but ninja cannot name, `work/ID` while a source is being compiled, `options` of the
/// last build, for the language server, and `stopped` between `Stop` and `Resume`.
class SqxMakeState {
public:
    struct Stamp {
        std::string source;
        std::string output;  // relative to the output folder
    };

    /// Does not access the folder yet.
    explicit SqxMakeState(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Creates the folder and its subfolders. Throws `SqxMakeError` if that fails.
    void Create() const;

    [[nodiscard]] const std::filesystem::path& Folder() const { return m_folder; }
    /// Returns a readable file name for a source, made unique by a hash of the absolute path. It
    /// depends only on this path, so it is the same in each run.
    [[nodiscard]] static std::string IdOf(const std::filesystem::path& source);
    // Return the paths of the state files and of the work folder of the source whose `IdOf` is
    // `id`. The files and the folder need not exist.
    [[nodiscard]] std::filesystem::path StampOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path FailureOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path SearchedOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path UnnamedOf(const std::string& id) const;
    [[nodiscard]] std::filesystem::path WorkOf(const std::string& id) const;

    /// Reads a stamp. Returns nothing if it does not exist or is incomplete.
    [[nodiscard]] static std::optional<Stamp> ReadStamp(const std::filesystem::path& path);
    /// Writes a stamp, whose time ninja compares. Throws `SqxMakeError` if that fails.
    static void WriteStamp(const std::filesystem::path& path, const Stamp& stamp);

    /// Makes `source` the owner of `output` and returns nothing. If another source, which still
    /// exists, owns the output already, returns that source instead. If two sources claim an output
    /// at the same time, one of them gets it. `output` is as in a stamp, and `source` is an
    /// absolute path. Throws `SqxMakeError` if the state cannot be locked or written.
    [[nodiscard]] std::optional<std::string> Claim(const std::string& output,
                                                   const std::string& source) const;
    /// Makes the stamp of a source, if it has one, older than the source, so that ninja compiles
    /// the source again.
    void MarkStale(const std::filesystem::path& source) const;
    /// True if `MarkStale` made the stamp older, and the source has not been compiled or changed
    /// since then.
    [[nodiscard]] bool IsStale(const std::filesystem::path& source) const;
    /// Stores the files that a compile has read and that ninja cannot name, in place of those of an
    /// earlier compile. Throws `SqxMakeError` if that fails.
    void WriteUnnamed(const std::string& id, const std::vector<std::string>& files) const;
    /// True if a file of the last `WriteUnnamed` is gone or newer than the stamp of the source.
    [[nodiscard]] bool HasChangedUnnamed(const std::string& id) const;

    /// Options of the compiler, and the folder that relative paths in them refer to.
    struct Options {
        std::filesystem::path folder;
        std::vector<std::string> words;
    };
    /// Stores the options of a build. Throws `SqxMakeError` if that fails.
    void WriteOptions(const Options& options) const;
    /// Returns the options of the last build; empty if no build has stored them.
    [[nodiscard]] Options ReadOptions() const;

    /// Between `Stop` and `Resume`, steps that a build starts compile nothing. `Stop` throws
    /// `SqxMakeError` if the state cannot be written.
    void Stop() const;
    void Resume() const;
    [[nodiscard]] bool IsStopped() const;

    /// Removes a stamp and the files `searched/ID` and `unnamed/ID` of its source. If the source
    /// still owns its output, also removes the output and the entry of its owner, while no other
    /// source can claim them. Missing files, and files that cannot be removed, are ignored.
    void Discard(const std::filesystem::path& stamp,
                 const std::filesystem::path& outputFolder) const;

private:
    std::filesystem::path m_folder;
};

/// Returns the contents of a file, or nothing if it cannot be opened.
[[nodiscard]] std::optional<std::string> SqxReadText(const std::filesystem::path& path);
/// Writes a file completely or not at all. Throws `SqxMakeError` if that fails.
void SqxWriteText(const std::filesystem::path& path, const std::string& text);
