// Sends a sequence of messages, one per line, to the language server. The server is initialized
// first, in a folder that does not exist. Requests that start programs are skipped.

#include <cstdio>
#include <string>
#include <string_view>

#include "fuzz/FuzzTarget.h"
#include "sqxls/SqxLsServer.h"

namespace {

constexpr const char* k_initialize = R"({"jsonrpc": "2.0", "id": "first", "method": "initialize",
    "params": {"rootUri": "file:///nowhere", "capabilities": {"textDocument": {
        "publishDiagnostics": {"relatedInformation": true},
        "completion": {"completionItem": {"snippetSupport": true}}}}}})";
constexpr const char* k_open = R"({"method": "textDocument/didOpen", "params": {"textDocument": {
    "uri": "file:///nowhere/last.sl", "version": 1,
    "text": "surface last(float Kd = 1)\n{\n    Ci = Kd * nothing;\n}\n"}}})";
constexpr const char* k_hover = R"({"id": "last", "method": "textDocument/hover", "params": {
    "textDocument": {"uri": "file:///nowhere/last.sl"}, "position": {"line": 2, "character": 9}}})";

/// Counts the messages of all inputs, and prints the count now and then.
class Count {
public:
    void Increase()
    {
        if (++m_count % 100000 == 0)
            std::fprintf(stderr, "%lu messages\n", m_count);
    }

private:
    unsigned long m_count = 0;
};

/// A server, and the text of all messages that it sends.
class Session {
public:
    Session() : m_server([this](const SqxJson& message) { Sent(message); })
    {
        Receive(k_initialize);
    }

    void Receive(std::string_view text)
    {
        m_inbox.Add({std::string(text), ""});
        if (m_inbox.IsEmpty())
            return;
        const SqxLsInbox::Message message = *m_inbox.Take();
        const SqxJson& method = SqxLsMember(message.json, "method");
        if (method == "workspace/executeCommand")
            return;
        m_changesSettings = m_changesSettings || method == "workspace/didChangeConfiguration";
        const SqxJson id = SqxLsMember(message.json, "id");
        const bool isRequest = method.is_string() && (id.is_string() || id.is_number_integer());
        m_answers = 0;
        m_asked = isRequest ? id : SqxJson();
        m_server.Receive(message);
        if (isRequest && m_answers != 1)
            FuzzFault("a request has " + std::to_string(m_answers) + " answers");
    }

    void Settle()
    {
        while (m_server.Settle()) {
        }
    }

    /// Returns what the server sends about a file that is opened last, after all others are closed.
    std::string Last()
    {
        while (!Uris().empty()) {
            const SqxJson close = {{"method", "textDocument/didClose"},
                                   {"params", {{"textDocument", {{"uri", Uris().front()}}}}}};
            Receive(close.dump());
        }
        m_sent.clear();
        Receive(k_open);
        Settle();
        Receive(k_hover);
        return m_sent;
    }

    [[nodiscard]] bool ChangesSettings() const { return m_changesSettings; }
    [[nodiscard]] bool IsOver() const
    {
        return m_server.StatusAtEnd() == 0 || m_server.ExitStatus();
    }

private:
    void Sent(const SqxJson& message)
    {
        m_sent += message.dump(-1, ' ', false, SqxJson::error_handler_t::replace) + "\n";
        const bool isAnswer = message.contains("result") || message.contains("error");
        m_answers += isAnswer && message["id"] == m_asked ? 1 : 0;
    }

    [[nodiscard]] std::vector<std::string> Uris() const
    {
        std::vector<std::string> uris;
        for (const auto& [uri, document] : m_server.Workspace().Documents())
            uris.push_back(uri);
        return uris;
    }

    SqxLsInbox m_inbox;
    std::string m_sent;
    SqxJson m_asked;
    int m_answers = 0;
    bool m_changesSettings = false;
    SqxLsServer m_server;  // last, since messages that it sends change the fields before it
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::string fresh = Session().Last();
    static Count count;
    Session session;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        session.Receive(line);
        count.Increase();
    }
    session.Settle();
    if (!session.IsOver() && !session.ChangesSettings() && session.Last() != fresh)
        FuzzFault("a file that is closed leaves something behind");
    return 0;
}
