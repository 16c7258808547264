// Checks what the server answers and what it refuses.

#include "ViewedShaders.h"

#include <algorithm>
#include <arpa/inet.h>
#include <httplib.h>
#include <regex>
#include <sys/socket.h>

#include "sqxview/SqxViewConnections.h"
#include "sqxview/SqxViewServer.h"

namespace {

class SqxViewServerTest : public ViewedShaders {
protected:
    void SetUp() override
    {
        m_folder.Write("a.sl", k_flat);
        View({"a.sl"});
        m_server.emplace(*m_session, 0);
        m_client.emplace("127.0.0.1", m_server->Port());
    }
    [[nodiscard]] std::string OwnHost() const
    {
        return "127.0.0.1:" + std::to_string(m_server->Port());
    }
    int StatusOf(const char* path, const httplib::Headers& headers = {})
    {
        const httplib::Result result = m_client->Get(path, headers);
        return result ? result->status : -1;
    }
    int StatusOfChange(const std::string& body, const httplib::Headers& headers = {},
                       const char* type = "application/x-www-form-urlencoded")
    {
        const httplib::Result result = m_client->Post("/change", headers, body, type);
        return result ? result->status : -1;
    }

    std::optional<SqxViewServer> m_server;
    std::optional<httplib::Client> m_client;
};

TEST_F(SqxViewServerTest, ServesThePageAndNothingElse)
{
    const httplib::Result page = m_client->Get("/");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->status, 200);
    EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
    EXPECT_NE(page->get_header_value("Content-Security-Policy").find("default-src 'none'"),
              std::string::npos);
    EXPECT_NE(page->body.find("page.js"), std::string::npos);
    EXPECT_EQ(StatusOf("/page.css"), 200);
    for (const char* path : {"/a.sl", "/../a.sl", "/%2e%2e/etc/passwd", "//etc/passwd",
                             "/page.html", "/page.js/", "/change"})
        EXPECT_EQ(StatusOf(path), 404) << path;
}

TEST_F(SqxViewServerTest, ServesAllModulesOfTheScript)
{
    std::vector<std::string> paths = {"/page.js"};  // and the paths that imports name
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const httplib::Result module = m_client->Get(paths[i]);
        ASSERT_TRUE(module && module->status == 200) << paths[i];
        EXPECT_EQ(module->get_header_value("Content-Type"), "text/javascript; charset=utf-8");
        const std::regex import("from \"\\.(/[^\"]+)\"");
        for (std::sregex_iterator end, found(module->body.begin(), module->body.end(), import);
             found != end; ++found)
            if (std::find(paths.begin(), paths.end(), (*found)[1]) == paths.end())
                paths.push_back((*found)[1]);
    }
    EXPECT_GT(paths.size(), 5U);
}

TEST_F(SqxViewServerTest, RefusesOtherHostsAndOrigins)
{
    const std::string port = std::to_string(m_server->Port());
    struct {
        httplib::Headers headers;
        int status;
    } const cases[] = {
        {{{"Host", OwnHost()}}, 200},
        {{{"Host", "localhost:" + port}}, 200},
        {{{"Host", "localhost:" + port}, {"Origin", "http://localhost:" + port}}, 200},
        {{{"Host", "127.0.0.1"}}, 403},
        {{{"Host", "127.0.0.1:1"}}, 403},
        {{{"Host", "evil.example:" + port}}, 403},
        {{{"Host", "127.0.0.1:" + port + ".evil.example"}}, 403},
        {{{"Host", OwnHost()}, {"Host", "evil.example"}}, 403},
        {{{"Host", OwnHost()}, {"Origin", "http://evil.example"}}, 403},
        {{{"Host", OwnHost()}, {"Origin", "https://" + OwnHost()}}, 403},
        {{{"Host", OwnHost()}, {"Origin", "http://127.0.0.1:1"}}, 403},
        {{{"Host", OwnHost()}, {"Origin", "null"}}, 403},
    };
    WaitForWhole();
    for (const auto& one : cases) {
        std::string headers;
        for (const auto& [name, value] : one.headers)
            headers += name + ": " + value + "\n";
        EXPECT_EQ(StatusOf("/state", one.headers), one.status) << headers;
        EXPECT_EQ(StatusOfChange("param.0.Kd=1", one.headers), one.status) << headers;
    }
}

TEST_F(SqxViewServerTest, AcceptsFormsOfLimitedSize)
{
    WaitForWhole();
    EXPECT_EQ(StatusOfChange("param.0.Kd=0.75&size=8x8"), 200);
    EXPECT_NE(WaitForWhole().find("sqxshade --size 8x8 --samples 1 a.sl --param Kd=0.75"),
              std::string::npos);
    const httplib::Result refused =
        m_client->Post("/change", "param.0.Kd=x", "application/x-www-form-urlencoded");
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->status, 400);
    EXPECT_EQ(refused->body,
              R"({"fault":"The value of 'Kd' must be made of numbers, but is 'x'"})");
    EXPECT_EQ(StatusOfChange("param.0.Kd=1", {}, "application/x-www-form-urlencoded;charset=UTF-8"),
              200)
        << "As browsers send it";
    EXPECT_NE(WaitForWhole().find("Kd=1\""), std::string::npos);
    EXPECT_EQ(StatusOfChange("size=8x8", {}, "text/plain"), 403);
    const httplib::Result tooLong = m_client->Post(
        "/change", "param.0.Kd=" + std::string(50'000, '1'), "application/x-www-form-urlencoded");
    EXPECT_TRUE(tooLong && tooLong->status == 413 &&
                tooLong->body == R"({"fault":"A change may have at most 49152 bytes"})");
    EXPECT_EQ(StatusOfChange("size=8x8", {{"Transfer-Encoding", "chunked"}}), 403);
}

TEST_F(SqxViewServerTest, GivesThePictureToShowAndToKeep)
{
    const std::vector<char> picture = NextPicture();
    const httplib::Result shown = m_client->Get("/picture.png?number=1");
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->body, std::string(picture.begin(), picture.end()));
    EXPECT_EQ(shown->get_header_value("Content-Type"), "image/png");
    EXPECT_FALSE(shown->has_header("Content-Disposition"));
    const httplib::Result kept = m_client->Get("/picture.png?keep=1");
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->get_header_value("Content-Disposition"), "attachment; filename=\"a.png\"");
}

TEST_F(SqxViewServerTest, GivesStateAndCode)
{
    WaitForWhole();
    const httplib::Result state = m_client->Get("/state");
    ASSERT_TRUE(state);
    EXPECT_EQ(state->body, m_session->State(0, {}));
    EXPECT_EQ(StatusOf("/state?after=0"), 200) << "A page that is behind does not wait";
    EXPECT_EQ(StatusOf("/state?after=x"), 400);
    EXPECT_EQ(StatusOf("/code?shader=0&level=3"), 200);
    EXPECT_EQ(StatusOf("/code?shader=0&level=4"), 400);
    EXPECT_EQ(StatusOf("/code?shader=7"), 400);
}

TEST_F(SqxViewServerTest, AnswersWhileTooManyPagesWait)
{
    const std::string state = WaitForWhole();
    const std::string version = state.substr(state.find(':') + 1, state.find(',') - 11);
    std::atomic<int> refused = 0;
    std::atomic<int> answered = 0;
    std::vector<std::jthread> pages;
    constexpr int count = 40;
    pages.reserve(count);
    for (int i = 0; i < count; ++i)
        pages.emplace_back([&] {
            httplib::Client client("127.0.0.1", m_server->Port());
            client.set_read_timeout(60);
            const httplib::Result result = client.Get("/state?after=" + version);
            (result && result->status == 503 ? refused : answered) += 1;
        });
    while (refused < 20)
        std::this_thread::yield();
    EXPECT_EQ(StatusOf("/page.js"), 200);
    EXPECT_EQ(StatusOfChange("param.0.Kd=0.125"), 200);
    pages.clear();
    EXPECT_EQ(refused + answered, 40);
    EXPECT_LE(answered, 16 + 4) << "Some may have come after the change";
}

/// A connection to the server that sends any bytes.
class RawConnection {
public:
    explicit RawConnection(int port) : m_socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<unsigned short>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    }
    ~RawConnection() { close(m_socket); }
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    [[nodiscard]] bool Send(const std::string& bytes) const
    {
        return send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0;
    }

private:
    int m_socket;
};

TEST_F(SqxViewServerTest, ClosesRequestsWithoutEnd)
{
    // The requests have too many headers, or one that never ends.
    for (const std::string& more :
         {"X-More: " + std::string(1000, 'x') + "\r\n", std::string(1000, 'x')}) {
        const RawConnection connection(m_server->Port());
        ASSERT_TRUE(connection.Send("GET / HTTP/1.1\r\nHost: " + OwnHost() + "\r\nX: "));
        std::size_t sent = 0;
        while (connection.Send(more) && sent < std::size_t{1} << 30)
            sent += more.size();
        EXPECT_LT(sent, std::size_t{1} << 30);
    }
    // This request sends a byte now and then.
    const SqxViewConnections shortly(m_server->Port(), std::chrono::milliseconds(200));
    const RawConnection connection(m_server->Port());
    int pieces = 0;
    while (connection.Send("G") && pieces < 1000) {
        ++pieces;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_LT(pieces, 1000);
    EXPECT_EQ(StatusOf("/"), 200);
}

TEST_F(SqxViewServerTest, IsNotBlockedByConnectionsWithoutARequest)
{
    std::vector<std::unique_ptr<RawConnection>> connections;
    for (int i = 0; i < 200; ++i) {
        connections.push_back(std::make_unique<RawConnection>(m_server->Port()));
        EXPECT_TRUE(i % 2 == 0 || connections.back()->Send("GET / HTTP/1.1\r\nHost: "));
    }
    EXPECT_EQ(StatusOf("/"), 200);
}

TEST_F(SqxViewServerTest, RefusesAPortInUse)
{
    EXPECT_THROW(SqxViewServer(*m_session, m_server->Port()), std::runtime_error);
}

}  // namespace
