// A small renderer: reads a scene and writes a picture of it. Each thread repeatedly takes the next
// tile of the picture. Each thread has its own `RayScene` with instances of all shaders; all
// threads share the world.

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <future>
#include <iostream>
#include <mutex>
#include <thread>
#include <unistd.h>

#include "QxMath.h"
#include "RayScene.h"
#include "SceneText.h"

namespace {

constexpr unsigned int k_tileEdge = 16;  // pixels

/// Returns the ray through the center of a sample. Columns and rows of samples start in the upper
/// left corner.
Ray CameraRay(const World& world, unsigned int column, unsigned int row)
{
    const auto width = static_cast<float>(world.width * world.samples);
    const auto height = static_cast<float>(world.height * world.samples);
    const float scale = 2 * std::tan(QxRadians(world.cameraAngle) / 2) / std::min(width, height);
    const QxVector3 direction = {(static_cast<float>(column) + 0.5F - width / 2) * scale,
                                 (height / 2 - static_cast<float>(row) - 0.5F) * scale, 1};
    return {QxTransformPoint({0, 0, 0}, world.camera),
            QxNormalize(QxTransformVector(direction, world.camera))};
}

void ShowProgress(unsigned int percent)
{
    if (isatty(STDERR_FILENO))
        std::cerr << '\r' << percent << (percent < 100 ? " %" : " %\n") << std::flush;
}

void RenderTile(const World& world, RayScene& scene, unsigned int number,
                std::vector<QxRGBColor>& pixels)
{
    const unsigned int samples = world.samples;
    const unsigned int columns = (world.width + k_tileEdge - 1) / k_tileEdge;  // of tiles
    const unsigned int left = number % columns * k_tileEdge;
    const unsigned int top = number / columns * k_tileEdge;
    const QxGrid layout = {std::min(k_tileEdge, world.width - left) * samples,
                           std::min(k_tileEdge, world.height - top) * samples};
    std::vector<Ray> rays;
    for (unsigned int row = 0; row < layout.rows; ++row)
        for (unsigned int column = 0; column < layout.columns; ++column)
            rays.push_back(CameraRay(world, left * samples + column, top * samples + row));
    scene.SetSeed(number);
    const std::span<const Path> paths = scene.Follow(layout, rays);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::size_t row = top + i / layout.columns / samples;
        const std::size_t column = left + i % layout.columns / samples;
        QxRGBColor& pixel = pixels[row * world.width + column];
        pixel = pixel + paths[i].color / static_cast<float>(samples * samples);
    }
}

/// Returns linear colors, rows from the top. The colors do not depend on the number of threads.
/// Throws what a shader throws.
std::vector<QxRGBColor> Render(const World& world, unsigned int threads)
{
    const unsigned int tiles = ((world.width + k_tileEdge - 1) / k_tileEdge) *
                               ((world.height + k_tileEdge - 1) / k_tileEdge);
    std::vector<QxRGBColor> pixels(std::size_t{world.width} * world.height);
    std::atomic<unsigned int> next = 0;
    std::mutex mutex;
    unsigned int done = 0;
    const auto work = [&] {
        try {
            RayScene scene(world);
            for (unsigned int number; (number = next++) < tiles;) {
                RenderTile(world, scene, number, pixels);
                const std::lock_guard lock(mutex);
                ShowProgress(++done * 100 / tiles);
            }
        } catch (...) {
            next = tiles;  // stops the other threads
            throw;
        }
    };
    std::vector<std::future<void>> workers;
    for (unsigned int i = 0; i < threads; ++i)
        workers.push_back(std::async(std::launch::async, work));
    for (std::future<void>& worker : workers)
        worker.get();
    return pixels;
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
    const int threads =
        argc == 5 ? std::atoi(argv[4]) : static_cast<int>(std::thread::hardware_concurrency());
    if (argc < 4 || argc > 5 || threads < 0) {
        std::cerr << "usage: renderer SCENE FOLDER_OF_SHADERS PICTURE.png [THREADS]\n";
        return 1;
    }
    try {
        const std::unique_ptr<World> world = ReadScene(argv[1], argv[2]);
        WritePicture(argv[3], *world,
                     Render(*world, static_cast<unsigned int>(std::max(threads, 1))));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
