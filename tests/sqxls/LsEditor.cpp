#include "sqxls/LsEditor.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "sqxls/SqxLsUri.h"

LsEditor::LsEditor(const SqxJson& settings, const SqxJson& capabilities)
    : m_server([this](const SqxJson& message) {
          if (message.contains("result") || message.contains("error"))
              m_answers.push_back(message);
          else if (message["method"] == "textDocument/publishDiagnostics")
              m_published[message["params"]["uri"]] = message["params"];
          else if (message["method"] == "window/logMessage")
              logged.push_back(message["params"]["message"]);
          else
              asked.push_back(message["method"]);
      })
{
    Ask("initialize", {{"processId", nullptr},
                       {"rootUri", SqxLsUriOf(std::filesystem::current_path().string())},
                       {"capabilities", capabilities},
                       {"initializationOptions", settings}});
    Notify("initialized", SqxJson::object());
}

SqxJson LsEditor::DefaultCapabilities()
{
    return SqxJson::parse(R"({"textDocument": {
        "publishDiagnostics": {"relatedInformation": true}},
        "workspace": {"inlayHint": {"refreshSupport": true}}})");
}

std::string LsEditor::Uri(const std::string& name)
{
    return SqxLsUriOf((std::filesystem::current_path() / name).string());
}

void LsEditor::Notify(const std::string& method, const SqxJson& params)
{
    Receive({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

SqxJson LsEditor::Exchange(const std::string& method, const SqxJson& params)
{
    m_answers.clear();
    Receive({{"jsonrpc", "2.0"}, {"id", ++m_lastId}, {"method", method}, {"params", params}});
    if (m_answers.size() != 1 || m_answers[0]["id"] != m_lastId) {
        ADD_FAILURE() << method << " has " << m_answers.size() << " answers";
        return SqxJson::object();
    }
    return m_answers[0];
}

SqxJson LsEditor::Ask(const std::string& method, const SqxJson& params)
{
    const SqxJson answer = Exchange(method, params);
    EXPECT_FALSE(answer.contains("error")) << method << ": " << answer.dump();
    return answer.value("result", SqxJson());
}

SqxJson LsEditor::Refused(const std::string& method, const SqxJson& params)
{
    const SqxJson answer = Exchange(method, params);
    EXPECT_TRUE(answer.contains("error")) << method << ": " << answer.dump();
    return answer.value("error", SqxJson());
}

SqxJson LsEditor::AskAt(const std::string& method, const std::string& name, const std::string& mark,
                        SqxJson params)
{
    params["textDocument"]["uri"] = Uri(name);
    if (!mark.empty())
        params["position"] = PositionOf(name, mark);
    return Ask(method, params);
}

void LsEditor::Open(const std::string& name, const std::string& text)
{
    m_texts[name] = text;
    m_versions[name] = 1;
    Notify("textDocument/didOpen",
           {{"textDocument",
             {{"uri", Uri(name)}, {"languageId", "sl"}, {"version", 1}, {"text", text}}}});
}

void LsEditor::Change(const std::string& name, const SqxJson& changes, int version)
{
    Notify("textDocument/didChange", {{"textDocument", {{"uri", Uri(name)}, {"version", version}}},
                                      {"contentChanges", changes}});
}

void LsEditor::Replace(const std::string& name, const std::string& before, const std::string& after)
{
    std::string& text = m_texts.at(name);
    const std::size_t at = text.find(before);
    ASSERT_NE(at, std::string::npos) << before;
    const SqxLsText now(text);
    Change(name, {{{"range", SqxLsWriteRange(now, {at, at + before.size()})}, {"text", after}}},
           ++m_versions[name]);
    text.replace(at, before.size(), after);
}

void LsEditor::ReplaceBySame(const std::string& name)
{
    Change(name, {{{"text", m_texts.at(name)}}}, ++m_versions[name]);
}

void LsEditor::Close(const std::string& name)
{
    Notify("textDocument/didClose", {{"textDocument", {{"uri", Uri(name)}}}});
    m_texts.erase(name);
}

void LsEditor::Pause()
{
    while (m_server.Settle()) {
    }
}

const SqxJson& LsEditor::Published(const std::string& name)
{
    Pause();
    return m_published[Uri(name)];
}

std::vector<std::string> LsEditor::Diagnostics(const std::string& name)
{
    std::vector<std::string> texts;
    const SqxJson& published = Published(name);
    if (published.is_object())
        for (const SqxJson& diagnostic : published["diagnostics"])
            texts.push_back(RangeText(diagnostic["range"]) + " " +
                            diagnostic["message"].get<std::string>());
    return texts;
}

SqxJson LsEditor::PositionOf(const std::string& name, const std::string& mark) const
{
    const std::size_t bar = mark.find('|');
    std::string wanted = mark;
    wanted.erase(bar, 1);
    const std::size_t at = m_texts.at(name).find(wanted);
    EXPECT_NE(at, std::string::npos) << mark;
    return SqxLsWritePosition(SqxLsText(m_texts.at(name)).PositionOf(at + bar));
}

std::string LsEditor::Edited(const std::string& name, const SqxJson& edits) const
{
    SqxLsText text(m_texts.at(name));
    std::vector<std::pair<SqxLsSpan, std::string>> sorted;
    for (const SqxJson& edit : edits)
        sorted.emplace_back(SqxLsReadRange(edit["range"], text), edit["newText"]);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.first.begin < b.first.begin; });
    for (auto edit = sorted.rbegin(); edit != sorted.rend(); ++edit)
        text.Replace(edit->first, edit->second);
    return text.Bytes();
}

std::string RangeText(const SqxJson& range)
{
    const auto place = [](const SqxJson& position) {
        return position["line"].dump() + ":" + position["character"].dump();
    };
    return place(range["start"]) + "-" + place(range["end"]);
}
