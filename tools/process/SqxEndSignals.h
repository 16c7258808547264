#pragma once

#include <functional>
#include <thread>

/// While it lives, a signal by which users end programs (SIGINT, SIGTERM, SIGHUP) first runs a
/// function, in a separate thread, where operations are allowed that a signal handler must not
/// perform. Then the program ends by the signal.
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
