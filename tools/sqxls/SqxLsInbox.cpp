// Messages wait only while the server handles an earlier one or compiles a source. So the queue is
// short, and a linear search for a cancelled request is fast enough.
//
// Tested by tests/sqxls/SqxLsProgramTest.cpp.

#include "sqxls/SqxLsInbox.h"

#include <utility>

void SqxLsInbox::Add(const SqxLsFraming::Content& content)
{
    Message message;
    message.fault = content.fault;
    if (content.fault.empty()) {
        message.json = SqxJson::parse(content.text, nullptr, false);
        if (message.json.is_discarded())
            message = {{}, "A message is no JSON", false};
    }
    const std::scoped_lock lock(m_mutex);
    if (SqxLsMember(message.json, "method") == "$/cancelRequest")
        Cancel(SqxLsMember(message.json, "params/id"));
    else
        m_messages.push_back(std::move(message));
    m_hasNews.notify_one();
}

void SqxLsInbox::Cancel(const SqxJson& id)
{
    for (Message& message : m_messages)
        if (!id.is_null() && SqxLsMember(message.json, "id") == id &&
            message.json.contains("method"))
            message.isCancelled = true;
}

void SqxLsInbox::Close()
{
    const std::scoped_lock lock(m_mutex);
    m_isClosed = true;
    m_hasNews.notify_one();
}

std::optional<SqxLsInbox::Message> SqxLsInbox::Take()
{
    std::unique_lock lock(m_mutex);
    m_hasNews.wait(lock, [this] { return m_isClosed || !m_messages.empty(); });
    if (m_messages.empty())
        return std::nullopt;
    Message message = std::move(m_messages.front());
    m_messages.pop_front();
    return message;
}

bool SqxLsInbox::IsEmpty()
{
    const std::scoped_lock lock(m_mutex);
    return m_messages.empty();
}
