// The library of the server does not expose its sockets, so they are found among the open files of
// the process, by the server's port. This is done twenty times a second. A connection is identified
// by its file descriptor and the client's port, since descriptors are reused.
//
// Tested by tests/sqxview/SqxViewServerTest.cpp.

#include "sqxview/SqxViewConnections.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

// <netinet/tcp.h> of the C library lacks the count of bytes.
#include <arpa/inet.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace {

constexpr auto k_lookStep = std::chrono::milliseconds(50);

using NameOf = int (*)(int, sockaddr*, socklen_t*);

/// Returns the port at one end of a socket; nothing if the file is no IPv4 socket with such an end.
std::optional<int> PortOf(int file, NameOf nameOf)
{
    sockaddr_in name = {};
    socklen_t size = sizeof name;
    if (nameOf(file, reinterpret_cast<sockaddr*>(&name), &size) != 0 || name.sin_family != AF_INET)
        return std::nullopt;
    return ntohs(name.sin_port);
}

/// Returns the number of bytes received; 0 if the system does not count them.
std::size_t BytesReceived(int file)
{
    tcp_info info = {};
    socklen_t size = sizeof info;
    if (getsockopt(file, IPPROTO_TCP, TCP_INFO, &info, &size) != 0)
        return 0;
    return static_cast<std::size_t>(info.tcpi_bytes_received);
}

/// True if the end of a request's headers has arrived but no thread of the server has read it yet.
/// Looks only at the first bytes that are not read.
bool HasUnreadRequest(int file)
{
    std::array<char, 16384> bytes;
    const ssize_t count = recv(file, bytes.data(), bytes.size(), MSG_PEEK | MSG_DONTWAIT);
    return count > 0 &&
           std::string_view(bytes.data(), static_cast<std::size_t>(count)).find("\r\n\r\n") !=
               std::string_view::npos;
}

/// Shuts down a connection in both directions, so that no thread of the server waits for more
/// bytes. When the server then closes the file, the connection is reset and does not wait for the
/// client.
void End(int file)
{
    const linger atOnce = {1, 0};
    setsockopt(file, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    shutdown(file, SHUT_RDWR);
}

std::vector<int> OpenFiles()
{
    std::vector<int> files;
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", failed)) {
        const std::string name = entry.path().filename();
        int file = -1;
        std::from_chars(name.data(), name.data() + name.size(), file);
        files.push_back(file);
    }
    return files;
}

}  // namespace

SqxViewConnections::SqxViewConnections(int port, std::chrono::milliseconds longest)
    : m_port(port),
      m_longest(longest),
      m_thread([this](const std::stop_token& end) { Work(end); })
{
}

void SqxViewConnections::HasRequest(int port)
{
    const std::lock_guard lock(m_mutex);
    m_requests.insert(port);
}

void SqxViewConnections::Work(const std::stop_token& end)
{
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    while (!never.wait_for(lock, end, k_lookStep, [&end] { return end.stop_requested(); })) {
        std::map<Key, Since> seen;
        const std::lock_guard requestsLock(m_mutex);
        for (const int file : OpenFiles())
            LookAt(file, seen);
        m_seen = std::move(seen);
        std::erase_if(m_requests, [this](int request) {
            return std::none_of(m_seen.begin(), m_seen.end(), [request](const auto& connection) {
                return connection.first.second == request;
            });
        });
    }
}

void SqxViewConnections::LookAt(int file, std::map<Key, Since>& seen)
{
    const std::optional<int> here = PortOf(file, getsockname);
    const std::optional<int> there = PortOf(file, getpeername);
    if (!here || !there || *here != m_port)
        return;
    const Key key = {file, *there};
    const Clock::time_point now = Clock::now();
    const auto before = m_seen.find(key);
    Since since = before != m_seen.end() ? before->second : Since{now, now};
    if (m_requests.contains(*there) || HasUnreadRequest(file))
        since.isIdle = now;
    seen.emplace(key, since);
    if (now - since.isIdle > k_longestWithoutRequest || now - since.isThere > m_longest ||
        BytesReceived(file) > k_mostBytes)
        End(file);
}
