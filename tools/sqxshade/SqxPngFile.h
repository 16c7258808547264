#pragma once

#include <string>
#include <vector>

/// Writes a picture of three bytes a pixel, rows from the top. The file appears when it is whole.
/// Throws `SqxShadeError`.
void SqxWritePng(const std::string& path, unsigned int width, unsigned int height,
                 const std::vector<unsigned char>& pixels);
