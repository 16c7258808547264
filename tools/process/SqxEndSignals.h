#pragma once

#include <functional>
#include <thread>

/// While it lives, a signal by which users end programs (SIGINT, SIGTERM, SIGHUP) first has
/// something done, in a thread of its own, where all may be done that a signal's handler may not.
/// Then the program ends by the signal.
///
/// Made before other threads, which must not take the signals themselves.
class SqxEndSignals {
public:
    explicit SqxEndSignals(std::function<void()> beforeTheEnd);
    ~SqxEndSignals();
    SqxEndSignals(const SqxEndSignals&) = delete;
    SqxEndSignals& operator=(const SqxEndSignals&) = delete;

private:
    std::jthread m_waiter;
};
