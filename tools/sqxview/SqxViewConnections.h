#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

/// Closes connections to the server of this program if they last too long, are too long without a
/// request, or send too much.
///
/// The library of the server limits each wait for bytes, but neither the sum of all waits nor the
/// size of the headers. Connections without a request, with bytes that trickle in, or with endless
/// headers would block the server's threads. Each connection has only one request, so limits per
/// connection suffice.
class SqxViewConnections {
public:
    static constexpr std::size_t k_mostBytes = std::size_t{64} * 1024;  // received
    static constexpr auto k_longest = std::chrono::seconds(60);
    static constexpr auto k_longestWithoutRequest = std::chrono::seconds(1);

    /// Watches the connections of the server at `port`, in a separate thread, until the object is
    /// destroyed. Each may last at most `longest`; the other limits are fixed. Other open files of
    /// the program are not touched.
    explicit SqxViewConnections(int port, std::chrono::milliseconds longest = k_longest);

    /// Records that the server has received a whole request from the client at `port`. May be
    /// called in any thread.
    void HasRequest(int port);

private:
    using Clock = std::chrono::steady_clock;
    using Key = std::pair<int, int>;  // file descriptor, and the client's port

    void Work(const std::stop_token& end);
    struct Since {
        Clock::time_point isThere;  // when it was first seen
        Clock::time_point isIdle;   // since when it has had no request
    };

    void LookAt(int file, std::map<Key, Since>& seen);

    int m_port;
    std::chrono::milliseconds m_longest;
    std::map<Key, Since> m_seen;
    std::mutex m_mutex;        // guards `m_requests`
    std::set<int> m_requests;  // client ports whose requests were received
    std::jthread m_thread;     // last, since it uses all other fields
};
