#pragma once

/// Turns a crash of the compiler into a report.
class QxDebug {
public:
    /// Has SIGILL, SIGTRAP, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS and SIGHUP go to
    /// `SignalHandler`, on a stack of its own so that an overflow of the usual one is reported
    /// too. True if all of them do.
    [[nodiscard]] static bool InitErrorSignalsHandling();

    /// Writes the calls that led here to standard error, one a line. False, and nothing is
    /// written, if the platform gives none.
    static bool StackTrace();

    /// A file or empty folder that is removed if a signal ends the process, or if it leaves by
    /// `std::exit`; a file with a `placeOnExit` is moved there instead by `std::exit`. What was
    /// registered last goes first. The texts must live until `KeepOnSignal`, and not change. There
    /// is room for eight.
    static void RemoveOnSignal(const char* path, const char* placeOnExit = nullptr);
    /// The same text: the file is removed no more.
    static void KeepOnSignal(const char* path);

    /// Ends the process by the signal, as if nothing had handled it, so that the parent sees what
    /// ended it.
    static void EndBySignal(int signal);

    /// Reports the signal and the stack, and ends the process with status 1. After SIGHUP the
    /// compile goes on. Writes to the descriptor alone: no library state is safe to touch here.
    static void SignalHandler(int signal);
};
