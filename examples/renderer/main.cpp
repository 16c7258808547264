// A small renderer: reads the text of a scene and writes a picture of it.

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <unistd.h>

#include "Render.h"
#include "SceneText.h"

namespace {

constexpr const char* k_usage =
    "usage: renderer SCENE [-o PICTURE.png] [-s FOLDER_OF_SHADERS] [-j THREADS]\n";

struct Options {
    std::string scene;
    std::string picture = "picture.png";
    std::string shaders = ".";
    unsigned int threads = std::thread::hardware_concurrency();
};

/// Throws `std::runtime_error`.
Options ReadOptions(int argc, char** argv)
{
    Options options;
    for (int opt; (opt = getopt(argc, argv, "o:s:j:")) != -1;) {
        if (opt == 'o')
            options.picture = optarg;
        else if (opt == 's')
            options.shaders = optarg;
        else if (opt == 'j' && std::atoi(optarg) > 0)
            options.threads = static_cast<unsigned int>(std::atoi(optarg));
        else
            throw std::runtime_error(k_usage);
    }
    if (optind + 1 != argc)
        throw std::runtime_error(k_usage);
    options.scene = argv[optind];
    return options;
}

void ShowProgress(float share)
{
    static const bool isTerminal = isatty(STDERR_FILENO) != 0;
    if (isTerminal)
        std::cerr << '\r' << static_cast<int>(share * 100) << (share < 1 ? " %" : " %\n")
                  << std::flush;
}

void WritePicture(const std::string& path, const World& world,
                  const std::vector<QxRGBColor>& pixels)
{
    const SqxByteEncoder encode(SqxEncoding::Srgb);
    std::vector<unsigned char> bytes;
    for (const QxRGBColor& pixel : pixels)
        bytes.insert(bytes.end(), {encode(pixel.r), encode(pixel.g), encode(pixel.b)});
    SqxWritePicture(path, SqxEncodePng(world.width, world.height, bytes, SqxEncoding::Srgb));
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        const Options options = ReadOptions(argc, argv);
        const std::unique_ptr<World> world = ReadScene(options.scene, options.shaders);
        const std::vector<QxRGBColor> pixels = Render(*world, options.threads, ShowProgress);
        WritePicture(options.picture, *world, pixels);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
