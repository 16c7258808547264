#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <unistd.h>

#include "helpers/TemporaryFolder.h"
#include "sqxview/SqxViewPainter.h"
#include "sqxview/SqxViewShorten.h"
#include "sqxview/SqxViewSource.h"

namespace {

TEST(SqxViewPainter, EndsWhileAPictureIsOutdated)
{
    const TemporaryFolder folder;
    TemporaryFolder::Write("a.sl", "surface a() { Ci = 1; Oi = 1; }\n");
    SqxPictureSettings settings;
    settings.width = settings.height = 16;
    settings.shaders = {
        {SqxViewSource("a.sl", {}).Compile([] { return false; }).value().shader, {}}};
    std::mutex mutex;
    std::condition_variable shown;
    bool isShown = false;
    std::optional<SqxViewPainter> painter;
    painter.emplace(std::chrono::seconds(60), [&](const SqxViewPainting&) {
        {
            const std::lock_guard lock(mutex);
            isShown = true;
        }
        shown.notify_all();
        // Meanwhile the next picture is requested and the painter is destroyed.
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    });
    painter->Paint(settings, 1);
    {
        std::unique_lock lock(mutex);
        shown.wait(lock, [&] { return isShown; });
    }
    painter->Paint(settings, 2);
    alarm(60);  // ends the test program if the painter does not end
    painter.reset();
    alarm(0);
}

TEST(SqxViewShorten, CutsBetweenCharacters)
{
    struct {
        const char* text;
        std::size_t most;
        const char* shortened;
    } static const cases[] = {
        {"abc", 3, "abc"},
        {"abcd", 3, "abc\n... and more\n"},
        {"ab\xC3\xA4", 3, "ab\n... and more\n"},
        {"\xC3\xA4\xC3\xA4", 2, "\xC3\xA4\n... and more\n"},
        {"a\xF0\x9F\x98\x80", 4, "a\n... and more\n"},
        {"\x80\x80\x80\x80\x80\x80", 5, "\x80\x80\x80\x80\x80\n... and more\n"},
    };
    for (const auto& one : cases) {
        std::string text = one.text;
        SqxViewShorten(text, one.most);
        EXPECT_EQ(text, one.shortened);
    }
}

}  // namespace
