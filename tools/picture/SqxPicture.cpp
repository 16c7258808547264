// The shape is divided into grids. Each thread repeatedly takes the next grid, shades it, and draws
// it to a common film. The result does not depend on which thread takes a grid: the random numbers
// depend on the number of the grid, and texts of shaders are reported in the order of grids.

#include "picture/SqxPicture.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <condition_variable>
#include <exception>
#include <limits>
#include <set>
#include <thread>
#include <utility>

#include "picture/SqxPatch.h"

namespace {

constexpr float k_samplesOfACell = 1.5F;   // along the edge of a cell in the picture
constexpr unsigned int k_imagerRows = 64;  // rows of the picture per piece
constexpr auto k_progressStep = std::chrono::milliseconds(100);

/// Throws `SqxPictureError` if there is more than one shader of a type other than light.
void CheckKinds(const SqxPictureSettings& settings)
{
    std::set<QxShaderInterface::QxType> kinds;
    for (const SqxPictureSettings::Shader& shader : settings.shaders) {
        const QxShaderInterface::QxType kind = shader.shader->Type();
        if (kind != QxShaderInterface::e_typeLight && !kinds.insert(kind).second)
            throw SqxPictureError(std::string("There are two shaders of the kind '") +
                                  QxShader::TypeName(kind) + "'");
    }
}

unsigned int CellsFor(float samples)
{
    return std::max(1U, static_cast<unsigned int>(std::ceil(samples / k_samplesOfACell)));
}

/// Returns the number of cells along the edge of a grid. It is smaller if there are few cells, so
/// that all cores have work.
unsigned int EdgeFor(unsigned int columns, unsigned int rows)
{
    constexpr unsigned int k_largest = 64;
    constexpr unsigned int k_smallest = 16;
    constexpr unsigned int k_enough = 16;  // grids
    unsigned int edge = k_largest;
    while (edge > k_smallest && columns / edge * (rows / edge) < k_enough)
        edge /= 2;
    return edge;
}

/// The grids that a shape is divided into.
struct Cut {
    unsigned int columns;  // cells
    unsigned int rows;
    unsigned int edge;  // of a grid, in cells

    [[nodiscard]] unsigned int Across() const { return (columns + edge - 1) / edge; }
    [[nodiscard]] unsigned int Count() const { return Across() * ((rows + edge - 1) / edge); }
};

/// Returns the points of a grid. On each side the grid has one line of points that is not drawn, so
/// that all drawn points have neighbours for derivatives and normals, and no seam is visible.
SqxPatch PatchOf(const SqxShape& shape, const Cut& cut, unsigned int number)
{
    const unsigned int column = number % cut.Across() * cut.edge;
    const unsigned int row = number / cut.Across() * cut.edge;
    const float du = 1 / static_cast<float>(cut.columns);
    const float dv = 1 / static_cast<float>(cut.rows);
    return {shape,
            {std::min(cut.edge, cut.columns - column) + 3, std::min(cut.edge, cut.rows - row) + 3},
            (static_cast<float>(column) - 1) * du,
            (static_cast<float>(row) - 1) * dv,
            du,
            dv};
}

}  // namespace

/// Pieces of work that threads share: grids of the shape, or rows of the picture for the imager.
struct SqxPicture::Pieces {
    using Run = std::function<void(SqxPictureStage&, unsigned int)>;

    Pieces(unsigned int itsCount, Run itsRun, bool itIsWhole)
        : count(itsCount),
          run(std::move(itsRun)),
          isWhole(itIsWhole),
          notes(itsCount)
    {
    }

    unsigned int count;
    Run run;
    bool isWhole;  // part of the final pass: only its progress and notes are reported

    std::atomic<unsigned int> next = 0;
    std::atomic<unsigned int> done = 0;
    std::atomic<bool> ended = false;  // by an error in one of the threads
    std::mutex mutex;                 // guards `working` and `fault`
    std::condition_variable changed;
    std::size_t working = 0;  // threads
    std::exception_ptr fault;
    std::vector<std::vector<SqxNote>> notes;  // by piece; one thread writes each
};

SqxPicture::SqxPicture(SqxPictureSettings settings)
    : m_settings(std::move(settings)),
      m_shape(m_settings.shape)
{
    CheckKinds(m_settings);
    m_stages.push_back(std::make_unique<SqxPictureStage>(m_settings, m_shape));
}

std::unique_ptr<SqxFilm> SqxPicture::PreparedFilm(const SqxPictureSettings& settings)
{
    auto film = std::make_unique<SqxFilm>(settings.width, settings.height, settings.samples);
    film->Prepare();
    return film;
}

std::vector<SqxPicture::Pass> SqxPicture::Passes(bool coarseFirst) const
{
    std::vector<Pass> passes;
    if (coarseFirst) {
        const unsigned int edge = std::min(m_settings.width, m_settings.height);
        for (const unsigned int coarseness : {8U, 2U, 1U})
            if (edge >= coarseness * 8)
                passes.push_back({coarseness, 1});
        if (!passes.empty() && passes.back().coarseness == 1 && m_settings.samples == 1)
            return passes;
    }
    passes.push_back({1, m_settings.samples});
    return passes;
}

SqxPictureEnd SqxPicture::Render(const Watch& watch)
{
    const unsigned int cores = std::max(1U, std::thread::hardware_concurrency());
    const unsigned int threads = m_settings.threads ? m_settings.threads : cores;
    while (m_stages.size() < threads)
        m_stages.push_back(std::make_unique<SqxPictureStage>(m_settings, m_shape));
    if (watch.deadline)  // the deadline also ends endless shaders, so steps need no limit
        for (const auto& stage : m_stages)
            stage->SetStepLimit(std::numeric_limits<std::size_t>::max());
    m_pixels = {};
    for (const Pass& pass : Passes(watch.coarseFirst)) {
        const SqxPictureEnd end = RenderPass(pass, watch);
        if (end != SqxPictureEnd::Whole)
            return end;
        if (watch.show)
            watch.show();
    }
    return SqxPictureEnd::Whole;
}

SqxPictureEnd SqxPicture::RenderPass(const Pass& pass, const Watch& watch)
{
    const auto pixelsOf = [&pass](unsigned int length) {
        return (length + pass.coarseness - 1) / pass.coarseness;
    };
    const unsigned int width = pixelsOf(m_settings.width);
    const unsigned int height = pixelsOf(m_settings.height);
    const bool isWhole = pass.coarseness == 1 && pass.samples == m_settings.samples;
    std::unique_ptr<SqxFilm> film = isWhole ? std::exchange(m_film, nullptr) : nullptr;
    if (!film)
        film = std::make_unique<SqxFilm>(width, height, pass.samples);
    const auto edge = static_cast<float>(std::min(width, height) * pass.samples);
    Cut cut = {CellsFor(m_shape.LengthAlongU() * edge), CellsFor(m_shape.LengthAlongV() * edge), 0};
    cut.edge = EdgeFor(cut.columns, cut.rows);
    const bool moves = m_stages[0]->Has(QxShaderInterface::e_typeDisplacement);
    const SqxMesh::Sides sides =
        !moves && m_shape.IsClosed() ? SqxMesh::Sides::Outer : SqxMesh::Sides::Both;
    const auto run = [&](SqxPictureStage& stage, unsigned int number) {
        const SqxPatch patch = PatchOf(m_shape, cut, number);
        if (!moves && patch.IsHidden())
            return;
        QxHostGrid& grid = stage.Grid(patch.Layout());
        patch.Place(grid);
        stage.Shade(grid, number);
        film->Draw(grid, number, sides);
    };
    Pieces pieces{cut.Count(), run, isWhole};
    SqxPictureEnd end = RunPieces(pieces, watch);
    if (end != SqxPictureEnd::Whole && m_pixels.width > 0)
        return end;
    SqxPixels pixels = film->Finish(m_stages.size());
    if (end == SqxPictureEnd::Whole && m_stages[0]->Has(QxShaderInterface::e_typeImager)) {
        end = RunImager(pixels, isWhole, watch);
        if (end != SqxPictureEnd::Whole && m_pixels.width > 0)
            return end;
    }
    m_pixels = std::move(pixels);
    return end;
}

SqxPictureEnd SqxPicture::RunImager(SqxPixels& pixels, bool isWhole, const Watch& watch)
{
    const auto run = [&](SqxPictureStage& stage, unsigned int number) {
        const unsigned int first = number * k_imagerRows;
        stage.RunImager(pixels, first, std::min(k_imagerRows, pixels.height - first), number);
    };
    Pieces pieces{(pixels.height + k_imagerRows - 1) / k_imagerRows, run, isWhole};
    return RunPieces(pieces, watch);
}

/// Starts the threads, which check whether to stop, and reports progress until they end. Then
/// throws the error of a piece, if there is one, or reports the notes of all completed pieces.
SqxPictureEnd SqxPicture::RunPieces(Pieces& pieces, const Watch& watch)
{
    // All threads are counted first, since one may end before the next one starts.
    const std::size_t count = std::min<std::size_t>(m_stages.size(), pieces.count);
    pieces.working = count;
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < count; ++i)
        threads.emplace_back([this, &pieces, &watch, i] { Work(pieces, *m_stages[i], watch); });

    std::unique_lock lock(pieces.mutex);
    while (!pieces.changed.wait_for(lock, k_progressStep, [&] { return pieces.working == 0; })) {
        lock.unlock();
        if (watch.progress && pieces.isWhole)
            watch.progress(static_cast<float>(pieces.done) / static_cast<float>(pieces.count));
        lock.lock();
    }
    lock.unlock();
    threads.clear();

    if (pieces.fault)
        std::rethrow_exception(pieces.fault);
    if (watch.note && pieces.isWhole)
        for (const std::vector<SqxNote>& notes : pieces.notes)
            for (const SqxNote& note : notes)
                watch.note(note);
    if (pieces.done == pieces.count)
        return SqxPictureEnd::Whole;
    return watch.stop.stop_requested() ? SqxPictureEnd::Stopped : SqxPictureEnd::OutOfTime;
}

void SqxPicture::Work(Pieces& pieces, SqxPictureStage& stage, const Watch& watch) const
{
    const auto isOver = [&watch] {
        return watch.stop.stop_requested() ||
               (watch.deadline && std::chrono::steady_clock::now() >= *watch.deadline);
    };
    stage.SetStopTest([&] { return pieces.ended || isOver(); });
    std::exception_ptr fault;
    while (!pieces.ended && !isOver()) {
        const unsigned int number = pieces.next++;
        if (number >= pieces.count)
            break;
        try {
            pieces.run(stage, number);
        } catch (const QxHostStopped&) {
            break;
        } catch (...) {
            fault = std::current_exception();
            pieces.ended = true;
            break;
        }
        pieces.notes[number] = stage.TakeNotes();
        ++pieces.done;
    }
    stage.SetStopTest({});
    const std::lock_guard lock(pieces.mutex);
    if (fault && !pieces.fault)
        pieces.fault = fault;
    --pieces.working;
    pieces.changed.notify_all();
}

std::vector<unsigned char> SqxPicture::Bytes(SqxEncoding encoding) const
{
    const SqxByteEncoder toByte(encoding);
    std::vector<unsigned char> encoded;
    encoded.reserve(m_pixels.colors.size() * 3);
    for (std::size_t i = 0; i < m_pixels.colors.size(); ++i) {
        const QxRGBColor color =
            m_pixels.colors[i] + (1 - m_pixels.opacities[i]) * m_settings.background;
        encoded.insert(encoded.end(), {toByte(color.r), toByte(color.g), toByte(color.b)});
    }
    if (m_pixels.width == m_settings.width && m_pixels.height == m_settings.height)
        return encoded;

    std::vector<unsigned char> bytes;
    bytes.reserve(static_cast<std::size_t>(m_settings.width) * m_settings.height * 3);
    for (unsigned int row = 0; row < m_settings.height; ++row)
        for (unsigned int column = 0; column < m_settings.width; ++column) {
            const std::size_t x = column * m_pixels.width / m_settings.width;
            const std::size_t y = row * m_pixels.height / m_settings.height;
            const unsigned char* pixel = encoded.data() + (y * m_pixels.width + x) * 3;
            bytes.insert(bytes.end(), pixel, pixel + 3);
        }
    return bytes;
}
