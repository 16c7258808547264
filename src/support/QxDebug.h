#pragma once

/// Turns a crash of the compiler into a report.
class QxDebug {
public:
    /// Handles SIGILL, SIGTRAP, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS and SIGHUP with
    /// `SignalHandler`, on a separate stack so that a stack overflow is reported too. True if all
    /// of the handlers were installed.
    [[nodiscard]] static bool InitErrorSignalsHandling();

    /// Writes the call stack to standard error, one call per line. False, without output, if the
    /// platform provides none.
    static bool StackTrace();

    /// Registers a file or empty folder to be removed if a signal or `std::exit` ends the process;
    /// a file with a `placeOnExit` is moved there instead at `std::exit`. The last registered is
    /// removed first. The texts must live until `KeepOnSignal`, and not change. At most eight can
    /// be registered.
    static void RemoveOnSignal(const char* path, const char* placeOnExit = nullptr);
    /// Cancels the registration; `path` must be the same pointer.
    static void KeepOnSignal(const char* path);

    /// Ends the process with the signal's default action, so that the parent sees the cause.
    static void EndBySignal(int signal);

    /// Reports the signal and the stack, and ends the process with status 1. After SIGHUP the
    /// compilation continues. Uses only the file descriptor, since no library state is safe to use
    /// in a handler.
    static void SignalHandler(int signal);
};
