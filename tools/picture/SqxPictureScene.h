#pragma once

#include "host/QxHost.h"
#include "picture/SqxPictureSettings.h"
#include "picture/SqxShape.h"

/// What a shader printed or reported.
struct SqxNote {
    bool isReport;
    std::string text;
};

/// The surroundings of the shape: spaces, lights, textures, and substitutes for the other files and
/// surfaces that a shader may ask for. Each thread has its own scene.
class SqxPictureScene : public QxHostScene {
public:
    /// The settings must outlive the scene.
    SqxPictureScene(const SqxPictureSettings& settings, const SqxShape& shape);

    /// Adds these lights, whose positions are relative to the middle of the shape.
    void AddLights(const std::vector<SqxPictureLight>& lights);
    /// Adds a key light at the upper left, a weak light at the right, and weak ambient light.
    void AddDefaultLights();
    /// Defines the "shader" space of a light shader: its origin is in the direction of the key
    /// light, but nearer to the shape, and z points to the middle of the shape.
    static void PlaceLight(QxShaderInstance& light);

    /// Begins a piece of the picture; its random numbers depend on `number`.
    void BeginPiece(unsigned int number) { SetRun(number); }
    /// Returns what shaders have printed and reported since the last call.
    [[nodiscard]] std::vector<SqxNote> TakeNotes();

    /// Looks up a texture of the settings; any other name is a checkerboard of 8 by 8 squares.
    QxRGBColor Texture(const QxTextureQuery& query) override;
    const void* FindFile(QxFileKind kind, const char* name) override;
    void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;
    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    void Print(const char* text) override { m_notes.push_back({false, text}); }
    void Report(const char* text) override { m_notes.push_back({true, text}); }

private:
    void DefinePictureSpaces(float width, float height);

    const SqxPictureSettings& m_settings;
    std::vector<SqxNote> m_notes;
};

/// Shades a grid as plastic of the color `Cs`, for pictures without a surface shader.
void SqxShadePlastic(QxHostGrid& grid, QxHostScene& scene);
