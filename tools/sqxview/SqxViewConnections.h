#pragma once

#include <chrono>
#include <map>
#include <thread>
#include <utility>

/// Ends connections of this program's server that go on for too long or send too much.
///
/// The server's library bounds each wait for bytes, but neither all waits together nor the headers
/// of a request; somebody who sends a byte now and then, or headers without an end, would keep one
/// of its threads for good. One request takes one connection, so that bounds for a connection do.
class SqxViewConnections {
public:
    static constexpr std::size_t k_mostBytes = std::size_t{64} * 1024;  // sent to us
    static constexpr auto k_longest = std::chrono::seconds(60);

    /// Watches the connections of the server at that port of this machine, in a thread of its own,
    /// until it is destroyed. Whatever else this program has open is left alone.
    explicit SqxViewConnections(int port, std::chrono::milliseconds longest = k_longest);

private:
    using Clock = std::chrono::steady_clock;
    using Key = std::pair<int, int>;  // file descriptor, and the port at the other end

    void Work(const std::stop_token& end);
    void LookAt(int file, std::map<Key, Clock::time_point>& seen);

    int m_port;
    std::chrono::milliseconds m_longest;
    std::map<Key, Clock::time_point> m_seen;  // since when each is there
    std::jthread m_thread;                    // last: it uses all the others
};
