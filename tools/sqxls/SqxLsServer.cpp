// The protocol requires the order `initialize`, work, `shutdown`, `exit`. All requests except
// `initialize` and `shutdown` are in the table of SqxLsMethods.cpp, and SqxLsInbox handles
// `$/cancelRequest`. This file handles the other messages, which change the state of the server,
// and ignores unknown notifications.
//
// Tested by tests/sqxls.

#include "sqxls/SqxLsServer.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <utility>

#include "sqxls/SqxLsMethods.h"
#include "sqxls/SqxLsUri.h"
#include "support/QxVersion.h"

namespace {

constexpr std::string_view k_section = "shaderqx";

bool IsId(const SqxJson& id)
{
    return id.is_string() || id.is_number_integer();
}

/// Returns the settings of this server, which clients send as a section of an object or alone.
const SqxJson& SectionOf(const SqxJson& settings)
{
    const SqxJson& section = SqxLsMember(settings, k_section);
    return section.is_object() ? section : settings;
}

SqxLsClient ClientOf(const SqxJson& capabilities)
{
    SqxLsClient client;
    const auto can = [&](std::string_view path) { return SqxLsFlag(capabilities, path); };
    client.showsRelatedInformation = can("textDocument/publishDiagnostics/relatedInformation");
    client.watchesFiles = can("workspace/didChangeWatchedFiles/dynamicRegistration");
    client.answersConfiguration = can("workspace/configuration");
    client.showsDocuments = can("window/showDocument/support");
    client.refreshesHints = can("workspace/inlayHint/refreshSupport");
    client.refreshesTokens = can("workspace/semanticTokens/refreshSupport");
    return client;
}

std::vector<std::string> FoldersOf(const SqxJson& params)
{
    std::vector<std::string> folders;
    const SqxJson& list = SqxLsMember(params, "workspaceFolders");
    if (list.is_array())
        for (const SqxJson& folder : list)
            if (const SqxJson& uri = SqxLsMember(folder, "uri"); uri.is_string())
                folders.push_back(SqxLsPathOf(uri.get_ref<const std::string&>()));
    if (const SqxJson& root = SqxLsMember(params, "rootUri"); folders.empty() && root.is_string())
        folders.push_back(SqxLsPathOf(root.get_ref<const std::string&>()));
    return folders;
}

}  // namespace

SqxLsServer::SqxLsServer(Send send) : m_send(std::move(send)) {}

void SqxLsServer::SendError(const SqxJson& id, SqxLsErrorCode code, const std::string& text)
{
    m_send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}});
}

void SqxLsServer::Log(const std::string& text)
{
    constexpr int k_warning = 2;
    m_send({{"jsonrpc", "2.0"},
            {"method", "window/logMessage"},
            {"params", {{"type", k_warning}, {"message", text}}}});
}

void SqxLsServer::Ask(const char* method, SqxJson params)
{
    SqxJson message = {{"jsonrpc", "2.0"}, {"id", ++m_lastId}, {"method", method}};
    if (!params.is_null())
        message["params"] = std::move(params);
    m_send(message);
}

void SqxLsServer::Receive(const SqxLsInbox::Message& message)
{
    if (!message.fault.empty())
        return SendError(nullptr, SqxLsErrorCode::ParseError, message.fault);
    const SqxJson& json = message.json;
    const SqxJson& id = SqxLsMember(json, "id");
    const SqxJson& method = SqxLsMember(json, "method");
    const bool hasId = json.is_object() && json.contains("id");
    if (json.is_object() && !json.contains("method") && IsId(id))
        return Response(json);
    if (!method.is_string() || (hasId && !IsId(id)))
        return SendError(IsId(id) ? id : SqxJson(), SqxLsErrorCode::InvalidRequest,
                         "A message must be a request, a notification or an answer");
    if (!hasId)
        return Notification(method, SqxLsMember(json, "params"));
    if (message.isCancelled)
        return SendError(id, SqxLsErrorCode::RequestCancelled, "The request is cancelled");
    Request(id, method, SqxLsMember(json, "params"));
}

void SqxLsServer::Request(const SqxJson& id, const std::string& method, const SqxJson& params)
{
    try {
        const SqxJson result = AnswerOf(method, params);
        m_send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
        if (SqxLsFlag(result, "external"))
            Ask("window/showDocument", {{"uri", result["uri"]}, {"external", true}});
    } catch (const SqxLsError& error) {
        SendError(id, error.Code(), error.what());
    } catch (const std::exception& error) {
        SendError(id, SqxLsErrorCode::InternalError, error.what());
    }
}

SqxJson SqxLsServer::AnswerOf(const std::string& method, const SqxJson& params)
{
    if (m_phase == Phase::ShutDown)
        throw SqxLsError(SqxLsErrorCode::InvalidRequest, "The server is shut down");
    if (method == "initialize")
        return Initialize(params);
    if (m_phase == Phase::New)
        throw SqxLsError(SqxLsErrorCode::ServerNotInitialized, "'initialize' comes first");
    if (method == "shutdown") {
        m_phase = Phase::ShutDown;
        return nullptr;
    }
    for (const SqxLsMethod& row : SqxLsMethods())
        if (row.name == method)
            return row.answer(m_workspace, params);
    throw SqxLsError(SqxLsErrorCode::MethodNotFound, "There is no method '" + method + "'");
}

SqxJson SqxLsServer::Initialize(const SqxJson& params)
{
    if (m_phase != Phase::New)
        throw SqxLsError(SqxLsErrorCode::InvalidRequest, "The server is initialized already");
    m_phase = Phase::Initialized;
    m_workspace.SetClient(ClientOf(SqxLsMember(params, "capabilities")));
    m_workspace.SetFolders(FoldersOf(params));
    m_root = m_workspace.Folders().empty() ? std::filesystem::current_path().string()
                                           : m_workspace.Folders().front();
    ChangeConfiguration(SqxLsMember(params, "initializationOptions"));
    const std::unique_ptr<char, decltype(&std::free)> version(QxGetVersionString(), &std::free);
    return {{"capabilities", SqxLsCapabilities()},
            {"serverInfo", {{"name", "sqxls"}, {"version", version.get()}}}};
}

void SqxLsServer::Initialized()
{
    if (m_workspace.Client().answersConfiguration)
        AskForConfiguration();
    if (!m_workspace.Client().watchesFiles)
        return;
    const SqxJson watchers = {{{"globPattern", "**/*.{sl,h,slh,sli,inc}"}},
                              {{"globPattern", "**/compile_flags.txt"}}};
    Ask("client/registerCapability", {{"registrations",
                                       {{{"id", "files"},
                                         {"method", "workspace/didChangeWatchedFiles"},
                                         {"registerOptions", {{"watchers", watchers}}}}}}});
}

void SqxLsServer::AskForConfiguration()
{
    Ask("workspace/configuration", SqxJson::parse(R"({"items": [{"section": "shaderqx"}]})"));
    m_configurationId = m_lastId;
}

void SqxLsServer::ChangeConfiguration(const SqxJson& settings)
{
    m_workspace.SetSettings(SqxLsReadSettings(SectionOf(settings), m_root));
}

void SqxLsServer::RefreshViews()
{
    if (m_workspace.Client().refreshesHints)
        Ask("workspace/inlayHint/refresh", nullptr);
    if (m_workspace.Client().refreshesTokens)
        Ask("workspace/semanticTokens/refresh", nullptr);
}

void SqxLsServer::Response(const SqxJson& message)
{
    const SqxJson& result = SqxLsMember(message, "result");
    if (m_configurationId == 0 || message["id"] != m_configurationId)
        return;
    m_configurationId = 0;
    if (result.is_array() && !result.empty() && result[0].is_object()) {
        ChangeConfiguration(result[0]);
        RefreshViews();
    }
}

void SqxLsServer::Notification(const std::string& method, const SqxJson& params)
{
    if (method == "exit")
        m_exitStatus = StatusAtEnd();
    if (m_phase != Phase::Initialized)
        return;
    try {
        if (method == "initialized") {
            Initialized();
        } else if (method == "textDocument/didOpen") {
            m_workspace.Open(SqxLsMember(params, "textDocument"));
        } else if (method == "textDocument/didChange") {
            m_workspace.Change(params);
        } else if (method == "textDocument/didSave") {
            m_workspace.MarkStale(SqxLsPathOf(SqxLsTextMember(params, "textDocument/uri")));
        } else if (method == "textDocument/didClose") {
            const std::string uri = SqxLsTextMember(params, "textDocument/uri");
            m_workspace.Close(uri);
            for (const SqxJson& cleared : m_publisher.Publish(m_workspace, uri, {}))
                m_send(cleared);
        } else if (method == "workspace/didChangeWatchedFiles") {
            const SqxJson& changes = SqxLsMember(params, "changes");
            if (changes.is_array())
                for (const SqxJson& change : changes)
                    m_workspace.MarkStale(SqxLsPathOf(SqxLsTextMember(change, "uri")));
            RefreshViews();
        } else if (method == "workspace/didChangeConfiguration") {
            if (SqxLsMember(params, "settings").is_object()) {
                ChangeConfiguration(params["settings"]);
                RefreshViews();
            } else if (m_workspace.Client().answersConfiguration) {
                AskForConfiguration();
            }
        }
    } catch (const std::exception& error) {
        Log(method + ": " + error.what());
    }
}

bool SqxLsServer::Settle()
{
    for (auto& [uri, document] : m_workspace.Documents()) {
        if (document.isPublished)
            continue;
        document.isPublished = true;  // also if the compile throws, since it would throw again
        try {
            PublishOf(document);
        } catch (const std::exception& error) {
            Log("The compile of '" + document.path + "' failed: " + error.what());
        }
        return true;
    }
    return false;
}

void SqxLsServer::PublishOf(SqxLsDocument& document)
{
    std::map<std::string, SqxJson> diagnostics;
    if (SqxLsIsSource(document.path))  // others are compiled with the sources that include them
        diagnostics = SqxLsDiagnosticsOf(*m_workspace.AnalysisOf(document), m_workspace.Client());
    for (const SqxJson& message :
         m_publisher.Publish(m_workspace, document.uri, std::move(diagnostics)))
        m_send(message);
}
