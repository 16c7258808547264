#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "picture/SqxPicture.h"

/// The state of a picture so far, complete each time.
struct SqxViewPainting {
    unsigned long request = 0;                     // the number of the request
    std::shared_ptr<const std::vector<char>> png;  // none yet
    bool isOver = false;                           // nothing more comes
    bool isWhole = false;                          // the PNG is
    std::string fault;                             // why it ended before it was whole
    std::string notes;                             // what the shaders printed and reported
    std::chrono::milliseconds time = {};           // since its start
};

/// Renders one picture after the other in a separate thread, coarse first. A newer picture ends the
/// one that is being rendered, but leaves it a moment to show something: a value that changes all
/// the time would otherwise show nothing.
class SqxViewPainter {
public:
    /// Called in the painter's thread, for each picture several times.
    using Show = std::function<void(const SqxViewPainting&)>;

    /// `timeLimit`: of one picture, which is ended then. What `show` uses must outlive this.
    SqxViewPainter(std::chrono::seconds timeLimit, Show show);
    /// Ends what is being rendered, and waits for that.
    ~SqxViewPainter();
    SqxViewPainter(const SqxViewPainter&) = delete;
    SqxViewPainter& operator=(const SqxViewPainter&) = delete;

    /// Asks for a picture, in place of any that was asked for and has not begun. Returns at once;
    /// any thread may ask. Faults of a picture are reported by `show`. `request`: a number for the
    /// picture, of the caller's choice.
    void Paint(SqxPictureSettings settings, unsigned long request);

private:
    void Work(const std::stop_token& end);
    void Render(SqxPictureSettings settings, unsigned long request, const std::stop_token& stop);
    void ReportShown(const SqxPicture& picture, SqxViewPainting& painting);
    void Guard(const std::stop_token& end);

    std::chrono::seconds m_timeLimit;
    Show m_show;

    std::mutex m_mutex;  // of what follows
    std::condition_variable_any m_changed;
    std::optional<SqxPictureSettings> m_next;
    unsigned long m_nextRequest = 0;
    std::optional<std::stop_source> m_current;  // ends the picture that is being rendered
    std::chrono::steady_clock::time_point m_start;
    bool m_hasShown = false;  // of the current one

    std::jthread m_thread;  // last: it uses all the others
    std::jthread m_guard;   // ends a picture that was overtaken and shows nothing
};
