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

/// The current state of a picture; each state replaces the previous one.
struct SqxViewPainting {
    unsigned long request = 0;                     // the number of the request
    std::shared_ptr<const std::vector<char>> png;  // what is shown; null until there is something
    bool isOver = false;                           // no further state follows
    bool isWhole = false;                          // the PNG is the whole picture
    std::string fault;                             // an error, or that the time is over; else empty
    std::string notes;                             // what the shaders printed and reported
    std::chrono::milliseconds time = {};           // since the start of the picture
};

/// Renders pictures one after the other in a separate thread, each of them coarsely first. A newer
/// request ends the current picture, but first gives it a moment to show something; otherwise
/// nothing would be shown while a value changes all the time.
class SqxViewPainter {
public:
    /// Called in the thread of the painter, each time that a coarse or the whole picture is
    /// complete, and once more at the end.
    using Show = std::function<void(const SqxViewPainting&)>;

    /// A picture that takes longer than `timeLimit` is ended. Everything that `show` uses must
    /// outlive this object.
    SqxViewPainter(std::chrono::seconds timeLimit, Show show);
    /// Stops the current picture and waits until it has ended.
    ~SqxViewPainter();
    SqxViewPainter(const SqxViewPainter&) = delete;
    SqxViewPainter& operator=(const SqxViewPainter&) = delete;

    /// Requests a picture, in place of an earlier request that has not begun. Returns at once; may
    /// be called in any thread. Errors are passed to `show`. `request` is any number that
    /// identifies the picture to the caller.
    void Paint(SqxPictureSettings settings, unsigned long request);

private:
    void Work(const std::stop_token& end);
    void Render(SqxPictureSettings settings, unsigned long request, const std::stop_token& stop);
    void ReportShown(const SqxPicture& picture, SqxViewPainting& painting);
    void Guard(const std::stop_token& end);

    std::chrono::seconds m_timeLimit;
    Show m_show;

    std::mutex m_mutex;  // guards the fields from `m_next` to `m_hasShown`
    std::condition_variable_any m_changed;
    std::optional<SqxPictureSettings> m_next;
    unsigned long m_nextRequest = 0;
    std::optional<std::stop_source> m_current;      // ends the picture that is being rendered
    std::chrono::steady_clock::time_point m_start;  // of the current picture
    bool m_hasShown = false;                        // the current picture has shown something

    std::jthread m_thread;  // the threads are last, since they use all other fields
    std::jthread m_guard;   // ends the current picture if a newer request waits
};
