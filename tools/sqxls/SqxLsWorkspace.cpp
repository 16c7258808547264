// A change only marks documents as stale: the changed one, and those whose last compile has read
// the changed file or has looked for it in vain. They are compiled when the next request needs them
// or when no message waits, so that a burst of changes costs one compile.
//
// Tested by tests/sqxls/SqxLsDocumentsTest.cpp.

#include "sqxls/SqxLsWorkspace.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "sqxls/SqxLsOpenStrings.h"
#include "sqxls/SqxLsUri.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t k_maxFile = std::size_t{64} << 20U;

std::int64_t VersionIn(const SqxJson& json)
{
    const SqxJson& version = SqxLsMember(json, "version");
    return version.is_number_integer() ? version.get<std::int64_t>() : 0;
}

void ApplyChange(const SqxJson& change, SqxLsText& text)
{
    const std::string& inserted = SqxLsTextMember(change, "text");
    if (SqxLsMember(change, "range").is_null())
        text = SqxLsText(inserted);
    else
        text.Replace(SqxLsReadRange(change["range"], text), inserted);
}

}  // namespace

bool SqxLsIsSource(const std::string& path)
{
    return !path.starts_with('/') || fs::path(path).extension() == ".sl";
}

std::string SqxLsNormalPath(const std::string& path)
{
    return path.starts_with('/') ? fs::path(path).lexically_normal().string() : path;
}

const SqxLsText* SqxLsAnalysis::TextOf(const std::string& file) const
{
    const auto found = texts.find(SqxLsNormalPath(file));
    return found == texts.end() ? nullptr : found->second.get();
}

void SqxLsWorkspace::Open(const SqxJson& item)
{
    SqxLsDocument document;
    document.uri = SqxLsTextMember(item, "uri");
    document.path = SqxLsPathOf(document.uri);
    document.version = VersionIn(item);
    document.text = std::make_shared<SqxLsText>(SqxLsTextMember(item, "text"));
    const std::string path = document.path;
    m_documents[document.uri] = std::move(document);
    MarkStale(path);
}

void SqxLsWorkspace::Change(const SqxJson& params)
{
    SqxLsDocument& document = DocumentOf(params);
    const SqxJson& identifier = SqxLsMember(params, "textDocument");
    const std::int64_t version = VersionIn(identifier);
    if (SqxLsMember(identifier, "version").is_number_integer() && version <= document.version)
        throw SqxLsError(SqxLsErrorCode::InvalidParams,
                         "Version " + std::to_string(version) + " of '" + document.uri +
                             "' is not newer than version " + std::to_string(document.version));
    const SqxJson& changes = SqxLsMember(params, "contentChanges");
    if (!changes.is_array())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "'contentChanges' must be an array");
    SqxLsText text = *document.text;
    for (const SqxJson& change : changes)
        ApplyChange(change, text);
    document.version = version;
    document.text = std::make_shared<SqxLsText>(std::move(text));
    MarkStale(document.path);
}

void SqxLsWorkspace::Close(const std::string& uri)
{
    const auto found = m_documents.find(uri);
    if (found == m_documents.end())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "'" + uri + "' is not open");
    const std::string path = found->second.path;
    m_documents.erase(found);
    m_previews.End(path);
    MarkStale(path);
}

void SqxLsWorkspace::MarkStale(const std::string& path)
{
    const bool isFlags = path.ends_with("/compile_flags.txt");
    for (auto& [uri, document] : m_documents) {
        const bool isRead = document.analysis && document.analysis->dependsOn.contains(path);
        if (!isFlags && document.path != path && !isRead)
            continue;
        document.analysis.reset();
        document.isPublished = false;
    }
}

void SqxLsWorkspace::SetSettings(const SqxLsSettings& settings)
{
    m_settings = settings;
    for (auto& [uri, document] : m_documents) {
        document.analysis.reset();
        document.isPublished = false;
    }
}

SqxLsDocument& SqxLsWorkspace::DocumentOf(const SqxJson& params)
{
    const std::string& uri = SqxLsTextMember(params, "textDocument/uri");
    const auto found = m_documents.find(uri);
    if (found == m_documents.end())
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "'" + uri + "' is not open");
    return found->second;
}

const SqxLsDocument* SqxLsWorkspace::DocumentAt(const std::string& path) const
{
    for (const auto& [uri, document] : m_documents)
        if (document.path == path)
            return &document;
    return nullptr;
}

std::shared_ptr<const SqxLsText> SqxLsWorkspace::TextOf(const std::string& path) const
{
    if (const SqxLsDocument* document = DocumentAt(SqxLsNormalPath(path)))
        return document->text;
    std::error_code failed;
    if (!fs::is_regular_file(path, failed) || fs::file_size(path, failed) > k_maxFile || failed)
        return nullptr;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return nullptr;
    return std::make_shared<SqxLsText>(std::string{std::istreambuf_iterator<char>(file), {}});
}

std::shared_ptr<const SqxLsAnalysis>
SqxLsWorkspace::Analyse(const std::string& path, const std::map<std::string, std::string>& texts)
{
    const auto own = texts.find(path);
    const auto source =
        own == texts.end() ? TextOf(path) : std::make_shared<const SqxLsText>(own->second);
    if (!source)
        return nullptr;
    auto analysis = std::make_shared<SqxLsAnalysis>();
    QxCompileOptions options = SqxLsOptionsFor(path, m_settings);
    options.makesIndex = true;
    options.readFile = [&](const std::string& file) -> std::optional<std::string> {
        const auto given = texts.find(SqxLsNormalPath(file));
        if (given != texts.end())
            return given->second;
        const SqxLsDocument* document = DocumentAt(SqxLsNormalPath(file));
        return document ? std::optional(document->text->Bytes()) : std::nullopt;
    };
    ++m_compiles;
    analysis->path = path;
    analysis->result = QxCompileText(path, source->Bytes(), options);
    analysis->result.output = {};
    analysis->texts[path] = source;
    for (const std::string& file : analysis->result.files) {
        const std::string normal = SqxLsNormalPath(file);
        analysis->dependsOn.insert(normal);
        if (!analysis->texts.contains(normal))
            if (auto text = TextOf(normal))
                analysis->texts[normal] = std::move(text);
    }
    for (const std::string& place : analysis->result.searchedPlaces)
        analysis->dependsOn.insert(SqxLsNormalPath(place));
    for (const auto& [file, text] : analysis->texts)
        SqxLsKeepOneOfOpenString(analysis->result.reports, file, *text);
    return analysis;
}

std::shared_ptr<const SqxLsAnalysis> SqxLsWorkspace::AnalysisOfSource(SqxLsDocument& document)
{
    if (!document.analysis)
        document.analysis = Analyse(document.path);
    return document.analysis;
}

SqxLsDocument* SqxLsWorkspace::Includer(const std::string& path)
{
    if (SqxLsIsSource(path))
        return nullptr;
    for (auto& [uri, document] : m_documents)
        if (document.path != path && SqxLsIsSource(document.path) &&
            AnalysisOfSource(document)->texts.contains(path))
            return &document;
    return nullptr;
}

std::shared_ptr<const SqxLsAnalysis> SqxLsWorkspace::AnalysisOf(SqxLsDocument& document)
{
    SqxLsDocument* includer = Includer(document.path);
    return AnalysisOfSource(includer ? *includer : document);
}
