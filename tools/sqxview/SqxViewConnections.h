#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

/// Ends connections of this program's server that go on for too long or send too much.
///
/// The server's library bounds each wait for bytes, but neither all waits together nor the headers
/// of a request: connections without a request, bytes that come now and then, or headers without an
/// end would keep its threads. One request takes one connection, so that bounds for a connection
/// do.
class SqxViewConnections {
public:
    static constexpr std::size_t k_mostBytes = std::size_t{64} * 1024;  // sent to us
    static constexpr auto k_longest = std::chrono::seconds(60);
    static constexpr auto k_longestWithoutRequest = std::chrono::seconds(1);

    /// Watches the connections of the server at that port of this machine, in a separate thread,
    /// until it is destroyed. Other open files of this program are left alone.
    explicit SqxViewConnections(int port, std::chrono::milliseconds longest = k_longest);

    /// The server has the whole request of the connection with that port at the other end. Any
    /// thread may call.
    void HasRequest(int port);

private:
    using Clock = std::chrono::steady_clock;
    using Key = std::pair<int, int>;  // file descriptor, and the port at the other end

    void Work(const std::stop_token& end);
    struct Since {
        Clock::time_point isThere;
        Clock::time_point isIdle;  // without a request that the server has or could read
    };

    void LookAt(int file, std::map<Key, Since>& seen);

    int m_port;
    std::chrono::milliseconds m_longest;
    std::map<Key, Since> m_seen;
    std::mutex m_mutex;        // of what follows
    std::set<int> m_requests;  // ports whose requests the server has
    std::jthread m_thread;     // last: it uses all the others
};
