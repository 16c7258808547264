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

    /// A file that a signal removes if it ends the process, SIGINT and SIGTERM among them. The text
    /// must live until `KeepOnSignal`, and not change. There can be two of them.
    static void RemoveOnSignal(const char* path);
    /// The same text: the file is removed no more.
    static void KeepOnSignal(const char* path);

    /// Reports the signal and the stack, and ends the process with status 1. After SIGHUP the
    /// compile goes on. Writes to the descriptor alone: no library state is safe to touch here.
    static void SignalHandler(int signal);
};
