#pragma once

#include <functional>
#include <thread>

/// While the object exists, a signal by which users end programs (SIGINT, SIGTERM, SIGHUP) first
/// runs a function in a separate thread, where operations are allowed that a signal handler must
/// not perform. Then the signal ends the program.
///
/// Create the object before other threads, so that they inherit the blocked signals. The function
/// must not throw.
class SqxEndSignals {
public:
    explicit SqxEndSignals(std::function<void()> beforeTheEnd);
    ~SqxEndSignals();
    SqxEndSignals(const SqxEndSignals&) = delete;
    SqxEndSignals& operator=(const SqxEndSignals&) = delete;

private:
    std::jthread m_waiter;
};
