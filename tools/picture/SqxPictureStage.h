#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "picture/SqxFilm.h"
#include "picture/SqxPictureScene.h"

/// What one thread needs to shade pieces of a picture: a scene, and instances of the shaders.
class SqxPictureStage {
public:
    /// Settings and shape must outlive it. Throws `QxHostError` if a value does not fit its
    /// parameter.
    SqxPictureStage(const SqxPictureSettings& settings, const SqxShape& shape);

    /// A grid of that layout to place points in; its values are left over from others. It stays
    /// until the next one is asked for.
    [[nodiscard]] QxHostGrid& Grid(const QxGrid& layout);
    /// Moves and colors the points of the shape that the grid holds.
    void Shade(QxHostGrid& grid, unsigned int piece);
    /// Runs the imager over rows of the picture.
    void RunImager(SqxPixels& pixels, unsigned int firstRow, unsigned int rows, unsigned int piece);
    /// Asked now and then while shaders run; they end with `QxHostStopped` when it says so.
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
