#pragma once

#include <map>
#include <string>
#include <vector>

#include "helpers/TemporaryFolder.h"
#include "sqxls/SqxLsServer.h"

/// An editor that works in a separate folder and exchanges whole messages with a server in the same
/// process.
class LsEditor {
public:
    /// `settings` are the initialization options; `capabilities` are those of the editor.
    explicit LsEditor(const SqxJson& settings = SqxJson::object(),
                      const SqxJson& capabilities = DefaultCapabilities());

    [[nodiscard]] static SqxJson DefaultCapabilities();
    [[nodiscard]] static std::string Uri(const std::string& name);

    void Open(const std::string& name, const std::string& text);
    /// Replaces the first `before` of an open file by an incremental change.
    void Replace(const std::string& name, const std::string& before, const std::string& after);
    /// Replaces the text of an open file by the same text.
    void ReplaceBySame(const std::string& name);
    void Change(const std::string& name, const SqxJson& changes, int version);
    void Close(const std::string& name);

    void Notify(const std::string& method, const SqxJson& params);
    /// Returns the result of a request. Fails the test and returns null if the server refuses.
    SqxJson Ask(const std::string& method, const SqxJson& params);
    /// Returns the error of a request. Fails the test if the server accepts it.
    SqxJson Refused(const std::string& method, const SqxJson& params);
    /// Sends a request about a file, at the place of the bar in `mark`, such as `before|after`, if
    /// that is given.
    SqxJson AskAt(const std::string& method, const std::string& name, const std::string& mark = "",
                  SqxJson params = SqxJson::object());
    void Receive(const SqxJson& message) { m_server.Receive({message, "", false}); }
    [[nodiscard]] SqxLsServer& Server() { return m_server; }

    /// Lets the server do the work that it does while it is idle.
    void Pause();
    /// Returns "LINE:CHARACTER-LINE:CHARACTER TEXT" for each diagnostic that is shown for a file.
    std::vector<std::string> Diagnostics(const std::string& name);
    /// Returns the last message with the diagnostics of a file.
    const SqxJson& Published(const std::string& name);
    std::vector<std::string> logged;
    std::vector<std::string> asked;  // methods of the server's requests

    [[nodiscard]] SqxJson PositionOf(const std::string& name, const std::string& mark) const;
    /// Returns the text of a file after the edits of an answer.
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

/// Returns a range such as "0:4-1:2".
[[nodiscard]] std::string RangeText(const SqxJson& range);
