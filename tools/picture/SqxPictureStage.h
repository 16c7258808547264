#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "picture/SqxFilm.h"
#include "picture/SqxPictureScene.h"

/// Shades pieces of a picture in one thread, with a scene and instances of the shaders.
class SqxPictureStage {
public:
    /// Settings and shape must outlive the object. Throws `QxHostError` if a value does not fit its
    /// parameter.
    SqxPictureStage(const SqxPictureSettings& settings, const SqxShape& shape);

    /// Returns a grid of this layout with arbitrary values, for the caller to fill. The reference
    /// is valid until the next call.
    [[nodiscard]] QxHostGrid& Grid(const QxGrid& layout);
    /// Displaces and shades the points of the grid. For `piece` see `SqxPictureScene::BeginPiece`.
    void Shade(QxHostGrid& grid, unsigned int piece);
    /// Runs the imager, which must exist, over rows of the picture and replaces their pixels.
    void RunImager(SqxPixels& pixels, unsigned int firstRow, unsigned int rows, unsigned int piece);
    /// Sets a test that is called while shaders run; if it returns true, they throw
    /// `QxHostStopped`.
    void SetStopTest(const QxStopTest& test);
    void SetStepLimit(std::size_t limit);
    [[nodiscard]] bool Has(QxShaderInterface::QxType type) const { return Find(type) != nullptr; }
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
