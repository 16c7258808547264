#pragma once

#include <string>
#include <vector>

#include "picture/SqxByteEncoder.h"

/// Encodes a picture of three bytes per pixel, rows from the top, as a PNG file. Throws
/// `SqxPictureError`.
[[nodiscard]] std::vector<char> SqxEncodePng(unsigned int width, unsigned int height,
                                             const std::vector<unsigned char>& pixels,
                                             SqxEncoding encoding);

/// Writes a file, which appears in its folder only when it is complete. Throws `SqxPictureError`.
void SqxWritePicture(const std::string& path, const std::vector<char>& bytes);

/// A picture of four linear values per pixel, from 0 to 1, rows from the top: red, green and blue,
/// each times opacity, and opacity.
struct SqxImage {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<float> values;
};

/// Reads a PNG file of any color type. Throws `SqxPictureError`.
[[nodiscard]] SqxImage SqxReadPng(const std::string& path);
