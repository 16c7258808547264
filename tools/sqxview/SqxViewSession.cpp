// One thread watches and compiles the sources, one renders pictures, and the threads of the server
// handle requests. They share one state. Each change of the state increments its version, by which
// a page knows whether it has seen the change.
//
// A change of a setting waits for no compile and no picture: it is stored in the state, and a
// picture is requested. The result of a compile enters the state only when it is complete, so a
// page never sees half of it.
//
// Tested by tests/sqxview/SqxViewSessionTest.cpp.

#include "sqxview/SqxViewSession.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>

#include "picture/SqxTexture.h"
#include "sqxshade/SqxParameterValues.h"
#include "sqxshade/SqxShadeCommand.h"
#include "sqxview/SqxViewDefaults.h"

namespace {

constexpr auto k_lookStep = std::chrono::milliseconds(20);

// Settings whose names and values are those of options.
constexpr std::string_view k_plainSettings[] = {"size", "samples", "background", "color",
                                                "opacity"};
constexpr std::string_view k_shapes[] = {"sphere", "square", "torus"};

template <std::size_t count>
[[nodiscard]] bool IsOneOf(const std::string& word, const std::string_view (&words)[count])
{
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

[[nodiscard]] SqxViewCompileOptions CompileOptions(const SqxViewOptions& options)
{
    SqxViewCompileOptions result = {{options.warnings}, options.shade.build.LibraryFolders()};
    for (const std::string& folder : options.shade.build.folders)
        result.words.push_back("-I" + folder);
    for (const std::string& definition : options.shade.build.definitions)
        result.words.push_back("-D" + definition);
    return result;
}

/// Returns the options with more words added, checked like a command line. Throws `SqxPictureError`
/// if one of the words is invalid.
[[nodiscard]] SqxShadeOptions WithWords(const SqxShadeOptions& shade,
                                        const std::vector<std::string>& more)
{
    std::vector<std::string> words = SqxShadeWords(shade);
    words.insert(words.end(), more.begin(), more.end());
    try {
        return SqxReadShadeOptions(words);
    } catch (const SqxUsageError& error) {
        throw SqxPictureError(error.what());  // the user has typed no command line
    }
}

/// Removes the number at the start of the text and returns it; returns `npos` if there is none, or
/// if it is too large.
[[nodiscard]] std::size_t TakeNumber(std::string_view& text)
{
    std::size_t number = 0;
    const auto [rest, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc())
        return std::string_view::npos;
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return number;
}

/// True if spaces that default values may be in differ: that of the shape, or `raster` and `NDC`.
[[nodiscard]] bool HasOtherSpaces(const SqxPictureSettings& one, const SqxPictureSettings& other)
{
    return one.shape != other.shape || one.width != other.width || one.height != other.height;
}

void EraseValue(SqxShadeOptions::Shader& shader, std::string_view name)
{
    std::erase_if(shader.parameters, [&](const auto& value) { return value.first == name; });
}

[[nodiscard]] const QxShader::Parameter* FindParameter(const QxShader& shader,
                                                       std::string_view name)
{
    for (const QxShader::Parameter& parameter : shader.Parameters())
        if (parameter.name == name)
            return &parameter;
    return nullptr;
}

}  // namespace

SqxViewSession::SqxViewSession(const SqxViewOptions& options)
    : m_painter(options.timeLimit,
                [this](const SqxViewPainting& painting) { ShowPainting(painting); })
{
    for (const auto& [name, file] : options.shade.textures)
        m_settings.textures.insert_or_assign(name, SqxTexture::Read(file));
    const SqxViewCompileOptions compileOptions = CompileOptions(options);
    for (const SqxShadeOptions::Shader& shader : options.shade.shaders) {
        m_sources.emplace_back(shader.path, compileOptions);
        m_code.push_back(std::make_unique<SqxViewCode>(shader.path, compileOptions));
    }
    m_state.shade = options.shade;
    m_state.shaders.resize(m_sources.size());
    m_state.timeLimit = options.timeLimit;
    m_thread = std::jthread([this](const std::stop_token& end) { Work(end); });
}

SqxViewSession::~SqxViewSession()
{
    EndWaiting();
}

void SqxViewSession::EndWaiting()
{
    const std::lock_guard lock(m_mutex);
    m_isOver = true;
    m_changed.notify_all();
}

/// Increments the version and wakes the calls of `State`. The mutex must be held.
void SqxViewSession::Changed()
{
    ++m_state.version;
    m_changed.notify_all();
}

// Functions of the thread that compiles. The threads of the server also call `FindDefaults` and
// `Repaint`.

void SqxViewSession::Work(const std::stop_token& end)
{
    while (!end.stop_requested()) {
        for (std::size_t i = 0; i < m_sources.size() && !end.stop_requested(); ++i)
            if (m_sources[i].HasChanged())
                Compile(i, end);
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, end, k_lookStep, [] { return false; });
    }
}

void SqxViewSession::Compile(std::size_t number, const std::stop_token& end)
{
    auto compiled = m_sources[number].Compile([&end] { return end.stop_requested(); });
    if (!compiled)
        return;
    const std::lock_guard lock(m_mutex);
    Take(number, std::move(*compiled));
    Changed();
}

void SqxViewSession::Take(std::size_t number, SqxViewCompiled compiled)
{
    SqxViewShader& shader = m_state.shaders[number];
    shader.compiled = std::move(compiled);
    shader.isCompiled = true;
    shader.hint.clear();
    ++shader.version;
    if (!shader.compiled.shader)
        return;
    const std::shared_ptr<const QxShader> before =
        std::exchange(shader.good, shader.compiled.shader);
    shader.listing = shader.compiled.listing;
    KeepFittingValues(number, before ? *before : *shader.good);
    FindDefaults(shader);
    Repaint();
}

/// Drops the values of parameters that do not exist or whose type or length differs from `before`,
/// and values that cannot be read. Adds a line to the hint of the shader for each.
void SqxViewSession::KeepFittingValues(std::size_t number, const QxShader& before)
{
    SqxViewShader& shader = m_state.shaders[number];
    SqxShadeOptions::Shader& values = m_state.shade.shaders[number];
    const auto isUnfit = [&](const auto& value) {
        const QxShader::Parameter* now = FindParameter(*shader.good, value.first);
        const QxShader::Parameter* then = FindParameter(before, value.first);
        if (now && then && now->type == then->type && now->length == then->length)
            try {
                (void)SqxReadParameterValue(*now, value.second);
                return false;
            } catch (const SqxPictureError& error) {
                shader.hint += std::string(error.what()) + "\n";
                return true;
            }
        shader.hint += "The value of '" + value.first + "' is gone: there is no such parameter";
        shader.hint += now ? " of its type any more\n" : "\n";
        return true;
    };
    std::erase_if(values.parameters, isUnfit);
}

void SqxViewSession::FindDefaults(SqxViewShader& shader)
{
    try {
        shader.defaults = SqxViewDefaults(shader.good, m_state.shade.picture);
    } catch (const std::exception&) {
        // No report here: if the picture fails for the same reason, it reports the error.
        shader.defaults.assign(shader.good->Parameters().size(), std::nullopt);
    }
}

void SqxViewSession::Repaint()
{
    SqxPictureSettings settings = m_state.shade.picture;
    settings.textures = m_settings.textures;
    for (std::size_t i = 0; i < m_state.shaders.size(); ++i) {
        const SqxViewShader& shader = m_state.shaders[i];
        if (!shader.good)
            return;
        const SqxShadeOptions::Shader& values = m_state.shade.shaders[i];
        settings.shaders.push_back(
            {shader.good, SqxReadParameterValues(*shader.good, values.path, values.parameters)});
    }
    // Messages of the previous picture do not apply to this one.
    m_state.painting = {};
    m_state.painting.request = ++m_paintings;
    m_painter.Paint(std::move(settings), m_paintings);
}

// Functions of the thread of the painter.

void SqxViewSession::ShowPainting(const SqxViewPainting& painting)
{
    const std::lock_guard lock(m_mutex);
    if (painting.request == m_paintings)
        m_state.painting = painting;
    if (painting.png && painting.png != m_picture) {
        m_picture = painting.png;
        ++m_state.pictureNumber;
    }
    Changed();
}

// Functions of the threads of the server.

std::string SqxViewSession::State(unsigned long version, std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, patience, [&] { return m_isOver || m_state.version != version; });
    return SqxViewStateText(m_state);
}

std::shared_ptr<const std::vector<char>> SqxViewSession::Picture()
{
    const std::lock_guard lock(m_mutex);
    return m_picture;
}

std::string SqxViewSession::PictureName() const
{
    return std::filesystem::path(m_sources[0].Path()).stem().string() + ".png";
}

std::string SqxViewSession::Code(std::size_t shader, int level)
{
    if (shader >= m_code.size())
        throw SqxPictureError("There is no such shader");
    if (level < 0 || level >= SqxViewCode::k_levels)
        throw SqxPictureError("There is no such level");
    unsigned long version = 0;
    {
        const std::lock_guard lock(m_mutex);
        version = m_state.shaders[shader].version;
    }
    return m_code[shader]->Level(level, version, [this] { return m_isOver.load(); });
}

void SqxViewSession::Change(const std::vector<SqxViewChange>& changes)
{
    const std::lock_guard lock(m_mutex);
    SqxShadeOptions shade = m_state.shade;
    for (const SqxViewChange& change : changes)
        Apply(shade, change);
    const bool hasOtherSpaces = HasOtherSpaces(shade.picture, m_state.shade.picture);
    m_state.shade = std::move(shade);
    if (hasOtherSpaces)
        for (SqxViewShader& shader : m_state.shaders)
            if (shader.good)
                FindDefaults(shader);
    Repaint();
    Changed();
}

void SqxViewSession::Apply(SqxShadeOptions& shade, const SqxViewChange& change) const
{
    const auto& [name, value] = change;
    std::string_view rest = value;
    if (IsOneOf(name, k_plainSettings)) {
        shade = WithWords(shade, {"--" + name, value});
    } else if (name == "shape" && IsOneOf(value, k_shapes)) {
        shade = WithWords(shade, {"--" + value});
    } else if (name == "lights") {
        std::vector<std::string> words;
        for (const std::string& light : SqxSplit(value, ' '))
            if (!light.empty())
                words.insert(words.end(), {"--light", light});
        shade.picture.lights.clear();
        shade = WithWords(shade, words);
    } else if (name == "reset") {
        const std::size_t number = TakeNumber(rest);
        if (number >= shade.shaders.size() || !rest.empty())
            throw SqxPictureError("There is no shader '" + value + "' to reset");
        shade.shaders[number].parameters.clear();
    } else if (name.starts_with("param.")) {
        ApplyParameter(shade, change);
    } else {
        throw SqxPictureError("There is no setting '" + name + "' of the value '" + value + "'");
    }
}

void SqxViewSession::ApplyParameter(SqxShadeOptions& shade, const SqxViewChange& change) const
{
    std::string_view name = change.first;
    name.remove_prefix(std::string_view("param.").size());
    const std::size_t number = TakeNumber(name);
    if (number >= shade.shaders.size() || !name.starts_with('.') || !m_state.shaders[number].good)
        throw SqxPictureError("There is no shader for '" + change.first + "'");
    name.remove_prefix(1);
    SqxShadeOptions::Shader& shader = shade.shaders[number];
    const std::pair<std::string, std::string> value = {std::string(name), change.second};
    (void)SqxReadParameterValues(*m_state.shaders[number].good, shader.path, {value});
    EraseValue(shader, name);
    shader.parameters.push_back(value);
}
