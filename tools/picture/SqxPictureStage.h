#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "picture/SqxFilm.h"
#include "picture/SqxPictureScene.h"

/// Shades pieces of a picture in one thread, with a scene and instances of the shaders.
class SqxPictureStage {
public:
    /// The settings must outlive the object. Throws `QxHostError` for a value of an unknown
    /// parameter, or one that does not fit its parameter.
    SqxPictureStage(const SqxPictureSettings& settings, const SqxShape& shape);

    /// Returns a grid of this layout with arbitrary values, for the caller to fill. Each call
    /// returns the same object.
    [[nodiscard]] QxHostGrid& Grid(const QxGrid& layout);
    /// Displaces and shades the points of the grid; colors and opacities are then in `Ci` and `Oi`.
    /// For `piece` see `SqxPictureScene::BeginPiece`. Throws what a shader throws.
    void Shade(QxHostGrid& grid, unsigned int piece);
    /// Runs the imager, which must exist, over rows of the picture and replaces their pixels.
    /// Throws what the imager throws.
    void RunImager(SqxPixels& pixels, unsigned int firstRow, unsigned int rows, unsigned int piece);
    /// Sets a test that is called while byte-code runs; if it returns true, the shader throws
    /// `QxHostStopped`. An empty test removes it.
    void SetStopTest(const QxStopTest& test);
    /// Limits the steps of each run of a shader, see `QxShaderInstance::SetStepLimit`.
    void SetStepLimit(std::size_t limit);
    /// True if there is a shader of this type.
    [[nodiscard]] bool Has(QxShaderInterface::QxType type) const { return Find(type) != nullptr; }
    /// Returns what shaders have printed and reported since the last call.
    [[nodiscard]] std::vector<SqxNote> TakeNotes() { return m_scene.TakeNotes(); }

private:
    void AddInstance(const SqxPictureSettings::Shader& shader);
    void AddLights();
    [[nodiscard]] QxShaderInstance* Find(QxShaderInterface::QxType type) const;
    void Displace(QxHostGrid& grid, QxShaderInstance& shader);

    const SqxPictureSettings& m_settings;
    SqxPictureScene m_scene;
    std::optional<QxHostGrid> m_grid;
    std::vector<std::unique_ptr<QxShaderInstance>> m_shaders;
};
