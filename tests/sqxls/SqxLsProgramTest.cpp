// Tests the program itself through pipes, and the classes that read its stream of messages.

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "helpers/TemporaryFolder.h"
#include "sqxls/SqxLsFraming.h"
#include "sqxls/SqxLsInbox.h"
#include "sqxls/SqxLsJson.h"

namespace {

/// A running server whose standard input and output are pipes.
class Program {
public:
    Program()
    {
        int input[2];
        int output[2];
        if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
            std::abort();
        m_child = fork();
        if (m_child == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            execl(SLC_SQXLS, SLC_SQXLS, "--stdio", nullptr);
            _exit(127);
        }
        close(input[0]);
        close(output[1]);
        m_input = input[1];
        m_output = output[0];
    }
    ~Program()
    {
        CloseInput();
        CloseOutput();
        if (m_child > 0) {
            kill(m_child, SIGKILL);
            waitpid(m_child, nullptr, 0);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Write(const std::string& bytes) const
    {
        EXPECT_EQ(write(m_input, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    void Send(const char* message) const { Write(SqxLsFraming::Framed(message)); }

    SqxJson Receive()
    {
        for (;;) {
            if (const auto content = m_framing.Next())
                return SqxJson::parse(content->text);
            char buffer[4096];
            const ssize_t count = read(m_output, buffer, sizeof buffer);
            if (count <= 0)
                return nullptr;
            m_framing.Add({buffer, static_cast<std::size_t>(count)});
        }
    }
    void CloseInput() { Close(m_input); }
    void CloseOutput() { Close(m_output); }

    void Signal(int number) const { kill(m_child, number); }

    /// Waits for the end and returns the exit status; -1 after a signal.
    int Wait()
    {
        int status = 0;
        waitpid(m_child, &status, 0);
        m_child = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    static void Close(int& file)
    {
        if (file >= 0)
            close(file);
        file = -1;
    }

    pid_t m_child = 0;
    int m_input = -1;
    int m_output = -1;
    SqxLsFraming m_framing;
};

constexpr const char* k_initialize =
    R"({"jsonrpc": "2.0", "id": 1, "method": "initialize", "params": {"capabilities": {}}})";

TEST(SqxLsProgram, ServesFromBeginningToEnd)
{
    Program program;
    program.Send(k_initialize);
    EXPECT_EQ(program.Receive()["result"]["serverInfo"]["name"], "sqxls");
    program.Send(R"({"method": "initialized", "params": {}})");
    program.Send(R"({"method": "textDocument/didOpen", "params": {"textDocument":
        {"uri": "file:///a.sl", "version": 1, "text": "surface a() { Ci = nothing; }"}}})");
    EXPECT_EQ(program.Receive()["params"]["diagnostics"].size(), 1U);
    program.Send(R"({"id": 2, "method": "shutdown"})");
    EXPECT_EQ(program.Receive()["id"], 2);
    program.Send(R"({"method": "exit"})");
    EXPECT_EQ(program.Wait(), 0);
}

TEST(SqxLsProgram, AnswersInvalidMessagesAndContinues)
{
    Program program;
    for (const char* bytes : {"Content-Length: x\r\n\r\n", "Content-Type: a\r\n\r\n",
                              "Content-Length: 3\r\n\r\n{a}", "content-length:2\n\n\xFF\xFE"}) {
        program.Write(bytes);
        const SqxJson answer = program.Receive();
        EXPECT_EQ(answer["error"]["code"], -32700) << bytes;
        EXPECT_TRUE(answer["id"].is_null());
    }
    const std::string deep(200000, '[');
    program.Write(SqxLsFraming::Framed(deep + std::string(200000, ']')));
    EXPECT_EQ(program.Receive()["error"]["code"], -32600);
    program.Send(k_initialize);
    EXPECT_EQ(program.Receive()["id"], 1);
}

TEST(SqxLsProgram, EndsWithItsPipes)
{
    Program one;
    one.Send(k_initialize);
    (void)one.Receive();
    one.Write("Content-Length: 100\r\n\r\n{");
    one.CloseInput();
    EXPECT_EQ(one.Wait(), 1);
    Program other;
    other.CloseOutput();
    other.Send(k_initialize);
    EXPECT_EQ(other.Wait(), 1);
}

/// Returns whether the file appears within 30 seconds.
bool Appears(const std::filesystem::path& file)
{
    for (int i = 0; i < 3000 && !std::filesystem::exists(file); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return std::filesystem::exists(file);
}

TEST(SqxLsProgram, LetsItsPreviewsEndHoweverItEnds)
{
    const struct {
        const char* name;
        void (*end)(Program& program);
    } cases[] = {
        {"end of the input", [](Program& program) { program.CloseInput(); }},
        {"failed write",
         [](Program& program) {
             program.CloseOutput();
             program.Send(R"({"id": 3, "method": "shutdown"})");
         }},
        {"signal", [](Program& program) { program.Signal(SIGTERM); }},
    };
    for (const auto& one : cases) {
        const TemporaryFolder folder;
        TemporaryFolder::Write("viewer", "#!/bin/sh\ntrap 'touch ended; exit' TERM\n"
                                         "echo 'The page is at http://localhost:1/; x'\n"
                                         "while [ -e viewer ]; do sleep 0.05; done\n");
        std::filesystem::permissions("viewer", std::filesystem::perms::owner_all);
        Program program;
        SqxJson initialize = SqxJson::parse(k_initialize);
        initialize["params"]["initializationOptions"]["sqxview"] =
            (std::filesystem::current_path() / "viewer").string();
        program.Send(initialize.dump().c_str());
        (void)program.Receive();
        program.Send(R"({"id": 2, "method": "workspace/executeCommand", "params":
            {"command": "sqxls.preview", "arguments": ["file:///a.sl"]}})");
        EXPECT_EQ(program.Receive()["result"]["uri"], "http://localhost:1/") << one.name;
        one.end(program);
        EXPECT_TRUE(Appears("ended")) << one.name;
    }
}

TEST(SqxLsFraming, SkipsMessagesThatAreTooLong)
{
    SqxLsFraming framing;
    framing.Add("Content-Length: 70000000\r\n\r\n");
    EXPECT_EQ(framing.Next()->fault, "A message is longer than 64 MB");
    for (int i = 0; i < 10; ++i) {
        framing.Add(std::string(7000000, 'x'));
        EXPECT_FALSE(framing.Next());
    }
    framing.Add("Content-Len");
    EXPECT_FALSE(framing.Next());
    framing.Add("gth: 2\r\n\r\n{}Content-Length: 1\r\n\r\n");
    EXPECT_EQ(framing.Next()->text, "{}");
    EXPECT_FALSE(framing.Next());
    framing.Add("7");
    EXPECT_EQ(framing.Next()->text, "7");
}

TEST(SqxLsInbox, MarksARequestThatIsCancelledWhileItWaits)
{
    SqxLsInbox inbox;
    for (const char* message : {R"({"id": 1, "method": "a"})", R"({"id": "1", "method": "b"})",
                                R"({"method": "$/cancelRequest", "params": {"id": 1}})",
                                R"({"method": "$/cancelRequest", "params": {"id": 9}})",
                                R"({"method": "$/cancelRequest"})"})
        inbox.Add({message, ""});
    inbox.Close();
    EXPECT_TRUE(inbox.Take()->isCancelled);
    EXPECT_FALSE(inbox.Take()->isCancelled);
    EXPECT_FALSE(inbox.Take()) << "cancellations are not answered";
}

}  // namespace
