#pragma once

#include "host/QxHost.h"
#include "picture/SqxPictureSettings.h"
#include "picture/SqxShape.h"

/// What a shader printed or reported.
struct SqxNote {
    bool isReport;
    std::string text;
};

/// What is around the shape: spaces and lights, and something to see where a shader looks for
/// files or other surfaces. Each thread has its own.
class SqxPictureScene : public QxHostScene {
public:
    /// The settings must outlive the scene.
    SqxPictureScene(const SqxPictureSettings& settings, const SqxShape& shape);

    /// Those of the settings.
    void AddLights(const std::vector<SqxPictureLight>& lights);
    /// A key light from the upper left, a weak one from the right, and a little from everywhere.
    void AddDefaultLights();
    /// The space of a light shader is at the key light.
    static void PlaceLight(QxShaderInstance& light);

    /// Begins a piece of the picture: its random numbers do not depend on the thread that shades
    /// it.
    void BeginPiece(unsigned int number) { SetRun(number); }
    /// What shaders have said since the last call.
    [[nodiscard]] std::vector<SqxNote> TakeNotes();

    /// A file of the settings, or a check of 8 times 8 squares.
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

/// The surface of a shape without a surface shader: plastic of color `Cs`.
void SqxShadePlastic(QxHostGrid& grid, QxHostScene& scene);
