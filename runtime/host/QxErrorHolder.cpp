// Each override calls a function of the host. Those that return a value also determine the value
// that the shader gets after an error.
//
// Tested by tests/host/HostFilesTest.cpp.

#include "host/QxErrorHolder.h"

#include <algorithm>

namespace {

constexpr unsigned long k_questionsAfterError = 10'000'000;
constexpr unsigned int k_firstPoint = 0;

template <class Query>
QxGridQueries<Query> QueryOfOnePoint(const Query& query, const void* file = nullptr)
{
    return {file, &query, &k_firstPoint, 1};
}

}  // namespace

void QxErrorHolder::CountQuestionAfterError()
{
    if (++m_askedSinceError > k_questionsAfterError)
        Release();
}

template <class Result, class... Arguments>
Result QxErrorHolder::Ask(Result (QxShaderSupport::*question)(Arguments...), Result neutral,
                          Arguments... arguments)
{
    if (m_error) {
        CountQuestionAfterError();
        return neutral;
    }
    try {
        return (m_answers.*question)(arguments...);
    } catch (...) {
        m_error = std::current_exception();
        return neutral;
    }
}

template <class Query, class... Results>
void QxErrorHolder::AskGrid(void (QxShaderSupport::*question)(const QxGridQueries<Query>&,
                                                              Results*...),
                            const QxGridQueries<Query>& asked, Results*... results)
{
    Forward<const QxGridQueries<Query>&, Results*...>(question, asked, results...);
    if (!m_error)
        return;
    QxShaderSupport neutral;
    (neutral.*question)(asked, results...);
}

template <class... Arguments>
void QxErrorHolder::Forward(void (QxShaderSupport::*question)(Arguments...), Arguments... arguments)
{
    if (m_error)
        return CountQuestionAfterError();
    try {
        (m_answers.*question)(arguments...);
    } catch (...) {
        m_error = std::current_exception();
    }
}

void QxErrorHolder::EvaluateLights(const QxVector3* positions, unsigned int points,
                                   QxLightInput* lights, unsigned int count)
{
    Forward(&QxShaderSupport::EvaluateLights, positions, points, lights, count);
}

QxRGBColor QxErrorHolder::Ambient(const QxVector3& position)
{
    return Ask<QxRGBColor, const QxVector3&>(&QxShaderSupport::Ambient, {}, position);
}

QxRGBColor QxErrorHolder::AmbientAt(const QxVector3& position, unsigned int point)
{
    return Ask<QxRGBColor, const QxVector3&, unsigned int>(&QxShaderSupport::AmbientAt, {},
                                                           position, point);
}

void QxErrorHolder::AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                    QxRGBColor* results)
{
    Forward(&QxShaderSupport::AmbientOverGrid, positions, points, results);
    if (m_error)
        std::fill_n(results, points, QxRGBColor{0, 0, 0});
}

QxRGBColor QxErrorHolder::Texture(const QxTextureQuery& query)
{
    QxRGBColor result = {0, 0, 0};
    TextureOverGrid(QueryOfOnePoint(query, FindFile(QxFileKind::Texture, query.name)), &result);
    return result;
}

QxRGBColor QxErrorHolder::Environment(const QxPointsQuery& query)
{
    QxRGBColor result = {0, 0, 0};
    EnvironmentOverGrid(QueryOfOnePoint(query, FindFile(QxFileKind::Environment, query.name)),
                        &result);
    return result;
}

QxRGBColor QxErrorHolder::Shadow(const QxPointsQuery& query)
{
    QxRGBColor result = {0, 0, 0};
    ShadowOverGrid(QueryOfOnePoint(query, FindFile(QxFileKind::Shadow, query.name)), &result);
    return result;
}

float QxErrorHolder::RayHit(const QxRayQuery& query)
{
    float distance = -1;
    RayHitOverGrid(QueryOfOnePoint(query), &distance);
    return distance;
}

QxRGBColor QxErrorHolder::Trace(const QxRayQuery& query, float& distance)
{
    QxRGBColor result = {0, 0, 0};
    distance = -1;
    TraceOverGrid(QueryOfOnePoint(query), &result, &distance);
    return result;
}

QxRGBColor QxErrorHolder::Transmission(const QxRayQuery& query)
{
    QxRGBColor result = {1, 1, 1};
    TransmissionOverGrid(QueryOfOnePoint(query), &result);
    return result;
}

float QxErrorHolder::Occlusion(const QxRayQuery& query, QxVector3& openDirection)
{
    float result = 0;
    openDirection = query.direction;
    OcclusionOverGrid(QueryOfOnePoint(query), &result, &openDirection);
    return result;
}

QxRGBColor QxErrorHolder::IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                                          float& occlusion)
{
    openDirection = query.direction;
    occlusion = 0;
    QxRGBColor result = {0, 0, 0};
    IndirectDiffuseOverGrid(QueryOfOnePoint(query), &result, &openDirection, &occlusion);
    return result;
}

bool QxErrorHolder::IsShadowRay()
{
    return Ask(&QxShaderSupport::IsShadowRay, false);
}

bool QxErrorHolder::IsIndirectRay()
{
    return Ask(&QxShaderSupport::IsIndirectRay, false);
}

float QxErrorHolder::RayLevel()
{
    return Ask(&QxShaderSupport::RayLevel, 0.0F);
}

bool QxErrorHolder::Message(QxMessage message, const char* texture, const char* name,
                            const QxMessageValue& value)
{
    return Ask<bool, QxMessage, const char*, const char*, const QxMessageValue&>(
        &QxShaderSupport::Message, false, message, texture, name, value);
}

float QxErrorHolder::Depth(const QxVector3& position)
{
    return Ask<float, const QxVector3&>(&QxShaderSupport::Depth, 0, position);
}

/// Numbers after an error are random too: a shader may loop until a number meets its condition.
float QxErrorHolder::Random()
{
    if (!m_error)
        return Ask(&QxShaderSupport::Random, 0.0F);
    CountQuestionAfterError();
    return QxShaderSupport::Random();
}

float QxErrorHolder::RandomNumber(unsigned int point, unsigned int draw)
{
    return m_error ? QxShaderSupport::RandomNumber(point, draw)  // calls `Random`, which counts
                   : Ask(&QxShaderSupport::RandomNumber, 0.0F, point, draw);
}

float QxErrorHolder::NextRandomNumber(unsigned int point)
{
    return RandomNumber(point, m_draws.Next(point));
}

void QxErrorHolder::Print(const char* text)
{
    Forward(&QxShaderSupport::Print, text);
}

void QxErrorHolder::Report(const char* text)
{
    Forward(&QxShaderSupport::Report, text);
}

bool QxErrorHolder::LightMessage(unsigned int light, const char* name, const QxMessageValue& value)
{
    return Ask<bool, unsigned int, const char*, const QxMessageValue&>(
        &QxShaderSupport::LightMessage, false, light, name, value);
}

const void* QxErrorHolder::FindFile(QxFileKind kind, const char* name)
{
    if (m_error) {
        CountQuestionAfterError();
        return nullptr;
    }
    try {
        return m_files.Find(m_answers, kind, name ? name : "");
    } catch (...) {
        m_error = std::current_exception();
        return nullptr;
    }
}

void QxErrorHolder::TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results)
{
    AskGrid(&QxShaderSupport::TextureOverGrid, asked, results);
}

void QxErrorHolder::EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked,
                                        QxRGBColor* results)
{
    AskGrid(&QxShaderSupport::EnvironmentOverGrid, asked, results);
}

void QxErrorHolder::ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results)
{
    AskGrid(&QxShaderSupport::ShadowOverGrid, asked, results);
}

void QxErrorHolder::TraceOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results,
                                  float* distances)
{
    AskGrid(&QxShaderSupport::TraceOverGrid, asked, results, distances);
}

void QxErrorHolder::TransmissionOverGrid(const QxGridQueries<QxRayQuery>& asked,
                                         QxRGBColor* results)
{
    AskGrid(&QxShaderSupport::TransmissionOverGrid, asked, results);
}

void QxErrorHolder::OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* results,
                                      QxVector3* openDirections)
{
    AskGrid(&QxShaderSupport::OcclusionOverGrid, asked, results, openDirections);
}

void QxErrorHolder::RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* distances)
{
    AskGrid(&QxShaderSupport::RayHitOverGrid, asked, distances);
}

void QxErrorHolder::IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked,
                                            QxRGBColor* results, QxVector3* openDirections,
                                            float* occlusions)
{
    AskGrid(&QxShaderSupport::IndirectDiffuseOverGrid, asked, results, openDirections, occlusions);
}
