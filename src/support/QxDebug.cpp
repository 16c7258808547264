// A crash tells its signal and the frames of its stack, removes what was half written, and ends
// with status 1. Everything that runs inside the handler avoids the heap, which may be what broke,
// and runs on a stack of its own, since the other may be what ran out.
//
// An interrupt removes the file too, but then ends the process as if nobody had handled it, so that
// the parent sees what happened.
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
#include <string_view>

#include "support/SlcDiagnostics.h"

namespace {

struct SignalText {
    const char* text;
    int signal;
    bool isCrash;  // a fault of ours, which the user is asked to report
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

// The preprocessed source and the output.
std::array<std::atomic<const char*>, 2> g_removedOnSignal = {};

void RemoveFiles()
{
    for (const auto& place : g_removedOnSignal)
        if (const char* path = place)
            ::unlink(path);
}

/// What the first place with `before` holds is `after` from now on.
void Exchange(const char* before, const char* after)
{
    const auto place = std::find(g_removedOnSignal.begin(), g_removedOnSignal.end(), before);
    if (place != g_removedOnSignal.end())
        *place = after;
}

/// Ends as if nobody had handled the signal, so that the parent sees what ended the process.
void Interrupt(int signal)
{
    RemoveFiles();
    std::signal(signal, SIG_DFL);
    ::raise(signal);
}

/// What the parent has told the process to ignore stays ignored.
void HandleInterrupt(int signal)
{
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = &Interrupt;
    ::sigaction(signal, &action, nullptr);
}

/// A failed write has nobody left to hear of it.
void Write(std::string_view text)
{
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

/// The addresses of the calls that are open, the innermost first.
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
    // Not `backtrace`, which loads a library of its own for this, so that each run would have to
    // load it: in the handler it is too late.
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

void QxDebug::RemoveOnSignal(const char* path)
{
    static const bool handled = (HandleInterrupt(SIGINT), HandleInterrupt(SIGTERM), true);
    static_cast<void>(handled);
    Exchange(nullptr, path);
}

void QxDebug::KeepOnSignal(const char* path)
{
    Exchange(path, nullptr);
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
    RemoveFiles();
    ::_exit(1);
}
