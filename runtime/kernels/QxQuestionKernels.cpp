// Functions that query files or follow rays: the queries of all active points are collected and
// passed to the scene at once.
//
// Operands are read before results are written, since a result may share its storage with an
// argument.
//
// Tested with whole shaders by tests/host/AgreementTest.cpp and tests/host/HostTest.cpp.

#include "QxSceneCalls.h"

#define QX_KERNEL_SET qxcommon
#define QX_KERNEL_CODE
#include "kernels/QxKernelForms.h"

namespace qxcommon {
namespace {

using Vector = QxVector3;
using Color = QxRGBColor;
using Text = const char*;

/// The operands of an instruction for one point, by index.
class Operands {
public:
    Operands(const QxMachineState& state, const QxCode& code, unsigned int point)
        : m_state(state),
          m_code(code),
          m_point(point)
    {
    }
    [[nodiscard]] float Number(std::size_t k) const { return *At<float>(k); }
    [[nodiscard]] const Vector& Triple(std::size_t k) const { return *At<Vector>(k); }
    [[nodiscard]] Text String(std::size_t k) const
    {
        const Text text = *At<Text>(k);
        return text ? text : "";
    }

private:
    template <class Value>
    [[nodiscard]] const Value* At(std::size_t k) const
    {
        const QxOperand& operand = m_code.operands[k];
        return static_cast<const Value*>(m_state.values[operand.variable]) +
               std::size_t{m_point} * operand.step;
    }

    const QxMachineState& m_state;
    const QxCode& m_code;
    unsigned int m_point;
};

/// Fills `queries` with the results of `make` for the operands of each active point, and records
/// these points.
template <class Query, class Make>
void Collect(QxMachineState& state, const QxCode& code, const QxPoints& points,
             std::vector<Query>& queries, const Make& make)
{
    std::vector<unsigned int>& numbers = state.questions.points;
    numbers.clear();
    queries.clear();
    for (unsigned int i = points.first; i < points.End(); ++i)
        if (points(i)) {
            numbers.push_back(i);
            queries.push_back(make(Operands(state, code, i)));
        }
}

template <class Query>
QxGridQueries<Query> Asked(const QxMachineState& state, const std::vector<Query>& queries,
                           const void* file = nullptr)
{
    return {file, queries.data(), state.questions.points.data(),
            static_cast<unsigned int>(queries.size())};
}

/// Returns the host's handle for the file that operand 1 names, or null if the host has none or the
/// name is varying.
const void* FileOf(QxMachineState& state, const QxCode& code, QxFileKind kind)
{
    if (code.operands[1].step != 0)
        return nullptr;
    return state.questions.files.Find(*state.support, kind, Operands(state, code, 0).String(1));
}

/// Stores the answers in operand `k`, at the points that `Collect` recorded. A number gets the red
/// component of a color.
template <class Value, class Answer>
void Give(QxMachineState& state, const QxCode& code, std::size_t k,
          const std::vector<Answer>& answers)
{
    const auto result = Operand<Value>(state, code, k);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        Value& value = QxAt(result, state.questions.points[i]);
        if constexpr (std::is_same_v<Value, Answer>)
            value = answers[i];
        else
            QxAnswer(value, answers[i]);
    }
}

// Files

template <class Result>
void Textures(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.patches, [](const Operands& at) {
        return QxTextureQuery{at.String(1),
                              at.Number(2),
                              {at.Number(3), at.Number(5), at.Number(7), at.Number(9)},
                              {at.Number(4), at.Number(6), at.Number(8), at.Number(10)},
                              at.Number(11),
                              at.Number(12),
                              at.Number(13),
                              at.Number(14),
                              at.Number(15),
                              at.Number(16),
                              at.String(17),
                              at.Number(18),
                              at.Number(19)};
    });
    if (all.patches.empty())
        return;
    all.colors.resize(all.patches.size());
    const void* const file = FileOf(state, code, QxFileKind::Texture);
    state.support->TextureOverGrid(Asked(state, all.patches, file), all.colors.data());
    Give<Result>(state, code, 0, all.colors);
}

/// Returns the common part of the queries of `environment`, `shadow` and `areashadow`.
QxPointsQuery Corners(const Operands& at)
{
    return QxMakePointsQuery(at.String(1), at.Number(2), at.Triple(3), at.Triple(4), at.Triple(5),
                             at.Triple(6), at.Number(7), at.Number(8), at.Number(9), at.Number(10),
                             at.Number(11), at.Number(12), at.String(13));
}

template <class Result>
void Environments(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.corners, [](const Operands& at) {
        QxPointsQuery query = Corners(at);
        query.lerp = at.Number(14);
        query.fill = at.Number(15);
        return query;
    });
    if (all.corners.empty())
        return;
    all.colors.resize(all.corners.size());
    const void* const file = FileOf(state, code, QxFileKind::Environment);
    state.support->EnvironmentOverGrid(Asked(state, all.corners, file), all.colors.data());
    Give<Result>(state, code, 0, all.colors);
}

template <class Result, bool area, bool inLight>
void Shadows(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.corners, [](const Operands& at) {
        QxPointsQuery query = Corners(at);
        query.bias = at.Number(14);
        query.inLight = inLight;
        if constexpr (area) {
            query.sourceCount = QxToInt(at.Number(15), 0, 4);
            for (std::size_t i = 0; i < 4; ++i)
                query.sources[i] = at.Triple(16 + i);
        }
        return query;
    });
    if (all.corners.empty())
        return;
    all.colors.resize(all.corners.size());
    const void* const file = FileOf(state, code, QxFileKind::Shadow);
    state.support->ShadowOverGrid(Asked(state, all.corners, file), all.colors.data());
    Give<Result>(state, code, 0, all.colors);
}

// Rays

QxRayQuery Ray(const Operands& at)
{
    QxRayQuery query = {};
    query.position = at.Triple(1);
    query.direction = at.Triple(2);
    query.environment = "";
    return query;
}

void Traces(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.rays, Ray);
    if (all.rays.empty())
        return;
    all.colors.resize(all.rays.size());
    all.numbers.assign(all.rays.size(), 0);
    state.support->TraceOverGrid(Asked(state, all.rays), all.colors.data(), all.numbers.data());
    Give<Color>(state, code, 0, all.colors);
    Give<float>(state, code, 3, all.numbers);
}

void Transmissions(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.rays, Ray);
    if (all.rays.empty())
        return;
    all.colors.resize(all.rays.size());
    state.support->TransmissionOverGrid(Asked(state, all.rays), all.colors.data());
    Give<Color>(state, code, 0, all.colors);
}

void RayHits(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.rays, Ray);
    if (all.rays.empty())
        return;
    all.numbers.assign(all.rays.size(), 0);
    state.support->RayHitOverGrid(Asked(state, all.rays), all.numbers.data());
    Give<float>(state, code, 0, all.numbers);
}

/// Collects the queries of `occlusion` or `indirectdiffuse`, and prepares their answers: occlusions
/// are 0, and the open (mean uncovered) directions are the directions of the queries.
void CollectHemispheres(QxMachineState& state, const QxCode& code, const QxPoints& points,
                        QxRayQuery (*make)(const Operands&))
{
    QxQuestions& all = state.questions;
    Collect(state, code, points, all.rays, make);
    all.numbers.assign(all.rays.size(), 0);
    all.directions.clear();
    for (const QxRayQuery& ray : all.rays)
        all.directions.push_back(ray.direction);
}

void Occlusions(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    CollectHemispheres(state, code, points, [](const Operands& at) {
        return QxRayQuery{at.Triple(1), at.Triple(2), at.Number(3), at.Number(4), at.Number(5),
                          at.Number(6), at.Number(7), "",           at.Triple(8)};
    });
    if (all.rays.empty())
        return;
    state.support->OcclusionOverGrid(Asked(state, all.rays), all.numbers.data(),
                                     all.directions.data());
    Give<float>(state, code, 0, all.numbers);
    Give<Vector>(state, code, 9, all.directions);
}

void IndirectDiffuses(QxMachineState& state, const QxCode& code, const QxPoints& points)
{
    QxQuestions& all = state.questions;
    CollectHemispheres(state, code, points, [](const Operands& at) {
        return QxRayQuery{at.Triple(1), at.Triple(2), at.Number(3), at.Number(4), at.Number(5),
                          at.Number(6), at.Number(7), at.String(8), at.Triple(9)};
    });
    if (all.rays.empty())
        return;
    all.colors.resize(all.rays.size());
    state.support->IndirectDiffuseOverGrid(Asked(state, all.rays), all.colors.data(),
                                           all.directions.data(), all.numbers.data());
    Give<Color>(state, code, 0, all.colors);
    Give<Vector>(state, code, 10, all.directions);
    Give<float>(state, code, 11, all.numbers);
}

// `TEXTURE` and `CORNERS` are the types of: name, channel, four corners, fidelity, samples, two
// blurs, two widths, filter; `TEXTURE` also includes fill and lerp. `SOURCES` are the number of
// corners of an area light, and these corners.
#define FIVE float, float, float, float, float
#define TEXTURE Text, FIVE, FIVE, FIVE, Text, float, float
#define CORNERS Text, float, Vector, Vector, Vector, Vector, FIVE, float, Text
#define SOURCES float, Vector, Vector, Vector, Vector
#define SHADOW_ROWS(NAME, AREA, ...)                                                               \
    Row<float&, __VA_ARGS__>(SqxPrimitive::NAME##_1D, Shadows<float, AREA, false>),                \
        Row<Color&, __VA_ARGS__>(SqxPrimitive::NAME##_3D, Shadows<Color, AREA, false>),            \
        Row<float&, __VA_ARGS__>(SqxPrimitive::NAME##_1D_LIGHT, Shadows<float, AREA, true>),       \
        Row<Color&, __VA_ARGS__>(SqxPrimitive::NAME##_3D_LIGHT, Shadows<Color, AREA, true>)

// clang-format off
constexpr QxKernelRow k_rows[] = {
    Row<float&, TEXTURE>(SqxPrimitive::CALL_TEXTURE_1D, Textures<float>),
    Row<Color&, TEXTURE>(SqxPrimitive::CALL_TEXTURE_3D, Textures<Color>),
    Row<float&, CORNERS, float, float>(SqxPrimitive::CALL_ENVIRONMENT_1D, Environments<float>),
    Row<Color&, CORNERS, float, float>(SqxPrimitive::CALL_ENVIRONMENT_3D, Environments<Color>),
    SHADOW_ROWS(CALL_SHADOW, false, CORNERS, float),
    SHADOW_ROWS(CALL_AREASHADOW, true, CORNERS, float, SOURCES),
    Row<Color&, Vector, Vector>(SqxPrimitive::CALL_PRIM_TRANSMISSION, Transmissions),
    Row<Color&, Vector, Vector, float&>(SqxPrimitive::CALL_PRIM_TRACE, Traces),
    Row<float&, Vector, Vector>(SqxPrimitive::CALL_PRIM_RAYHITTEST, RayHits),
    Row<float&, Vector, Vector, FIVE, Vector, Vector&>(SqxPrimitive::CALL_PRIM_OCCLUSION, Occlusions),
    Row<Color&, Vector, Vector, FIVE, Text, Vector, Vector&, float&>(SqxPrimitive::CALL_PRIM_INDIRECTDIFFUSE,
                                                                     IndirectDiffuses),
};
// clang-format on

}  // namespace

QxKernelRows QuestionKernels()
{
    return k_rows;
}

}  // namespace qxcommon
