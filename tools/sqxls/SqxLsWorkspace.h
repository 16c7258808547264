#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "compiler/QxCompiler.h"
#include "sqxls/SqxLsClient.h"
#include "sqxls/SqxLsJson.h"
#include "sqxls/SqxLsPreviews.h"
#include "sqxls/SqxLsSettings.h"
#include "sqxls/SqxLsText.h"

/// The result of compiling a source, and the texts of the files that the compile has read.
struct SqxLsAnalysis {
    std::string path;  // of the source
    QxCompileResult result;
    std::set<std::string> dependsOn;  // paths that the compile read, or at which it found no file
    std::map<std::string, std::shared_ptr<const SqxLsText>> texts;  // by path

    /// Returns the text of a file that the compile has read; null for any other file.
    [[nodiscard]] const SqxLsText* TextOf(const std::string& path) const;
};

/// A file that an editor has open.
struct SqxLsDocument {
    std::string uri;  // as the editor writes it
    std::string path;
    std::int64_t version = 0;
    std::shared_ptr<const SqxLsText> text;
    std::shared_ptr<const SqxLsAnalysis> analysis;  // null if none is up to date
    bool isPublished = false;                       // the diagnostics of this state are published
};

/// The open files and the results of compiling them. Of a closed file, only the text is kept, and
/// only in the analyses of open sources that include it.
class SqxLsWorkspace {
public:
    // `Open`, `Change` and `Close` apply notifications of the protocol. They throw `SqxLsError` for
    // an invalid one.
    void Open(const SqxJson& item);
    /// Applies the changes in order. A version that is not newer than the current one is refused,
    /// since its changes apply to another text.
    void Change(const SqxJson& params);
    /// Removes a document and ends its preview.
    void Close(const std::string& uri);
    /// Discards the analyses that depend on the file; for a `compile_flags.txt`, all analyses. The
    /// diagnostics of these documents must be published again.
    void MarkStale(const std::string& path);
    /// Sets the settings and discards all analyses, since the options may differ. The diagnostics
    /// of all documents must be published again.
    void SetSettings(const SqxLsSettings& settings);
    /// Sets the folders of the workspace, in which its symbols are searched.
    void SetFolders(std::vector<std::string> folders) { m_folders = std::move(folders); }
    [[nodiscard]] const std::vector<std::string>& Folders() const { return m_folders; }
    [[nodiscard]] const SqxLsSettings& Settings() const { return m_settings; }
    void SetClient(const SqxLsClient& client) { m_client = client; }
    [[nodiscard]] const SqxLsClient& Client() const { return m_client; }
    [[nodiscard]] SqxLsPreviews& Previews() { return m_previews; }

    /// Returns the document that "textDocument/uri" in the parameters names. Throws `SqxLsError` if
    /// there is no such member, or if the document is not open.
    [[nodiscard]] SqxLsDocument& DocumentOf(const SqxJson& params);
    [[nodiscard]] std::map<std::string, SqxLsDocument>& Documents() { return m_documents; }
    [[nodiscard]] const std::map<std::string, SqxLsDocument>& Documents() const
    {
        return m_documents;
    }
    /// Returns the document with this path; null if no editor has the file open.
    [[nodiscard]] const SqxLsDocument* DocumentAt(const std::string& path) const;

    /// Returns the analysis of a document; for one that is not a source (`SqxLsIsSource`), that of
    /// an open source that includes it, if there is one. Compiles only sources whose analysis has
    /// been discarded or never made.
    [[nodiscard]] std::shared_ptr<const SqxLsAnalysis> AnalysisOf(SqxLsDocument& document);
    /// Compiles a file, which need not be open, and does not store the result. `texts`, by path,
    /// replace the contents of files. Returns null if the file cannot be read.
    [[nodiscard]] std::shared_ptr<const SqxLsAnalysis>
    Analyse(const std::string& path, const std::map<std::string, std::string>& texts = {});
    /// Returns the number of compiles so far, for tests.
    [[nodiscard]] std::size_t CompileCount() const { return m_compiles; }

    /// Returns the text of a file, from the editor if the file is open and otherwise from the disk;
    /// null if it cannot be read or is larger than 64 MB.
    [[nodiscard]] std::shared_ptr<const SqxLsText> TextOf(const std::string& path) const;

private:
    [[nodiscard]] std::shared_ptr<const SqxLsAnalysis> AnalysisOfSource(SqxLsDocument& document);
    [[nodiscard]] SqxLsDocument* Includer(const std::string& path);

    std::map<std::string, SqxLsDocument> m_documents;  // by URI
    std::vector<std::string> m_folders;
    SqxLsSettings m_settings;
    SqxLsClient m_client;
    SqxLsPreviews m_previews;
    std::size_t m_compiles = 0;
};

/// True for a source: its path ends in ".sl", or is the URI of a text that was never saved.
[[nodiscard]] bool SqxLsIsSource(const std::string& path);
/// Returns an absolute path without "." and "..", for comparisons; any other text unchanged.
[[nodiscard]] std::string SqxLsNormalPath(const std::string& path);
