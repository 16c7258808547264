// One thread renders, and one watches it. A newer request ends the current picture, but only after
// it has shown something or a moment has passed, so that pictures keep coming while a slider is
// moved.
//
// Tested by tests/sqxview.

#include "sqxview/SqxViewPainter.h"

#include "sqxview/SqxViewShorten.h"

namespace {

constexpr auto k_moment = std::chrono::milliseconds(100);  // for an outdated picture
constexpr std::size_t k_mostNotes = 20'000;                // bytes

void AddNote(std::string& notes, const SqxNote& note)
{
    if (notes.size() > k_mostNotes)
        return;
    notes += note.text;
    if (note.isReport)
        notes += '\n';
    SqxViewShorten(notes, k_mostNotes);
}

[[nodiscard]] std::string OutOfTimeText(std::chrono::seconds limit)
{
    return "The picture was not whole after " + std::to_string(limit.count()) +
           " s and was ended; '--time-limit SECONDS' gives it longer";
}

}  // namespace

SqxViewPainter::SqxViewPainter(std::chrono::seconds timeLimit, Show show)
    : m_timeLimit(timeLimit),
      m_show(std::move(show)),
      m_thread([this](const std::stop_token& end) { Work(end); }),
      m_guard([this](const std::stop_token& end) { Guard(end); })
{
}

SqxViewPainter::~SqxViewPainter()
{
    m_guard.request_stop();
    m_thread.request_stop();
    const std::lock_guard lock(m_mutex);
    if (m_current)
        m_current->request_stop();
}

void SqxViewPainter::Paint(SqxPictureSettings settings, unsigned long request)
{
    const std::lock_guard lock(m_mutex);
    m_next = std::move(settings);
    m_nextRequest = request;
    m_changed.notify_all();
}

void SqxViewPainter::Work(const std::stop_token& end)
{
    std::unique_lock lock(m_mutex);
    const auto hasNext = [this] { return m_next.has_value(); };
    while (m_changed.wait(lock, end, hasNext) && !end.stop_requested()) {
        SqxPictureSettings settings = *std::exchange(m_next, std::nullopt);
        const unsigned long request = m_nextRequest;
        m_current.emplace();
        m_hasShown = false;
        m_start = std::chrono::steady_clock::now();
        const std::stop_token stop = m_current->get_token();
        lock.unlock();
        Render(std::move(settings), request, stop);
        lock.lock();
        m_current.reset();
        m_changed.notify_all();
    }
}

void SqxViewPainter::Guard(const std::stop_token& end)
{
    const auto isOvertaken = [this] { return m_next && m_current; };
    std::unique_lock lock(m_mutex);
    // After a request to stop, a wait returns the value of its condition and keeps the mutex
    // locked.
    while (m_changed.wait(lock, end, isOvertaken) && !end.stop_requested()) {
        const auto start = m_start;
        const auto isSettled = [&] { return !m_current || m_hasShown || m_start != start; };
        m_changed.wait_until(lock, end, start + k_moment, isSettled);
        if (m_current && m_start == start)
            m_current->request_stop();
        m_changed.wait(lock, end, [&] { return !m_current || m_start != start; });
    }
}

void SqxViewPainter::ReportShown(const SqxPicture& picture, SqxViewPainting& painting)
{
    const SqxPictureSettings& settings = picture.Settings();
    painting.png = std::make_shared<const std::vector<char>>(SqxEncodePng(
        settings.width, settings.height, picture.Bytes(SqxEncoding::Srgb), SqxEncoding::Srgb));
    {
        const std::lock_guard lock(m_mutex);
        m_hasShown = true;
        m_changed.notify_all();
    }
}

void SqxViewPainter::Render(SqxPictureSettings settings, unsigned long request,
                            const std::stop_token& stop)
{
    const auto start = std::chrono::steady_clock::now();
    const auto now = [&] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - start);
    };
    SqxViewPainting painting;
    painting.request = request;
    try {
        SqxPicture picture(std::move(settings));
        SqxPicture::Watch watch;
        watch.stop = stop;
        watch.deadline = start + m_timeLimit;
        watch.coarseFirst = true;
        watch.note = [&](const SqxNote& note) { AddNote(painting.notes, note); };
        watch.show = [&] {
            ReportShown(picture, painting);
            painting.time = now();
            m_show(painting);
        };
        const SqxPictureEnd end = picture.Render(watch);
        painting.isWhole = end == SqxPictureEnd::Whole;
        if (end == SqxPictureEnd::OutOfTime)
            painting.fault = OutOfTimeText(m_timeLimit);
    } catch (const std::exception& error) {
        painting.fault = error.what();
    }
    painting.isOver = true;
    painting.time = now();
    m_show(painting);
}
