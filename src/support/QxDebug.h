#pragma once

/// Turns a crash of the program into a report, and removes unfinished files when a handled signal
/// or `std::exit` ends the process.
class QxDebug {
public:
    /// Handles SIGILL, SIGTRAP, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS and SIGHUP with
    /// `SignalHandler`. In the calling thread it runs on a separate stack, so that a stack overflow
    /// is reported too. True if the stack and all handlers were installed.
    [[nodiscard]] static bool InitErrorSignalsHandling();

    /// Writes the innermost 64 calls on the stack to standard error, one per line. False, without
    /// output, if the platform provides none.
    static bool StackTrace();

    /// Lets `RemoveOnSignal` have an effect. Only for programs, at their start: in a library, the
    /// handlers would replace those of the host.
    static void EnableRemoval();

    /// Registers a file or empty folder to be removed if `std::exit` or a handled signal ends the
    /// process; at `std::exit`, a file with a `placeOnExit` is moved there instead, or removed if
    /// that fails. The first call installs `EndBySignal` for SIGINT, SIGTERM, SIGQUIT, SIGPIPE,
    /// SIGXCPU and SIGXFSZ, unless they are ignored. Register a folder before its file: it is then
    /// removed after the file. The texts must not change, and must live until `KeepOnSignal`. At
    /// most eight can be registered at a time; further registrations have no effect. Without
    /// `EnableRemoval` the call has no effect; with it, several threads must not call at a time.
    static void RemoveOnSignal(const char* path, const char* placeOnExit = nullptr);
    /// Cancels the registration of `path`: the pointer that was registered, not an equal text.
    static void KeepOnSignal(const char* path);

    /// Removes the registered files and folders, and ends the process with the signal's default
    /// action, so that the parent sees the cause.
    static void EndBySignal(int signal);

    /// Reports the signal and the stack, removes the registered files and folders, and ends the
    /// process with status 1; after SIGHUP it only reports, and the program continues. Writes
    /// directly to the file descriptor, since the state of a stream may be inconsistent in a
    /// handler.
    static void SignalHandler(int signal);
};
