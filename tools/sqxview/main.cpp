// Shows shaders in a browser while they are written.

#include <csignal>
#include <filesystem>
#include <iostream>
#include <thread>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "process/SqxProcess.h"
#include "sqxview/SqxViewProgram.h"
#include "sqxview/SqxViewServer.h"

namespace {

/// Blocks SIGINT, SIGTERM and SIGHUP in this thread and in all threads that it starts later, so
/// that this thread can wait for them. Returns these signals.
sigset_t HoldEndSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, number);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

/// With glibc, makes all threads share one memory pool. By default glibc gives threads separate
/// pools, and memory use would grow with threads and edits. Threads rarely allocate, so they seldom
/// wait for the pool.
void ShareOnePool()
{
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
#endif
}

/// Starts the browser without waiting for it, since some browsers run until their window is closed.
/// Prints an error if it cannot be started.
void OpenBrowser(const std::string& address)
{
    std::thread([address] {
        if (SqxRunCommand({{"xdg-open", address}, {}, {}, {}}) != 0)
            std::cerr << "sqxview: No browser could be opened\n";
    }).detach();
}

int View(const SqxViewOptions& options)
{
    for (const SqxShadeOptions::Shader& shader : options.shade.shaders)
        if (!std::filesystem::exists(shader.path))
            throw std::runtime_error("There is no shader '" + shader.path + "'");
    const sigset_t signals = HoldEndSignals();
    SqxViewSession session(options);
    const SqxViewServer server(session, options.port);
    std::cout << "The page is at " << server.Address() << "; Ctrl-C ends it" << std::endl;
    if (options.open)
        OpenBrowser(server.Address());
    int signal = 0;
    sigwait(&signals, &signal);
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    ShareOnePool();
    try {
        const SqxViewOptions options = SqxReadViewOptions({argv + 1, argv + argc});
        if (options.information != SqxInformation::None)
            return SqxPrintInformation(SqxViewProgram(), options.information);
        return View(options);
    } catch (const SqxUsageError& error) {
        std::cerr << "sqxview: " << error.what() << "; '--help' lists all options\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "sqxview: " << error.what() << '\n';
        return 1;
    }
}
