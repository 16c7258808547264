#pragma once

#include <string>
#include <vector>

#include "picture/SqxByteEncoder.h"

/// Encodes a picture of three bytes per pixel, rows from the top, as a PNG file. `encoding` is that
/// of the bytes; the file is marked as sRGB or not. Throws `SqxPictureError` if that fails.
[[nodiscard]] std::vector<char> SqxEncodePng(unsigned int width, unsigned int height,
                                             const std::vector<unsigned char>& pixels,
                                             SqxEncoding encoding);

/// Writes a file, which appears in its folder only when it is complete; a path that is not a
/// regular file is written to directly. Throws `SqxPictureError` if that fails.
void SqxWritePicture(const std::string& path, const std::vector<char>& bytes);

/// A picture of four linear values per pixel, from 0 to 1, rows from the top: red, green and blue,
/// each times opacity, and opacity.
struct SqxImage {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<float> values;
};

/// Reads a PNG file of any color type. Throws `SqxPictureError` if it cannot be read or is too
/// large.
[[nodiscard]] SqxImage SqxReadPng(const std::string& path);
