#pragma once

#include <string>
#include <vector>

#include "picture/SqxByteEncoder.h"

/// A PNG file of a picture of three bytes a pixel, rows from the top. Throws `SqxPictureError`.
[[nodiscard]] std::vector<char> SqxEncodePng(unsigned int width, unsigned int height,
                                             const std::vector<unsigned char>& pixels,
                                             SqxEncoding encoding);

/// Writes a file, which appears when it is complete. Throws `SqxPictureError`.
void SqxWritePicture(const std::string& path, const std::vector<char>& bytes);

/// A picture of red, green and blue times opacity, and opacity, linear, from 0 to 1; rows from the
/// top.
struct SqxImage {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<float> values;
};

/// Reads a PNG file of any kind. Throws `SqxPictureError`.
[[nodiscard]] SqxImage SqxReadPng(const std::string& path);
