// On a crash, the handler reports the signal and the stack frames, removes unfinished files, and
// ends the process with status 1. It does not use the heap, which may be corrupt, and runs on a
// separate stack, since the usual one may have overflowed.
//
// SIGINT and the other signals of `HandleEndings` also remove unfinished files, but then end the
// process by the signal, so that the parent sees the cause. `std::exit` does not run destructors of
// locals, so an exit handler removes the files or moves them into place.
//
// Tested by tests/support/QxDebugTest.cpp.

#include "support/QxDebug.h"

#include <execinfo.h>
#include <unistd.h>
#include <unwind.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/SlcDiagnostics.h"

namespace {

struct SignalText {
    const char* text;
    int signal;
    bool isCrash;  // a fault of the compiler, which the user is asked to report
};

//   text                           signal   crash
constexpr SignalText k_signals[] = {
    {"Hangup", SIGHUP, false},
    {"Illegal instruction", SIGILL, true},
    {"Trace trap", SIGTRAP, false},
    {"Abort", SIGABRT, false},
    {"Floating point exception", SIGFPE, true},
    {"Bus error", SIGBUS, true},
    {"Segmentation violation", SIGSEGV, true},
    {"Bad argument to system call", SIGSYS, false},
};
constexpr SignalText k_unexpected = {"Unexpected!", 0, false};

constexpr std::size_t k_maxFrames = 64;
constexpr std::size_t k_handlerStackSize = 65536;

const SignalText& Find(int signal)
{
    for (const SignalText& row : k_signals)
        if (row.signal == signal)
            return row;
    return k_unexpected;
}

struct UnfinishedFile {
    std::atomic<const char*> path = nullptr;         // null if the row is free
    std::atomic<const char*> placeOnExit = nullptr;  // null if the file is to be removed
};

// Enough rows for the preprocessed source, the C++ file and the output, each with its folder.
std::array<UnfinishedFile, 8> g_unfinishedFiles;

bool g_removesFiles = false;  // set by programs, so that a library leaves the host's signals alone

enum class Ending { BySignal, ByExit };

/// Removes the registered files and folders; at `std::exit`, moves the files that have a place into
/// it instead. Iterates from the last to the first, since a folder can be removed only after its
/// file.
void FinishFiles(Ending ending)
{
    for (auto file = g_unfinishedFiles.rbegin(); file != g_unfinishedFiles.rend(); ++file) {
        const char* const path = file->path;
        if (!path)
            continue;
        const char* const place = ending == Ending::ByExit ? file->placeOnExit.load() : nullptr;
        if (!place || std::rename(path, place) != 0)
            ::unlink(path);
        ::rmdir(path);
    }
}

UnfinishedFile* FindUnfinished(const char* path)
{
    const auto file = std::find_if(g_unfinishedFiles.begin(), g_unfinishedFiles.end(),
                                   [&](const UnfinishedFile& row) { return row.path == path; });
    return file == g_unfinishedFiles.end() ? nullptr : &*file;
}

/// Handles the signal with `EndBySignal`, but leaves it ignored if the parent process set it to be
/// ignored.
void HandleInterrupt(int signal)
{
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = &QxDebug::EndBySignal;
    ::sigaction(signal, &action, nullptr);
}

/// Installs handlers for signals that end a process but do not indicate a fault in it, and for
/// `std::exit`. False if the handler for `std::exit` could not be installed.
bool HandleEndings()
{
    for (const int signal : {SIGINT, SIGTERM, SIGQUIT, SIGPIPE, SIGXCPU, SIGXFSZ})
        HandleInterrupt(signal);
    return std::atexit([] { FinishFiles(Ending::ByExit); }) == 0;
}

/// Ignores a failed write, since it cannot be reported anywhere.
void Write(std::string_view text)
{
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

/// The return addresses of the innermost calls, at most `k_maxFrames`, innermost first.
struct Frames {
    std::array<void*, k_maxFrames> addresses;
    std::size_t count = 0;
};

_Unwind_Reason_Code AddFrame(_Unwind_Context* context, void* frames)
{
    auto& all = *static_cast<Frames*>(frames);
    const _Unwind_Ptr address = _Unwind_GetIP(context);
    if (address == 0 || all.count == all.addresses.size())
        return _URC_END_OF_STACK;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): this is how the unwinder gives an address
    all.addresses[all.count++] = reinterpret_cast<void*>(address);
    return _URC_NO_REASON;
}

bool InstallHandlerStack()
{
    static std::array<char, k_handlerStackSize> memory;
    stack_t stack = {};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    return ::sigaltstack(&stack, nullptr) == 0;
}

}  // namespace

bool QxDebug::InitErrorSignalsHandling()
{
    bool installed = InstallHandlerStack();
    struct sigaction action = {};
    action.sa_handler = &QxDebug::SignalHandler;
    action.sa_flags = SA_ONSTACK | SA_RESTART;
    for (const SignalText& row : k_signals)
        installed = ::sigaction(row.signal, &action, nullptr) == 0 && installed;
    return installed;
}

bool QxDebug::StackTrace()
{
    // `backtrace` would load a library on first use. In the handler it is too late for that, so
    // every run would have to load the library in advance.
    Frames frames;
    _Unwind_Backtrace(&AddFrame, &frames);
    if (frames.count == 0)
        return false;
    Write("\n");
    for (std::size_t i = 0; i < frames.count; ++i) {
        std::array<char, 24> heading;
        std::snprintf(heading.data(), heading.size(), "[%zu]\t", i);
        Write(heading.data());
        ::backtrace_symbols_fd(&frames.addresses[i], 1, STDERR_FILENO);
    }
    Write("\n");
    return true;
}

void QxDebug::EnableRemoval()
{
    g_removesFiles = true;
}

void QxDebug::RemoveOnSignal(const char* path, const char* placeOnExit)
{
    if (!g_removesFiles)
        return;
    static const bool handled = HandleEndings();
    static_cast<void>(handled);
    if (UnfinishedFile* const file = FindUnfinished(nullptr)) {
        file->placeOnExit = placeOnExit;
        file->path = path;
    }
}

void QxDebug::KeepOnSignal(const char* path)
{
    if (UnfinishedFile* const file = FindUnfinished(path))
        file->path = nullptr;
}

void QxDebug::EndBySignal(int signal)
{
    FinishFiles(Ending::BySignal);
    std::signal(signal, SIG_DFL);
    ::raise(signal);
}

void QxDebug::SignalHandler(int signal)
{
    const SignalText& row = Find(signal);
    static std::array<char, 128> text;
    std::snprintf(text.data(), text.size(), "Received signal %d (%s).\n", signal, row.text);
    Write(text.data());
    static_cast<void>(StackTrace());
    if (row.isCrash) {
        Write("\n * Please report this crash to ");
        Write(SlcContactAddress());
        Write(". *\n");
    }
    if (signal == SIGHUP)
        return;
    FinishFiles(Ending::BySignal);
    ::_exit(1);
}
