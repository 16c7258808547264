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

/// One setting that a page changes: its name, and the value as the command line takes it.
using SqxViewChange = std::pair<std::string, std::string>;

/// Shaders under view: watches and compiles their sources, keeps the values of their parameters and
/// of the picture, and has the picture painted. All that pages show and change goes through it,
/// from several threads at a time; all pages see the same.
class SqxViewSession {
public:
    /// Begins to compile. Throws `SqxPictureError` if a texture cannot be read.
    explicit SqxViewSession(const SqxViewOptions& options);
    /// Ends what is being compiled and painted, and waits for that.
    ~SqxViewSession();
    SqxViewSession(const SqxViewSession&) = delete;
    SqxViewSession& operator=(const SqxViewSession&) = delete;

    /// All that a page shows but for pictures and code, as JSON, once its version is another one
    /// than `version`, or when that time is over.
    [[nodiscard]] std::string State(unsigned long version, std::chrono::milliseconds patience);
    /// Ends all waits for a state; no code is compiled any more.
    void EndWaiting();

    /// Changes settings: "shape", "size", "samples", "background", "color", "opacity", "lights"
    /// (several between blanks, or none), "param.N.NAME" for a parameter of shader number N, and
    /// "reset" with the number of a shader. Throws `SqxPictureError` if one does not fit; then none
    /// is changed.
    void Change(const std::vector<SqxViewChange>& changes);

    /// The last picture, coarse or whole, as PNG. None yet: null.
    [[nodiscard]] std::shared_ptr<const std::vector<char>> Picture();
    /// The name of a picture that is kept, such as "brick.png".
    [[nodiscard]] std::string PictureName() const;

    /// The byte-code of a shader, see `SqxViewCode`. Throws `SqxPictureError` if there is no such
    /// shader or level.
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

    SqxPictureSettings m_settings;                     // only its textures
    std::vector<SqxViewSource> m_sources;              // by shader; of the thread that compiles
    std::vector<std::unique_ptr<SqxViewCode>> m_code;  // by shader
    std::atomic<bool> m_isOver = false;

    std::mutex m_mutex;  // of what follows
    std::condition_variable_any m_changed;
    SqxViewState m_state;
    unsigned long m_paintings = 0;  // that were asked for
    std::shared_ptr<const std::vector<char>> m_picture;

    SqxViewPainter m_painter;
    std::jthread m_thread;  // last: it uses all the others
};
