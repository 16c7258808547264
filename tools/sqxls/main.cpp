// Runs the language server, which answers requests of editors about shaders.
//
// One thread reads, so that a request can be cancelled while another one is being answered. The
// main thread compiles, since its stack is the largest.

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "options/SqxOptionWords.h"
#include "sqxls/SqxLsProgram.h"
#include "sqxls/SqxLsServer.h"

namespace {

void ReadInput(SqxLsInbox& inbox)
{
    SqxLsFraming framing;
    char buffer[1U << 16U];
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        framing.Add({buffer, static_cast<std::size_t>(count)});
        while (const auto content = framing.Next())
            inbox.Add(*content);
    }
    inbox.Close();
}

/// Writes a message. Ends the program if that fails, usually since the client has stopped reading:
/// there is no other client.
void WriteOutput(const SqxJson& message)
{
    const std::string text =
        SqxLsFraming::Framed(message.dump(-1, ' ', false, SqxJson::error_handler_t::replace));
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t count = write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            std::_Exit(1);
        written += static_cast<std::size_t>(count);
    }
}

int Serve()
{
    std::signal(SIGPIPE, SIG_IGN);
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);  // all threads share one memory pool: only this thread allocates often
#endif
    static SqxLsInbox inbox;  // static, since the other thread still uses it at exit
    std::thread([] { ReadInput(inbox); }).detach();
    SqxLsServer server(WriteOutput);
    while (const auto message = inbox.Take()) {
        server.Receive(*message);
        if (const auto status = server.ExitStatus())
            return *status;
        while (inbox.IsEmpty() && server.Settle()) {
        }
    }
    return server.StatusAtEnd();
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        SqxOptionWords words(arguments);
        while (words.Next()) {
            if (words.Is("-h, --help"))
                return SqxPrintInformation(SqxLsProgram(), SqxInformation::Help);
            if (words.Is("--version"))
                return SqxPrintInformation(SqxLsProgram(), SqxInformation::Version);
            if (!words.Is("--stdio"))
                words.RefuseWord();
        }
        std::_Exit(Serve());  // does not wait for the other thread, which is reading
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxls: " << error.what() << "; '--help' lists all options\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "sqxls: " << error.what() << '\n';
        return 1;
    }
}
