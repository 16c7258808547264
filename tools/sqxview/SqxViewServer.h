#pragma once

#include <memory>
#include <string>

#include "sqxview/SqxViewSession.h"

/// Serves the page of a session to browsers on this machine.
///
/// Refuses requests that pages of other sites may have caused: those whose header "Host" is not the
/// address of this server, and those whose header "Origin" names another server. Serves only the
/// page, the state, the picture and the byte-code of the session's shaders, and accepts changes of
/// the session's settings.
class SqxViewServer {
public:
    /// Starts to serve at `port`, or at any free port for 0. Throws `std::runtime_error` if the
    /// port is not available. The session must outlive the server. The server answers several
    /// requests at a time in its own threads; it limits the size, number and time of requests.
    SqxViewServer(SqxViewSession& session, int port);
    /// Ends the waits of pages for a state, finishes the answers that have begun, and closes all
    /// connections.
    ~SqxViewServer();
    SqxViewServer(const SqxViewServer&) = delete;
    SqxViewServer& operator=(const SqxViewServer&) = delete;

    /// Returns the port at which the page is served.
    [[nodiscard]] int Port() const;
    /// Returns the address of the page.
    [[nodiscard]] std::string Address() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
