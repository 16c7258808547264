#pragma once

/// Turns a crash of the compiler into a report.
class QxDebug {
public:
    /// Handles SIGILL, SIGTRAP, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS and SIGHUP with
    /// `SignalHandler`, on a separate stack so that a stack overflow is reported too. True if the
    /// stack and all handlers were installed.
    [[nodiscard]] static bool InitErrorSignalsHandling();

    /// Writes the call stack to standard error, one call per line. False, without output, if the
    /// platform provides none.
    static bool StackTrace();

    /// Registers a file or empty folder to be removed if a signal or `std::exit` ends the process;
    /// at `std::exit`, a file with a `placeOnExit` is moved there instead. Register a folder before
    /// its file: it is then removed after the file. The texts must not change, and must live until
    /// `KeepOnSignal`. At most eight can be registered at a time; further calls have no effect.
    static void RemoveOnSignal(const char* path, const char* placeOnExit = nullptr);
    /// Cancels the registration of `path`, which must be the pointer that was registered.
    static void KeepOnSignal(const char* path);

    /// Removes the registered files, and ends the process with the signal's default action, so that
    /// the parent sees the cause.
    static void EndBySignal(int signal);

    /// Reports the signal and the stack, removes the registered files, and ends the process with
    /// status 1; after SIGHUP it only reports, and the compilation continues. Writes directly to
    /// the file descriptor, since the state of a stream may be inconsistent in a handler.
    static void SignalHandler(int signal);
};
