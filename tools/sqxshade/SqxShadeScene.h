#pragma once

#include "host/QxHost.h"
#include "sqxshade/SqxShadeOptions.h"
#include "sqxshade/SqxShadeShape.h"

/// What is around the shape: spaces and lights, and something to see where a shader looks for
/// files or other surfaces.
class SqxShadeScene : public QxHostScene {
public:
    SqxShadeScene(const SqxShadeShape& shape, unsigned int width, unsigned int height);

    /// Those of the command line.
    void AddLights(const std::vector<SqxShadeLight>& lights);
    /// A key light from the upper left, a weak one from the right, and a little from everywhere.
    void AddDefaultLights();
    /// The space of a light shader stands where the key light does.
    static void PlaceLight(QxShaderInstance& light);

    /// A check of 8 times 8 squares.
    QxRGBColor Texture(const QxTextureQuery& query) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;
    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;

private:
    void DefinePictureSpaces(float width, float height);
};

/// The surface of a shape without a surface shader: plastic of color `Cs`.
void SqxShadePlastic(QxHostGrid& grid, QxHostScene& scene);
