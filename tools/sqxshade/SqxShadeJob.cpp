// The steps are: compile and open each shader and read the values of its parameters, read the
// textures, render the picture or the sheet, and write it. Memory for the picture is prepared while
// sources are compiled. For a sheet each shader is rendered separately with the same settings, and
// no memory is prepared.
//
// Tested by tests/sqxshade/SqxShadeTest.cpp.

#include "sqxshade/SqxShadeJob.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <iostream>
#include <optional>
#include <unistd.h>

#include "picture/SqxPicture.h"
#include "picture/SqxTexture.h"
#include "sqxshade/SqxContactSheet.h"
#include "sqxshade/SqxParameterValues.h"

namespace {

/// Shows the progress of the picture or the sheet on a terminal, after the first second, and clears
/// it at the end.
class Progress {
public:
    ~Progress()
    {
        if (m_isShown)
            std::cerr << "\r\x1B[K" << std::flush;
    }
    void Show(float done)
    {
        if (!m_isTerminal || std::chrono::steady_clock::now() - m_start < std::chrono::seconds(1))
            return;
        m_isShown = true;
        std::cerr << "\rsqxshade: " << static_cast<int>(done * 100) << " %" << std::flush;
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    bool m_isTerminal = isatty(STDERR_FILENO) != 0;
    bool m_isShown = false;
};

[[nodiscard]] bool IsSource(const SqxShadeOptions::Shader& shader)
{
    return std::filesystem::path(shader.path).extension() == ".sl";
}

/// Prepares a film, the memory for the samples of the picture, in another thread while this one
/// compiles sources. Returns an invalid future if there is nothing to compile, or for a sheet, in
/// which each shader needs a separate film.
[[nodiscard]] std::future<std::unique_ptr<SqxFilm>> PrepareFilm(const SqxShadeOptions& options)
{
    if (options.sheet || std::ranges::none_of(options.shaders, IsSource))
        return {};
    return std::async(std::launch::async, SqxPicture::PreparedFilm, std::cref(options.picture));
}

SqxPictureSettings::Shader Load(const SqxShadeOptions::Shader& source,
                                const SqxBuildOptions& options,
                                std::optional<SqxShaderBuild>& build)
{
    std::string path = source.path;
    if (IsSource(source)) {
        try {
            path = build->Build(path, options);
        } catch (const SqxPictureError&) {
            std::cerr << build->Messages();
            throw;
        }
        std::cerr << build->Messages();
    }
    std::shared_ptr<const QxShader> shader = QxShader::Open(path, options.LibraryFolders());
    auto values = SqxReadParameterValues(*shader, source.path, source.parameters);
    return {std::move(shader), std::move(values)};
}

/// Writes printed texts to standard output and reports to standard error.
void PrintNote(const SqxNote& note)
{
    if (note.isReport)
        std::cerr << note.text << '\n';
    else
        std::cout << note.text;
}

/// Renders picture `number` of `count`.
void Render(SqxPicture& picture, Progress& progress, std::size_t number, std::size_t count)
{
    SqxPicture::Watch watch;
    watch.progress = [&](float done) {
        progress.Show((static_cast<float>(number) + done) / static_cast<float>(count));
    };
    watch.note = PrintNote;
    (void)picture.Render(watch);  // nothing stops it
}

/// Renders one picture with all shaders and returns it as a PNG file. `film` is invalid if none was
/// prepared.
std::vector<char> MakePicture(const SqxPictureSettings& settings, SqxEncoding encoding,
                              std::future<std::unique_ptr<SqxFilm>> film)
{
    Progress progress;
    SqxPicture picture(settings);
    if (film.valid())
        picture.TakeFilm(film.get());
    Render(picture, progress, 0, 1);
    return SqxEncodePng(settings.width, settings.height, picture.Bytes(encoding), encoding);
}

std::vector<char> MakeSheet(const SqxPictureSettings& settings, SqxEncoding encoding)
{
    Progress progress;
    const std::size_t count = settings.shaders.size();
    SqxContactSheet sheet(settings.width, settings.height, count);
    for (std::size_t i = 0; i < count; ++i) {
        SqxPictureSettings alone = settings;
        alone.shaders = {settings.shaders[i]};
        SqxPicture picture(std::move(alone));
        Render(picture, progress, i, count);
        const std::filesystem::path path = settings.shaders[i].shader->Name();
        sheet.Place(i, picture.Bytes(encoding), path.stem().string());
    }
    return SqxEncodePng(sheet.Width(), sheet.Height(), sheet.Pixels(), encoding);
}

}  // namespace

void SqxShade(const SqxShadeOptions& options)
{
    std::optional<SqxShaderBuild> build;
    if (std::ranges::any_of(options.shaders, IsSource))
        build.emplace();
    SqxPictureSettings settings = options.picture;
    std::future<std::unique_ptr<SqxFilm>> film = PrepareFilm(options);
    for (const SqxShadeOptions::Shader& shader : options.shaders)
        settings.shaders.push_back(Load(shader, options.build, build));
    for (const auto& [name, file] : options.textures)
        settings.textures.insert_or_assign(name, SqxTexture::Read(file));
    const SqxEncoding encoding = options.linear ? SqxEncoding::Linear : SqxEncoding::Srgb;
    SqxWritePicture(options.output, options.sheet
                                        ? MakeSheet(settings, encoding)
                                        : MakePicture(settings, encoding, std::move(film)));
}
