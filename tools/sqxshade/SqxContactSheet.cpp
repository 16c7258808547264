// Pictures are arranged in a raster that is as square as their number allows. Names use letters of
// 5 by 8 pixels, which are stored here as bits, so that no font is needed.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "sqxshade/SqxContactSheet.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned int k_gap = 6;        // around each picture
constexpr unsigned int k_textRoom = 11;  // below each picture, for its name
constexpr unsigned char k_paper = 28;
constexpr unsigned char k_ink = 200;

constexpr unsigned int k_letterWidth = 5;
constexpr unsigned int k_letterHeight = 8;

struct Letter {
    char letter;
    unsigned char columns[k_letterWidth];  // from the left; bit 0 is the top
};

// clang-format off
constexpr Letter k_letters[] = {
    {'a', {0x20, 0x54, 0x54, 0x54, 0x78}}, {'b', {0x7F, 0x48, 0x44, 0x44, 0x38}},
    {'c', {0x38, 0x44, 0x44, 0x44, 0x28}}, {'d', {0x38, 0x44, 0x44, 0x48, 0x7F}},
    {'e', {0x38, 0x54, 0x54, 0x54, 0x18}}, {'f', {0x08, 0x7E, 0x09, 0x01, 0x02}},
    {'g', {0x18, 0xA4, 0xA4, 0xA4, 0x7C}}, {'h', {0x7F, 0x08, 0x04, 0x04, 0x78}},
    {'i', {0x00, 0x44, 0x7D, 0x40, 0x00}}, {'j', {0x40, 0x80, 0x84, 0x7D, 0x00}},
    {'k', {0x7F, 0x10, 0x28, 0x44, 0x00}}, {'l', {0x00, 0x41, 0x7F, 0x40, 0x00}},
    {'m', {0x7C, 0x04, 0x78, 0x04, 0x78}}, {'n', {0x7C, 0x08, 0x04, 0x04, 0x78}},
    {'o', {0x38, 0x44, 0x44, 0x44, 0x38}}, {'p', {0xFC, 0x24, 0x24, 0x24, 0x18}},
    {'q', {0x18, 0x24, 0x24, 0x24, 0xFC}}, {'r', {0x7C, 0x08, 0x04, 0x04, 0x08}},
    {'s', {0x48, 0x54, 0x54, 0x54, 0x24}}, {'t', {0x04, 0x3F, 0x44, 0x40, 0x20}},
    {'u', {0x3C, 0x40, 0x40, 0x20, 0x7C}}, {'v', {0x1C, 0x20, 0x40, 0x20, 0x1C}},
    {'w', {0x3C, 0x40, 0x38, 0x40, 0x3C}}, {'x', {0x44, 0x28, 0x10, 0x28, 0x44}},
    {'y', {0x1C, 0xA0, 0xA0, 0xA0, 0x7C}}, {'z', {0x44, 0x64, 0x54, 0x4C, 0x44}},
    {'0', {0x3E, 0x51, 0x49, 0x45, 0x3E}}, {'1', {0x00, 0x42, 0x7F, 0x40, 0x00}},
    {'2', {0x42, 0x61, 0x51, 0x49, 0x46}}, {'3', {0x21, 0x41, 0x45, 0x4B, 0x31}},
    {'4', {0x18, 0x14, 0x12, 0x7F, 0x10}}, {'5', {0x27, 0x45, 0x45, 0x45, 0x39}},
    {'6', {0x3C, 0x4A, 0x49, 0x49, 0x30}}, {'7', {0x01, 0x71, 0x09, 0x05, 0x03}},
    {'8', {0x36, 0x49, 0x49, 0x49, 0x36}}, {'9', {0x06, 0x49, 0x49, 0x29, 0x1E}},
    {'_', {0x80, 0x80, 0x80, 0x80, 0x80}}, {'-', {0x08, 0x08, 0x08, 0x08, 0x08}},
};
// clang-format on

/// Returns the letter of a character, for a capital the small letter; the outline of a box for a
/// character that has no letter here.
const Letter& LetterFor(char wanted)
{
    static constexpr Letter k_box = {0, {0x7F, 0x41, 0x41, 0x41, 0x7F}};
    const char small = wanted >= 'A' && wanted <= 'Z' ? static_cast<char>(wanted + 32) : wanted;
    for (const Letter& letter : k_letters)
        if (letter.letter == small)
            return letter;
    return k_box;
}

unsigned int ColumnsFor(std::size_t count)
{
    const auto columns =
        static_cast<unsigned int>(std::ceil(std::sqrt(static_cast<double>(count))));
    return std::max(1U, columns);
}

}  // namespace

SqxContactSheet::SqxContactSheet(unsigned int pictureWidth, unsigned int pictureHeight,
                                 std::size_t count)
    : m_pictureWidth(pictureWidth),
      m_pictureHeight(pictureHeight),
      m_columns(ColumnsFor(count))
{
    const auto rows = static_cast<unsigned int>((count + m_columns - 1) / m_columns);
    m_width = m_columns * (pictureWidth + k_gap) + k_gap;
    m_height = rows * (pictureHeight + k_textRoom + k_gap) + k_gap;
    m_pixels.assign(static_cast<std::size_t>(m_width) * m_height * 3, k_paper);
}

void SqxContactSheet::Place(std::size_t number, const std::vector<unsigned char>& picture,
                            const std::string& name)
{
    const auto column = static_cast<unsigned int>(number % m_columns);
    const auto row = static_cast<unsigned int>(number / m_columns);
    const unsigned int left = k_gap + column * (m_pictureWidth + k_gap);
    const unsigned int top = k_gap + row * (m_pictureHeight + k_textRoom + k_gap);
    for (unsigned int y = 0; y < m_pictureHeight; ++y) {
        const std::size_t line = static_cast<std::size_t>(m_pictureWidth) * 3;
        const std::size_t place = (static_cast<std::size_t>(top + y) * m_width + left) * 3;
        std::copy_n(picture.begin() + static_cast<std::ptrdiff_t>(y * line), line,
                    m_pixels.begin() + static_cast<std::ptrdiff_t>(place));
    }
    Write(name, left, top + m_pictureHeight + 2, left + m_pictureWidth);
}

/// Omits the letters that would extend beyond `right`.
void SqxContactSheet::Write(const std::string& text, unsigned int left, unsigned int top,
                            unsigned int right)
{
    for (const char c : text) {
        if (left + k_letterWidth > right)
            return;
        const Letter& letter = LetterFor(c);
        for (unsigned int x = 0; x < k_letterWidth; ++x)
            for (unsigned int y = 0; y < k_letterHeight; ++y)
                if (letter.columns[x] >> y & 1)
                    SetPixel(left + x, top + y, k_ink);
        left += k_letterWidth + 1;
    }
}

void SqxContactSheet::SetPixel(unsigned int x, unsigned int y, unsigned char value)
{
    const std::size_t place = (static_cast<std::size_t>(y) * m_width + x) * 3;
    std::fill_n(m_pixels.begin() + static_cast<std::ptrdiff_t>(place), 3, value);
}
