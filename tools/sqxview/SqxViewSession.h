#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "sqxview/SqxViewCode.h"
#include "sqxview/SqxViewOptions.h"
#include "sqxview/SqxViewPainter.h"
#include "sqxview/SqxViewSource.h"
#include "sqxview/SqxViewState.h"

/// A setting that a page changes: its name and its new value, see `SqxViewSession::Change`.
using SqxViewChange = std::pair<std::string, std::string>;

/// Watches and compiles the sources of the shaders that are shown, stores the values of their
/// parameters and the settings of the picture, and requests pictures. The server reads the state
/// and changes values and settings for its pages, in several threads at a time; all pages show the
/// same state.
class SqxViewSession {
public:
    /// Starts to compile the sources. Throws `SqxPictureError` if a texture cannot be read.
    explicit SqxViewSession(const SqxViewOptions& options);
    /// Stops the current compile and picture and waits until they have ended.
    ~SqxViewSession();
    SqxViewSession(const SqxViewSession&) = delete;
    SqxViewSession& operator=(const SqxViewSession&) = delete;

    /// Waits until the version of the state differs from `version`, until the time `patience` has
    /// passed, or until `EndWaiting` is called. Returns the state as JSON: all that a page shows,
    /// except pictures and byte-code.
    [[nodiscard]] std::string State(unsigned long version, std::chrono::milliseconds patience);
    /// Ends all waits of `State` and all compiles of `Code`, also those of later calls.
    void EndWaiting();

    /// Changes settings: "shape", "size", "samples", "background", "color", "opacity", "lights"
    /// (any number, separated by blanks), and "param.N.NAME" for a parameter of shader number N,
    /// from 0. Values are written as on the command line. "reset" with the number of a shader
    /// removes the values of its parameters. Then requests a picture. Throws `SqxPictureError` and
    /// changes nothing if one of the changes is invalid.
    void Change(const std::vector<SqxViewChange>& changes);

    /// Returns the last picture, coarse or whole, as PNG; null before the first one.
    [[nodiscard]] std::shared_ptr<const std::vector<char>> Picture();
    /// Returns a file name for saving the picture, such as "brick.png".
    [[nodiscard]] std::string PictureName() const;

    /// Returns the byte-code of a shader, see `SqxViewCode::Level`. Throws `SqxPictureError` if
    /// there is no such shader or level.
    [[nodiscard]] std::string Code(std::size_t shader, int level);

private:
    void Work(const std::stop_token& end);
    void Compile(std::size_t number, const std::stop_token& end);
    void Take(std::size_t number, SqxViewCompiled compiled);
    void KeepFittingValues(std::size_t number, const QxShader& before);
    void FindDefaults(SqxViewShader& shader);
    void Repaint();
    void ShowPainting(const SqxViewPainting& painting);
    void Apply(SqxShadeOptions& shade, const SqxViewChange& change) const;
    void ApplyParameter(SqxShadeOptions& shade, const SqxViewChange& change) const;
    void Changed();

    SqxPictureSettings m_settings;         // only its textures are used
    std::vector<SqxViewSource> m_sources;  // by shader; other threads use only their paths
    std::vector<std::unique_ptr<SqxViewCode>> m_code;  // by shader
    std::atomic<bool> m_isOver = false;

    std::mutex m_mutex;  // guards the fields from `m_state` to `m_picture`
    std::condition_variable_any m_changed;
    SqxViewState m_state;
    unsigned long m_paintings = 0;  // counts requests to the painter
    std::shared_ptr<const std::vector<char>> m_picture;

    SqxViewPainter m_painter;
    std::jthread m_thread;  // last, since it uses all other fields
};
