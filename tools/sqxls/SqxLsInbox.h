#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "sqxls/SqxLsFraming.h"
#include "sqxls/SqxLsJson.h"

/// The messages that wait for the server. One thread adds what it reads, another one takes; a
/// request that is cancelled while it waits is marked.
class SqxLsInbox {
public:
    struct Message {
        SqxJson json;
        std::string fault;  // why there is no JSON
        bool isCancelled = false;
    };

    void Add(const SqxLsFraming::Content& content);
    /// Nothing comes any more.
    void Close();

    /// The next message; waits for it. Nothing once the inbox is closed and empty.
    [[nodiscard]] std::optional<Message> Take();
    [[nodiscard]] bool IsEmpty();

private:
    void Cancel(const SqxJson& id);

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    std::deque<Message> m_messages;
    bool m_isClosed = false;
};
