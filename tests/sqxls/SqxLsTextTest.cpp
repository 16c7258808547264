#include "sqxls/SqxLsText.h"

#include <gtest/gtest.h>

#include "sqxls/SqxLsUri.h"

namespace {

TEST(SqxLsText, ConvertsPositionsOfTheProtocolAndOfTheCompiler)
{
    // The text has a byte order mark, a character of two bytes, a character of four bytes, which is
    // two UTF-16 units, a byte that is not valid UTF-8, and all three kinds of line breaks.
    const SqxLsText text("\xEF\xBB\xBF"
                         "a\xC3\xA4\xF0\x9F\x98\x80z\nb\xE4"
                         "c\r\nd\re");
    struct {
        SqxLsPosition position;
        std::size_t offset;
        SqxLsPlace place;
    } static const cases[] = {
        {{0, 1}, 3, {1, 1}},  {{0, 2}, 4, {1, 2}},  {{0, 3}, 6, {1, 4}},  {{0, 5}, 10, {1, 8}},
        {{0, 6}, 11, {1, 9}}, {{1, 0}, 12, {2, 1}}, {{1, 2}, 14, {2, 3}}, {{1, 3}, 15, {2, 4}},
        {{2, 0}, 17, {3, 1}}, {{3, 0}, 19, {3, 3}}, {{3, 1}, 20, {3, 4}},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(text.OffsetOf(one.position), one.offset);
        EXPECT_EQ(text.PositionOf(one.offset), one.position) << one.offset;
        EXPECT_EQ(text.OffsetOf(one.place), one.offset);
        const SqxLsPlace place = text.PlaceOf(one.offset);
        EXPECT_EQ(place.line, one.place.line) << one.offset;
        EXPECT_EQ(place.column, one.place.column) << one.offset;
    }
    EXPECT_EQ(text.OffsetOf(SqxLsPosition{0, 4}), 6U) << "the middle of a pair";
    EXPECT_EQ(text.OffsetOf(SqxLsPosition{1, 99}), 15U) << "the end of a line";
    EXPECT_EQ(text.OffsetOf(SqxLsPosition{99, 0}), 20U) << "the end of the text";
    EXPECT_EQ(text.OffsetOf(SqxLsPlace{99, 99}), 20U);
}

TEST(SqxLsUri, ConvertsPathsAndBack)
{
    const std::string path = "/tmp/a b#\xC3\xA4%.sl";
    EXPECT_EQ(SqxLsUriOf(path), "file:///tmp/a%20b%23%C3%A4%25.sl");
    EXPECT_EQ(SqxLsPathOf(SqxLsUriOf(path)), path);
    EXPECT_EQ(SqxLsPathOf("file://localhost/a/./b/../c%2"), "/a/c%2");
    EXPECT_EQ(SqxLsPathOf("/a//./b/../c.sl"), "/a/c.sl") << "else nothing finds its text again";
    EXPECT_EQ(SqxLsPathOf("untitled:Untitled-1"), "untitled:Untitled-1");
}

}  // namespace
