// The signals are blocked in the thread that creates the object and in all threads created after
// that, and one of these waits for them. To end it, the destructor sends a signal to it alone.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "process/SqxEndSignals.h"

#include <csignal>
#include <utility>

namespace {

[[nodiscard]] sigset_t EndSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, number);
    return signals;
}

void Wait(const std::stop_token& isOver, const std::function<void()>& beforeTheEnd)
{
    const sigset_t signals = EndSignals();
    int signal = 0;
    if (sigwait(&signals, &signal) != 0 || isOver.stop_requested())
        return;
    beforeTheEnd();
    std::signal(signal, SIG_DFL);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    std::raise(signal);
}

}  // namespace

SqxEndSignals::SqxEndSignals(std::function<void()> beforeTheEnd)
{
    const sigset_t signals = EndSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    m_waiter = std::jthread([action = std::move(beforeTheEnd)](const std::stop_token& isOver) {
        Wait(isOver, action);
    });
}

SqxEndSignals::~SqxEndSignals()
{
    m_waiter.request_stop();
    // The signal is blocked, so it ends the wait of the thread and not the process.
    // NOLINTNEXTLINE(bugprone-bad-signal-to-kill-thread)
    pthread_kill(m_waiter.native_handle(), SIGTERM);
    m_waiter.join();
    const sigset_t signals = EndSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}
