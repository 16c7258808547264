#pragma once

#include <map>
#include <string>
#include <vector>

#include "helpers/TemporaryFolder.h"
#include "sqxls/SqxLsServer.h"

/// An editor that works in a temporary folder and exchanges whole messages with a server in the
/// same process.
class LsEditor {
public:
    /// Initializes the server. `settings` are the initialization options; `capabilities` are those
    /// of the editor.
    explicit LsEditor(const SqxJson& settings = SqxJson::object(),
                      const SqxJson& capabilities = DefaultCapabilities());

    [[nodiscard]] static SqxJson DefaultCapabilities();
    [[nodiscard]] static std::string Uri(const std::string& name);

    void Open(const std::string& name, const std::string& text);
    /// Replaces the first occurrence of `before` in an open file by `after`, with an incremental
    /// change. Fails the test if there is none.
    void Replace(const std::string& name, const std::string& before, const std::string& after);
    /// Replaces the text of an open file by the same text.
    void ReplaceBySame(const std::string& name);
    void Change(const std::string& name, const SqxJson& changes, int version);
    void Close(const std::string& name);

    void Notify(const std::string& method, const SqxJson& params);
    /// Sends a request and returns its result. Fails the test and returns null if the server
    /// refuses it.
    SqxJson Ask(const std::string& method, const SqxJson& params);
    /// Sends a request and returns its error. Fails the test and returns null if the server accepts
    /// it.
    SqxJson Refused(const std::string& method, const SqxJson& params);
    /// Does the same as `Ask` for a request about a file, or about the place of the bar in `mark`,
    /// such as `before|after`, if that is not empty.
    SqxJson AskAt(const std::string& method, const std::string& name, const std::string& mark = "",
                  SqxJson params = SqxJson::object());
    void Receive(const SqxJson& message) { m_server.Receive({message, "", false}); }
    [[nodiscard]] SqxLsServer& Server() { return m_server; }

    /// Lets the server do the work that it does while it is idle.
    void Pause();
    /// Calls `Pause`. Returns "LINE:CHARACTER-LINE:CHARACTER TEXT" for each diagnostic of a file.
    std::vector<std::string> Diagnostics(const std::string& name);
    /// Calls `Pause`. Returns the parameters of the last message with diagnostics of a file, null
    /// if there was none.
    const SqxJson& Published(const std::string& name);
    std::vector<std::string> logged;  // texts that the server has logged
    std::vector<std::string> asked;   // methods of the server's other requests and notifications

    [[nodiscard]] SqxJson PositionOf(const std::string& name, const std::string& mark) const;
    /// Returns the text of a file after the edits of an answer, but does not apply them to it.
    [[nodiscard]] std::string Edited(const std::string& name, const SqxJson& edits) const;
    [[nodiscard]] const std::string& Text(const std::string& name) const
    {
        return m_texts.at(name);
    }

private:
    SqxJson Exchange(const std::string& method, const SqxJson& params);

    TemporaryFolder m_folder;
    std::vector<SqxJson> m_answers;
    std::map<std::string, SqxJson> m_published;  // by URI
    SqxLsServer m_server;
    std::map<std::string, std::string> m_texts;
    std::map<std::string, int> m_versions;
    int m_lastId = 0;
};

/// Returns a range as a text such as "0:4-1:2".
[[nodiscard]] std::string RangeText(const SqxJson& range);
