#pragma once

#include <string>
#include <vector>

/// Arranges pictures of the same size in one picture, each with its name below it.
class SqxContactSheet {
public:
    /// The sheet has as many columns as rows, or one more.
    SqxContactSheet(unsigned int pictureWidth, unsigned int pictureHeight, std::size_t count);

    /// Copies picture `number`, counted from 0, to its place, and writes its name below it. The
    /// picture has the size that the constructor got, and three bytes per pixel, rows from the top.
    void Place(std::size_t number, const std::vector<unsigned char>& picture,
               const std::string& name);

    // The sheet, in pixels. `Pixels` has the same form as a picture.

    [[nodiscard]] unsigned int Width() const { return m_width; }
    [[nodiscard]] unsigned int Height() const { return m_height; }
    [[nodiscard]] const std::vector<unsigned char>& Pixels() const { return m_pixels; }

private:
    void Write(const std::string& text, unsigned int left, unsigned int top, unsigned int right);
    void SetPixel(unsigned int x, unsigned int y, unsigned char value);

    unsigned int m_pictureWidth;
    unsigned int m_pictureHeight;
    unsigned int m_columns;
    unsigned int m_width;
    unsigned int m_height;
    std::vector<unsigned char> m_pixels;
};
