#pragma once

#include <memory>
#include <string>

#include "sqxview/SqxViewSession.h"

/// Serves the page of a session to browsers on this machine.
///
/// Requests that another site's page could have caused are refused: those that call this machine by
/// another name, and those that say they come from elsewhere. Nothing is served but the page, the
/// state, the picture and the byte-code of the shaders under view.
class SqxViewServer {
public:
    /// Serves from now on, at that port or, for 0, at a free one. Throws `std::runtime_error` if
    /// the port cannot be had. The session must outlive it. Requests are answered in threads of the
    /// server's own, several at a time; what a page sends is bounded in size, number and time.
    SqxViewServer(SqxViewSession& session, int port);
    /// Ends all connections, also of pages that wait for a state.
    ~SqxViewServer();
    SqxViewServer(const SqxViewServer&) = delete;
    SqxViewServer& operator=(const SqxViewServer&) = delete;

    /// The one that was asked for, or the free one that was found.
    [[nodiscard]] int Port() const;
    /// Where browsers find the page.
    [[nodiscard]] std::string Address() const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
