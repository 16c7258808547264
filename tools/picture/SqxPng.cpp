// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "picture/SqxPng.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <png.h>

#include "picture/SqxPictureSettings.h"
#include "process/SqxWholeFile.h"

namespace {

constexpr png_uint_32 k_maxSide = 32768;

}  // namespace

std::vector<char> SqxEncodePng(unsigned int width, unsigned int height,
                               const std::vector<unsigned char>& pixels, SqxEncoding encoding)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGB;
    // With this flag, encoding takes a fifth of the time, and the file is a little larger.
    image.flags = PNG_IMAGE_FLAG_FAST;
    if (encoding == SqxEncoding::Linear)
        image.flags |= PNG_IMAGE_FLAG_COLORSPACE_NOT_sRGB;
    std::vector<char> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr))
        throw SqxPictureError(std::string("Cannot make the picture: ") + image.message);
    bytes.resize(size);
    return bytes;
}

void SqxWritePicture(const std::string& path, const std::vector<char>& bytes)
{
    if (SqxWriteWholeFile(path, {bytes.data(), bytes.size()}))
        return;
    const std::string reason = errno ? std::string(": ") + std::strerror(errno) : "";
    throw SqxPictureError("Cannot write '" + path + "'" + reason);
}

SqxImage SqxReadPng(const std::string& path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        throw SqxPictureError("Cannot read texture '" + path + "': " + image.message);
    if (image.width > k_maxSide || image.height > k_maxSide) {
        png_image_free(&image);
        throw SqxPictureError("Texture '" + path + "' is too large");
    }
    image.format = PNG_FORMAT_LINEAR_RGB_ALPHA;
    std::vector<std::uint16_t> values(PNG_IMAGE_SIZE(image) / sizeof(std::uint16_t));
    if (!png_image_finish_read(&image, nullptr, values.data(), 0, nullptr))
        throw SqxPictureError("Cannot read texture '" + path + "': " + image.message);
    SqxImage result = {image.width, image.height, {}};
    result.values.reserve(values.size());
    for (const std::uint16_t value : values)
        result.values.push_back(static_cast<float>(value) / 65535.0F);
    return result;
}
