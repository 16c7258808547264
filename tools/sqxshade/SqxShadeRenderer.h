#pragma once

#include <memory>
#include <vector>

#include "sqxshade/SqxShadePicture.h"
#include "sqxshade/SqxShadeScene.h"
#include "sqxshade/SqxShaderBuild.h"

/// Carries out what the command line asks for, from the shaders to the bytes of the picture.
class SqxShadeRenderer {
public:
    /// Builds and loads the shaders. Throws `SqxShadeError` or `QxHostError`. The options must
    /// outlive the renderer.
    explicit SqxShadeRenderer(const SqxShadeOptions& options);

    /// Three bytes a pixel, rows from the top.
    [[nodiscard]] std::vector<unsigned char> Render();

private:
    void Load(const SqxShadeOptions::Shader& shader);
    static void SetParameters(QxShaderInstance& shader, const SqxShadeOptions::Shader& source);
    [[nodiscard]] QxShaderInstance* Find(QxShaderInterface::QxType type) const;

    void DrawShape(SqxShadePicture& picture);
    void ShadeGrid(QxHostGrid& grid);
    void Displace(QxHostGrid& grid, QxShaderInstance& shader);
    void RunImager(SqxShadePicture& picture, QxShaderInstance& shader);
    [[nodiscard]] std::vector<unsigned char> Bytes(const SqxShadePicture& picture) const;

    const SqxShadeOptions& m_options;
    SqxShaderBuild m_build;
    SqxShadeShape m_shape;
    SqxShadeScene m_scene;
    std::vector<std::unique_ptr<QxShaderInstance>> m_shaders;
};
