// Threads take tiles of the picture in turn. Each thread has its own `RayScene`, with instances of
// all shaders; they share the world.

#include "Render.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <mutex>
#include <thread>

#include "QxMath.h"
#include "RayScene.h"

namespace {

constexpr unsigned int k_tileEdge = 16;  // pixels

class Renderer {
public:
    Renderer(const World& world, const std::function<void(float)>& progress)
        : m_world(world),
          m_progress(progress),
          m_columns((world.width + k_tileEdge - 1) / k_tileEdge),
          m_tiles(m_columns * ((world.height + k_tileEdge - 1) / k_tileEdge)),
          m_pixels(std::size_t{world.width} * world.height)
    {
    }

    [[nodiscard]] std::vector<QxRGBColor> Run(unsigned int threads);

private:
    void Work();
    void RenderTile(RayScene& scene, unsigned int number);
    [[nodiscard]] Ray CameraRay(float x, float y) const;

    const World& m_world;
    const std::function<void(float)>& m_progress;
    unsigned int m_columns;  // of tiles
    unsigned int m_tiles;
    std::vector<QxRGBColor> m_pixels;
    std::atomic<unsigned int> m_next = 0;
    std::mutex m_mutex;
    unsigned int m_done = 0;
    std::exception_ptr m_error;  // of the first thread that failed
};

std::vector<QxRGBColor> Renderer::Run(unsigned int threads)
{
    std::vector<std::jthread> workers;
    for (unsigned int i = 0; i < threads; ++i)
        workers.emplace_back([this] { Work(); });
    workers.clear();  // waits for all of them
    if (m_error)
        std::rethrow_exception(m_error);
    return std::move(m_pixels);
}

void Renderer::Work()
{
    try {
        RayScene scene(m_world);
        for (unsigned int number; (number = m_next++) < m_tiles;) {
            RenderTile(scene, number);
            const std::lock_guard lock(m_mutex);
            m_progress(static_cast<float>(++m_done) / static_cast<float>(m_tiles));
        }
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        m_next = m_tiles;
        if (!m_error)
            m_error = std::current_exception();
    }
}

/// `x` and `y` are in pixels from the upper left corner.
Ray Renderer::CameraRay(float x, float y) const
{
    const auto width = static_cast<float>(m_world.width);
    const auto height = static_cast<float>(m_world.height);
    const float scale = 2 * std::tan(QxRadians(m_world.camera.angle) / 2) / std::min(width, height);
    const QxVector3 direction = {(x - width / 2) * scale, (height / 2 - y) * scale, 1};
    return {m_world.camera.Eye(), QxNormalize(QxTransformVector(direction, m_world.camera.toWorld)),
            0, k_endless};
}

void Renderer::RenderTile(RayScene& scene, unsigned int number)
{
    const unsigned int samples = m_world.samples;
    const unsigned int left = number % m_columns * k_tileEdge;
    const unsigned int top = number / m_columns * k_tileEdge;
    const QxGrid layout = {std::min(k_tileEdge, m_world.width - left) * samples,
                           std::min(k_tileEdge, m_world.height - top) * samples};
    const auto place = [samples](unsigned int firstPixel, unsigned int sample) {
        return static_cast<float>(firstPixel) +
               (static_cast<float>(sample) + 0.5F) / static_cast<float>(samples);
    };
    std::vector<Ray> rays;
    for (unsigned int row = 0; row < layout.rows; ++row)
        for (unsigned int column = 0; column < layout.columns; ++column)
            rays.push_back(CameraRay(place(left, column), place(top, row)));
    std::vector<Arrival> arrivals(rays.size());
    scene.SetSeed(number);
    scene.Follow(layout, rays, arrivals);
    for (std::size_t i = 0; i < arrivals.size(); ++i) {
        const std::size_t row = top + i / layout.columns / samples;
        const std::size_t column = left + i % layout.columns / samples;
        QxRGBColor& pixel = m_pixels[row * m_world.width + column];
        pixel = pixel + arrivals[i].color / static_cast<float>(samples * samples);
    }
}

}  // namespace

std::vector<QxRGBColor> Render(const World& world, unsigned int threads,
                               const std::function<void(float)>& progress)
{
    return Renderer(world, progress).Run(std::max(threads, 1U));
}
