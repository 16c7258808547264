#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "sqxls/SqxLsFraming.h"
#include "sqxls/SqxLsJson.h"

/// The queue of messages for the server. One thread adds messages that it has read, another one
/// takes them. A request that is cancelled while it waits is marked.
class SqxLsInbox {
public:
    struct Message {
        SqxJson json;
        std::string fault;  // why the message could not be read; empty if it could
        bool isCancelled = false;
    };

    /// Parses and queues a message; one that cannot be read is queued with its fault.
    /// `$/cancelRequest` is not queued; it marks the request that it names, if that request still
    /// waits.
    void Add(const SqxLsFraming::Content& content);
    /// Closes the queue. Called after the last message has been added.
    void Close();

    /// Waits for the next message and returns it. Returns nothing once the queue is closed and
    /// empty.
    [[nodiscard]] std::optional<Message> Take();
    [[nodiscard]] bool IsEmpty();

private:
    void Cancel(const SqxJson& id);

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    std::deque<Message> m_messages;
    bool m_isClosed = false;
};
