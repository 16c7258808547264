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

/// A compile of a source, and the texts of the files that it has read.
struct SqxLsAnalysis {
    std::string path;  // of the source
    QxCompileResult result;
    std::set<std::string> dependsOn;  // paths of files that it has read or has looked for in vain
    std::map<std::string, std::shared_ptr<const SqxLsText>> texts;  // by path

    /// A file that was read, by any of its names; null for another one.
    [[nodiscard]] const SqxLsText* TextOf(const std::string& path) const;
};

/// A file that an editor has open.
struct SqxLsDocument {
    std::string uri;  // as the editor writes it
    std::string path;
    std::int64_t version = 0;
    std::shared_ptr<const SqxLsText> text;
    std::shared_ptr<const SqxLsAnalysis> analysis;  // null: what it was made of has changed
    bool isPublished = false;                       // the diagnostics of this state
};

/// The open files, and what is known of them. Nothing is kept of a file that is closed.
class SqxLsWorkspace {
public:
    // Of the notifications of the protocol. Throw `SqxLsError`.
    void Open(const SqxJson& item);
    /// Applies the changes in their order. Those of a version that is not newer than the one held
    /// are refused: they were made of another text.
    void Change(const SqxJson& params);
    void Close(const std::string& uri);
    /// Makes every document that reads the file be analyzed again.
    void MarkStale(const std::string& path);
    void SetSettings(const SqxLsSettings& settings);
    /// Other folders than those of the open files, for the symbols of the workspace.
    void SetFolders(std::vector<std::string> folders) { m_folders = std::move(folders); }
    [[nodiscard]] const std::vector<std::string>& Folders() const { return m_folders; }
    [[nodiscard]] const SqxLsSettings& Settings() const { return m_settings; }
    void SetClient(const SqxLsClient& client) { m_client = client; }
    [[nodiscard]] const SqxLsClient& Client() const { return m_client; }
    [[nodiscard]] SqxLsPreviews& Previews() { return m_previews; }

    /// The document that "textDocument/uri" of the parameters names. Throws `SqxLsError` if it is
    /// not open.
    [[nodiscard]] SqxLsDocument& DocumentOf(const SqxJson& params);
    [[nodiscard]] std::map<std::string, SqxLsDocument>& Documents() { return m_documents; }
    [[nodiscard]] const std::map<std::string, SqxLsDocument>& Documents() const
    {
        return m_documents;
    }
    /// Null if no editor has it open.
    [[nodiscard]] const SqxLsDocument* DocumentAt(const std::string& path) const;

    /// The compile of a document: of itself, or of an open source that includes it. At most one
    /// compile for each change of what it is made of.
    [[nodiscard]] std::shared_ptr<const SqxLsAnalysis> AnalysisOf(SqxLsDocument& document);
    /// Whether another open document, which is a source, includes this one. Compiles what has
    /// changed.
    [[nodiscard]] bool IsIncluded(const SqxLsDocument& document);
    /// A compile of a file that need not be open, which is not kept. `texts`, by path, take the
    /// place of the contents of files.
    [[nodiscard]] std::shared_ptr<const SqxLsAnalysis>
    Analyse(const std::string& path, const std::map<std::string, std::string>& texts = {});
    [[nodiscard]] std::size_t CompileCount() const { return m_compiles; }

    /// The text of a file: as an editor has it, or from the disk; null if it cannot be read.
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

/// Whether a file by that name is a shader, and not a part of one.
[[nodiscard]] bool SqxLsIsSource(const std::string& path);
/// The path of a file as other files compare it.
[[nodiscard]] std::string SqxLsNormalPath(const std::string& path);
