#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "sqxls/SqxLsDiagnostics.h"
#include "sqxls/SqxLsInbox.h"
#include "sqxls/SqxLsWorkspace.h"

/// Implements the Language Server Protocol 3.17: handles messages one after the other, and sends
/// answers, diagnostics and requests of the server to the editor. A faulty request or an unreadable
/// message is answered by an error of the protocol; an error in a notification is logged. No
/// message except `exit` ends the server.
class SqxLsServer {
public:
    using Send = std::function<void(const SqxJson& message)>;

    /// `send` sends a message to the editor.
    explicit SqxLsServer(Send send);

    /// Handles one message.
    void Receive(const SqxLsInbox::Message& message);
    /// Publishes the diagnostics of one document whose diagnostics may have changed, compiling it
    /// if necessary; returns false if there is no such document. Called while no message waits.
    bool Settle();
    /// Returns the exit status once the editor has sent `exit`: 0 if `shutdown` came before it,
    /// otherwise 1. Returns nothing before that.
    [[nodiscard]] std::optional<int> ExitStatus() const { return m_exitStatus; }
    /// Returns the exit status if the stream ends without `exit`.
    [[nodiscard]] int StatusAtEnd() const { return m_phase == Phase::ShutDown ? 0 : 1; }
    [[nodiscard]] const SqxLsWorkspace& Workspace() const { return m_workspace; }

private:
    enum class Phase { New, Initialized, ShutDown };

    void Request(const SqxJson& id, const std::string& method, const SqxJson& params);
    void Notification(const std::string& method, const SqxJson& params);
    void Response(const SqxJson& message);
    [[nodiscard]] SqxJson AnswerOf(const std::string& method, const SqxJson& params);
    [[nodiscard]] SqxJson Initialize(const SqxJson& params);
    void Initialized();
    void ChangeConfiguration(const SqxJson& settings);
    void AskForConfiguration();
    /// Sends a request to the editor, without parameters if `params` is null.
    void Ask(const char* method, SqxJson params);
    /// Asks the editor to request inlay hints and semantic tokens again, each only if it supports
    /// that. Editors do so by themselves only for a document that they have changed.
    void RefreshViews();
    void PublishOf(SqxLsDocument& document);
    void SendError(const SqxJson& id, SqxLsErrorCode code, const std::string& text);
    void Log(const std::string& text);

    Send m_send;
    Phase m_phase = Phase::New;
    std::optional<int> m_exitStatus;
    SqxLsWorkspace m_workspace;
    SqxLsPublisher m_publisher;
    std::string m_root;         // folder that relative paths of settings refer to
    int m_lastId = 0;           // of our own requests
    int m_configurationId = 0;  // of our unanswered request for the settings; 0 if none
};
