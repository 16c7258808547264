// Any site that a browser shows may send requests to this machine. So each request is checked
// first: it must address this machine by its own name, and an origin that it names must be this
// server. The content policy of each answer prevents the page from loading anything from elsewhere.
//
// There are many threads, since each page that waits for a new state blocks one. Such pages can
// block only some of the threads; the others answer all other requests.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewServer.h"

#include <atomic>
#include <charconv>
#include <httplib.h>
#include <thread>

#include "sqxview/SqxViewConnections.h"
#include "sqxview/SqxViewPage.h"
#include "json/SqxOrderedJson.h"

namespace {

using httplib::Request;
using httplib::Response;
using HandlerResponse = httplib::Server::HandlerResponse;

constexpr const char* k_host = "127.0.0.1";
constexpr std::size_t k_threads = 32;
constexpr int k_mostWaiting = 16;  // pages; the other threads answer other requests
constexpr int k_mostUnaccepted = 256;
constexpr auto k_patience = std::chrono::seconds(20);  // until a wait for a state ends
constexpr const char* k_form = "application/x-www-form-urlencoded";
constexpr const char* k_plain = "text/plain; charset=utf-8";
constexpr const char* k_json = "application/json";

/// The page may load scripts, styles and data only from here, and pictures also from `data:` URLs.
/// No page may show this one in a frame.
constexpr const char* k_contentPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

/// Returns why a request is refused; empty if it is accepted.
std::string RefusalOf(const Request& request, int port)
{
    const std::string ending = ":" + std::to_string(port);
    const auto isHere = [&](const std::string& host) {
        return host == k_host + ending || host == "localhost" + ending;
    };
    if (request.get_header_value_count("Host") != 1 || !isHere(request.get_header_value("Host")))
        return "The host is not this one";
    constexpr std::string_view k_scheme = "http://";
    if (request.has_header("Origin")) {
        const std::string origin = request.get_header_value("Origin");
        const bool isOurs = request.get_header_value_count("Origin") == 1 &&
                            origin.starts_with(k_scheme) && isHere(origin.substr(k_scheme.size()));
        if (!isOurs)
            return "The origin is not this one";
    }
    // Only forms of one type are read, and not in chunks, which do not state the whole length.
    if (request.has_header("Transfer-Encoding"))
        return "The request does not state its length";
    if (request.method == "POST" && !request.get_header_value("Content-Type").starts_with(k_form))
        return "The request is no form";
    return "";
}

/// Returns the parameter `name` of a request; `usual` if it is missing. Throws `SqxPictureError` if
/// it is negative, too large or not a whole number.
unsigned long NumberIn(const Request& request, const char* name, unsigned long usual)
{
    if (!request.has_param(name))
        return usual;
    const std::string text = request.get_param_value(name);
    unsigned long number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc() || rest != end)
        throw SqxPictureError("'" + text + "' is no number");
    return number;
}

void Fail(Response& response, int status, const std::string& text)
{
    response.status = status;
    SqxOrderedJson answer;
    answer["fault"] = text;
    response.set_content(SqxJsonLine(answer), k_json);
}

/// Returns a handler that calls `handle`, and answers a `std::runtime_error` with status 400 and
/// its text.
template <typename Do>
httplib::Server::Handler Guarded(Do handle)
{
    return [handle](const Request& request, Response& response) {
        try {
            handle(request, response);
        } catch (const std::runtime_error& error) {
            Fail(response, 400, error.what());
        }
    };
}

}  // namespace

struct SqxViewServer::Parts {
    explicit Parts(SqxViewSession& itsSession) : session(itsSession) {}

    void SetUp();
    void SetRoutes();
    void SendState(const Request& request, Response& response);
    void SendPicture(const Request& request, Response& response);
    void TakeChange(const Request& request, Response& response);

    SqxViewSession& session;
    httplib::Server server;
    int port = 0;
    socket_t listener = -1;
    std::atomic<int> waiting = 0;  // pages that wait for a state
    std::unique_ptr<SqxViewConnections> connections;
    std::jthread thread;
};

void SqxViewServer::Parts::SetUp()
{
    server.new_task_queue = [] { return new httplib::ThreadPool(k_threads); };
    server.set_keep_alive_max_count(1);  // see SqxViewConnections
    server.set_payload_max_length(SqxViewState::k_mostBytes);
    // The library's own options would let a second server use the same port.
    server.set_socket_options([this](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        listener = socket;
    });
    server.set_tcp_nodelay(true);
    server.set_default_headers({{"Content-Security-Policy", k_contentPolicy},
                                {"Cross-Origin-Resource-Policy", "same-origin"},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Referrer-Policy", "no-referrer"},
                                {"Cache-Control", "no-store"}});
    server.set_pre_routing_handler([this](const Request& request, Response& response) {
        const std::string refusal = RefusalOf(request, port);
        if (refusal.empty()) {
            if (request.method == "GET")
                connections->HasRequest(request.remote_port);
            return HandlerResponse::Unhandled;
        }
        response.status = 403;
        response.set_content(refusal + "\n", k_plain);
        return HandlerResponse::Handled;
    });
    server.set_error_handler([](const Request&, Response& response) {
        if (response.status == 413)
            Fail(response, 413,
                 "A change may have at most " + std::to_string(SqxViewState::k_mostBytes) +
                     " bytes");
        else if (response.body.empty())
            response.set_content("There is no such thing here\n", k_plain);
    });
}

void SqxViewServer::Parts::SetRoutes()
{
    for (const SqxViewPageFile& file : SqxViewPageFiles())
        server.Get(std::string(file.path), [&file](const Request&, Response& response) {
            response.set_content(file.text.data(), file.text.size(), std::string(file.type));
        });
    server.Get("/state", Guarded([this](const Request& request, Response& response) {
                   SendState(request, response);
               }));
    server.Get("/picture.png", Guarded([this](const Request& request, Response& response) {
                   SendPicture(request, response);
               }));
    server.Get("/code", Guarded([this](const Request& request, Response& response) {
                   const unsigned long level = NumberIn(request, "level", 2);
                   response.set_content(session.Code(NumberIn(request, "shader", 0),
                                                     static_cast<int>(std::min(level, 9UL))),
                                        k_json);
               }));
    server.Post("/change", Guarded([this](const Request& request, Response& response) {
                    TakeChange(request, response);
                }));
}

void SqxViewServer::Parts::SendState(const Request& request, Response& response)
{
    if (!request.has_param("after")) {
        response.set_content(session.State(0, {}), k_json);
        return;
    }
    const unsigned long version = NumberIn(request, "after", 0);
    if (++waiting > k_mostWaiting)
        Fail(response, 503, "Too many pages are open");
    else
        response.set_content(session.State(version, k_patience), k_json);
    --waiting;
}

void SqxViewServer::Parts::SendPicture(const Request& request, Response& response)
{
    const auto picture = session.Picture();
    if (!picture) {
        Fail(response, 404, "There is no picture yet");
        return;
    }
    if (request.has_param("keep"))
        response.set_header("Content-Disposition",
                            "attachment; filename=\"" + session.PictureName() + "\"");
    response.set_content(picture->data(), picture->size(), "image/png");
}

void SqxViewServer::Parts::TakeChange(const Request& request, Response& response)
{
    connections->HasRequest(request.remote_port);
    session.Change({request.params.begin(), request.params.end()});
    response.set_content("{}", k_json);
}

SqxViewServer::SqxViewServer(SqxViewSession& session, int port)
    : m_parts(std::make_unique<Parts>(session))
{
    m_parts->SetUp();
    m_parts->SetRoutes();
    httplib::Server& server = m_parts->server;
    const bool isBound = port ? server.bind_to_port(k_host, port)
                              : (m_parts->port = server.bind_to_any_port(k_host)) > 0;
    if (!isBound)
        throw std::runtime_error("Cannot serve at port " + std::to_string(port));
    if (port)
        m_parts->port = port;
    // By default only five connections may wait to be accepted; others would retry after a second.
    listen(m_parts->listener, k_mostUnaccepted);
    m_parts->connections = std::make_unique<SqxViewConnections>(m_parts->port);
    m_parts->thread = std::jthread([&server] { server.listen_after_bind(); });
    while (!server.is_running())  // a server that does not run yet cannot be stopped
        std::this_thread::yield();
}

SqxViewServer::~SqxViewServer()
{
    m_parts->session.EndWaiting();
    m_parts->server.stop();
}

int SqxViewServer::Port() const
{
    return m_parts->port;
}

std::string SqxViewServer::Address() const
{
    return "http://" + std::string(k_host) + ":" + std::to_string(Port()) + "/";
}
