#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

#include "picture/SqxPictureStage.h"
#include "picture/SqxPng.h"

/// The outcome of rendering a picture.
enum class SqxPictureEnd { Whole, Stopped, OutOfTime };

/// Renders what the settings ask for, on several cores. The picture is the same with any number.
class SqxPicture {
public:
    /// Throws `SqxPictureError` if the shaders do not go together, or `QxHostError` if a value
    /// does not fit its parameter.
    explicit SqxPicture(SqxPictureSettings settings);

    /// What the whole picture will be drawn on, with its memory: it may be made while the shaders
    /// of the settings are not there yet.
    [[nodiscard]] static std::unique_ptr<SqxFilm> PreparedFilm(const SqxPictureSettings& settings);
    /// The next rendering takes that one, made for the same settings, in place of a new one.
    void TakeFilm(std::unique_ptr<SqxFilm> film) { m_film = std::move(film); }

    /// How somebody follows the rendering and ends it. All functions are called in the thread that
    /// called `Render`; those that are missing are not called.
    struct Watch {
        std::stop_token stop;
        std::optional<std::chrono::steady_clock::time_point> deadline;
        /// Pictures of few pixels come first, finer and finer ones follow. Without it there is one.
        bool coarseFirst = false;
        /// A picture is there, coarse or whole: see `Pixels`.
        std::function<void()> show;
        /// The share of the whole picture that is done, about ten times a second.
        std::function<void(float)> progress;
        /// What a shader of the whole picture said, in the picture's order.
        std::function<void(const SqxNote&)> note;
    };
    /// Whether it stops is looked at between pieces of the picture, and in byte-code while it runs.
    /// Throws what a shader does.
    SqxPictureEnd Render(const Watch& watch);

    [[nodiscard]] const SqxPictureSettings& Settings() const { return m_settings; }
    /// The last picture that is there. If time was over before the first one, its pieces that are.
    [[nodiscard]] const SqxPixels& Pixels() const { return m_pixels; }
    /// That one before the background, in the whole picture's size: three bytes a pixel, rows from
    /// the top.
    [[nodiscard]] std::vector<unsigned char> Bytes(SqxEncoding encoding) const;

private:
    struct Pass {
        unsigned int coarseness;  // pixels of the whole picture along an edge of one
        unsigned int samples;
    };
    struct Pieces;

    [[nodiscard]] std::vector<Pass> Passes(bool coarseFirst) const;
    [[nodiscard]] SqxPictureEnd RenderPass(const Pass& pass, const Watch& watch);
    [[nodiscard]] SqxPictureEnd RunImager(SqxPixels& pixels, const Watch& watch);
    [[nodiscard]] SqxPictureEnd RunPieces(Pieces& pieces, const Watch& watch);
    void Work(Pieces& pieces, SqxPictureStage& stage, const Watch& watch) const;

    SqxPictureSettings m_settings;
    SqxShape m_shape;
    std::vector<std::unique_ptr<SqxPictureStage>> m_stages;  // one a thread
    std::unique_ptr<SqxFilm> m_film;                         // of the whole picture, if it is ready
    SqxPixels m_pixels;
};
