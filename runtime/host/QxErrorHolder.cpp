// Each question has one line: who is asked, and the answer once there was an error.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxErrorHolder.h"

namespace {

constexpr unsigned long k_questionsAfterError = 10'000'000;

}  // namespace

void QxErrorHolder::Count()
{
    if (++m_asked > k_questionsAfterError)
        Release();
}

template <class Result, class... Arguments>
Result QxErrorHolder::Ask(Result (QxShaderSupport::*question)(Arguments...), Result neutral,
                          Arguments... arguments)
{
    if (m_error) {
        Count();
        return neutral;
    }
    try {
        return (m_answers.*question)(arguments...);
    } catch (...) {
        m_error = std::current_exception();
        return neutral;
    }
}

template <class... Arguments>
void QxErrorHolder::Tell(void (QxShaderSupport::*question)(Arguments...), Arguments... arguments)
{
    if (m_error)
        return Count();
    try {
        (m_answers.*question)(arguments...);
    } catch (...) {
        m_error = std::current_exception();
    }
}

void QxErrorHolder::EvaluateLights(const QxVector3* positions, unsigned int points,
                                   QxLightInput* lights, unsigned int count)
{
    Tell(&QxShaderSupport::EvaluateLights, positions, points, lights, count);
}

QxRGBColor QxErrorHolder::Ambient(const QxVector3& position)
{
    return Ask<QxRGBColor, const QxVector3&>(&QxShaderSupport::Ambient, {}, position);
}

void QxErrorHolder::AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                    QxRGBColor* results)
{
    Tell(&QxShaderSupport::AmbientOverGrid, positions, points, results);
}

QxRGBColor QxErrorHolder::Texture(const QxTextureQuery& query)
{
    return Ask<QxRGBColor, const QxTextureQuery&>(&QxShaderSupport::Texture, {}, query);
}

QxRGBColor QxErrorHolder::Environment(const QxPointsQuery& query)
{
    return Ask<QxRGBColor, const QxPointsQuery&>(&QxShaderSupport::Environment, {}, query);
}

QxRGBColor QxErrorHolder::Shadow(const QxPointsQuery& query)
{
    return Ask<QxRGBColor, const QxPointsQuery&>(&QxShaderSupport::Shadow, {}, query);
}

float QxErrorHolder::RayHit(const QxRayQuery& query)
{
    return Ask<float, const QxRayQuery&>(&QxShaderSupport::RayHit, -1, query);
}

QxRGBColor QxErrorHolder::Trace(const QxRayQuery& query, float& distance)
{
    distance = -1;
    return Ask<QxRGBColor, const QxRayQuery&, float&>(&QxShaderSupport::Trace, {}, query, distance);
}

QxRGBColor QxErrorHolder::Transmission(const QxRayQuery& query)
{
    return Ask<QxRGBColor, const QxRayQuery&>(&QxShaderSupport::Transmission, {1, 1, 1}, query);
}

float QxErrorHolder::Occlusion(const QxRayQuery& query, QxVector3& openDirection)
{
    openDirection = query.direction;
    return Ask<float, const QxRayQuery&, QxVector3&>(&QxShaderSupport::Occlusion, 0, query,
                                                     openDirection);
}

QxRGBColor QxErrorHolder::IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                                          float& occlusion)
{
    openDirection = query.direction;
    occlusion = 0;
    return Ask<QxRGBColor, const QxRayQuery&, QxVector3&, float&>(
        &QxShaderSupport::IndirectDiffuse, {}, query, openDirection, occlusion);
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

/// Neutral numbers are random, too: a shader may wait for one that it likes.
float QxErrorHolder::Random()
{
    return m_error ? QxShaderSupport::Random() : Ask(&QxShaderSupport::Random, 0.0F);
}

void QxErrorHolder::Print(const char* text)
{
    Tell(&QxShaderSupport::Print, text);
}

void QxErrorHolder::Report(const char* text)
{
    Tell(&QxShaderSupport::Report, text);
}

bool QxErrorHolder::LightMessage(unsigned int light, const char* name, const QxMessageValue& value)
{
    return Ask<bool, unsigned int, const char*, const QxMessageValue&>(
        &QxShaderSupport::LightMessage, false, light, name, value);
}
