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

/// Renders the picture that the settings describe, on several cores. The picture is the same with
/// any number of threads.
class SqxPicture {
public:
    /// Throws `SqxPictureError` if there are two shaders of one type other than light, and
    /// `QxHostError` for a value of an unknown parameter, or one that does not fit its parameter.
    explicit SqxPicture(SqxPictureSettings settings);

    /// Creates the film for the whole picture and prepares its memory. May be called before the
    /// settings have their shaders, for example while these are compiled. Throws `std::bad_alloc`.
    [[nodiscard]] static std::unique_ptr<SqxFilm> PreparedFilm(const SqxPictureSettings& settings);
    /// Passes a film that was prepared for the same settings; the next rendering uses it.
    void TakeFilm(std::unique_ptr<SqxFilm> film) { m_film = std::move(film); }

    /// How a caller follows the rendering and ends it. All functions are called in the thread that
    /// called `Render`; empty ones are ignored.
    struct Watch {
        std::stop_token stop;
        std::optional<std::chrono::steady_clock::time_point> deadline;
        /// If set, coarse pictures are rendered first, then finer and finer ones, except those of
        /// only a few pixels. Otherwise only the whole picture is rendered.
        bool coarseFirst = false;
        /// Called when a picture, coarse or whole, is complete, see `Pixels`.
        std::function<void()> show;
        /// Called about ten times a second while the whole picture is rendered, with the share of
        /// it that is complete. The share starts at 0 again when an imager begins.
        std::function<void(float)> progress;
        /// Called for each text that shaders printed or reported for the whole picture, in the
        /// order of its pieces, after these have ended.
        std::function<void(const SqxNote&)> note;
    };
    /// Renders the picture and returns whether it is whole or why it is not. Between its pieces,
    /// and while byte-code runs, checks whether to stop. With a deadline, the steps of shaders are
    /// not limited. Throws what a shader throws, and `std::bad_alloc`.
    SqxPictureEnd Render(const Watch& watch);

    [[nodiscard]] const SqxPictureSettings& Settings() const { return m_settings; }
    /// The last complete picture. If rendering was stopped before the first one was complete: its
    /// completed pieces. Empty if there was no rendering, or if an error ended it before.
    [[nodiscard]] const SqxPixels& Pixels() const { return m_pixels; }
    /// Returns the picture of `Pixels`, which must not be empty, over the background and scaled to
    /// the size of the whole picture: three bytes per pixel, rows from the top.
    [[nodiscard]] std::vector<unsigned char> Bytes(SqxEncoding encoding) const;

private:
    struct Pass {
        unsigned int coarseness;  // edge of a coarse pixel in pixels of the whole picture
        unsigned int samples;
    };
    struct Pieces;

    [[nodiscard]] std::vector<Pass> Passes(bool coarseFirst) const;
    [[nodiscard]] SqxPictureEnd RenderPass(const Pass& pass, const Watch& watch);
    [[nodiscard]] SqxPictureEnd RunImager(SqxPixels& pixels, bool isWhole, const Watch& watch);
    [[nodiscard]] SqxPictureEnd RunPieces(Pieces& pieces, const Watch& watch);
    void Work(Pieces& pieces, SqxPictureStage& stage, const Watch& watch) const;

    SqxPictureSettings m_settings;
    SqxShape m_shape;
    std::vector<std::unique_ptr<SqxPictureStage>> m_stages;  // one for each thread
    std::unique_ptr<SqxFilm> m_film;  // of the whole picture; null if none is prepared
    SqxPixels m_pixels;
};
