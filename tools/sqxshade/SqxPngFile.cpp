#include "sqxshade/SqxPngFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <png.h>

#include "sqxshade/SqxShadeOptions.h"

namespace {

std::vector<char> Encoded(unsigned int width, unsigned int height,
                          const std::vector<unsigned char>& pixels)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGB;
    std::vector<char> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr))
        throw SqxShadeError(std::string("Cannot make the picture: ") + image.message);
    bytes.resize(size);
    return bytes;
}

[[nodiscard]] bool WriteBytes(const std::string& path, const std::vector<char>& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace

void SqxWritePng(const std::string& path, unsigned int width, unsigned int height,
                 const std::vector<unsigned char>& pixels)
{
    const std::vector<char> bytes = Encoded(width, height, pixels);
    std::error_code failed;
    // A pipe or device is written to, and not replaced by a file.
    const std::filesystem::file_status status = std::filesystem::status(path, failed);
    const bool isFile =
        !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
    const std::string target = isFile ? path + ".part" : path;
    errno = 0;
    bool written = WriteBytes(target, bytes);
    const std::string reason = errno ? std::string(": ") + std::strerror(errno) : "";
    if (isFile && written)
        std::filesystem::rename(target, path, failed);
    written = written && !(isFile && failed);
    if (written)
        return;
    if (isFile)
        std::filesystem::remove(target, failed);
    throw SqxShadeError("Cannot write '" + path + "'" + reason);
}
