#include "machine/SqxScene.h"

#include <cmath>

namespace {

/// Hashes numbers and texts to a value from 0 to 1, which depends on the sine of a weighted sum, so
/// that a rounding error in a query changes the value only slightly.
class Mixer {
public:
    Mixer& operator<<(float number)
    {
        m_weight = m_weight * 1.37F + 0.61F;
        m_sum += m_weight * number;
        if (m_weight > 9)
            m_weight -= 8.5F;
        return *this;
    }
    Mixer& operator<<(const QxVector3& v) { return *this << v.x << v.y << v.z; }
    Mixer& operator<<(const char* text)
    {
        for (; *text; ++text)
            *this << static_cast<float>(*text) / 128;
        return *this;
    }
    [[nodiscard]] float Value(float phase = 0) const
    {
        return 0.5F + 0.5F * std::sin(m_sum + phase);
    }
    [[nodiscard]] QxRGBColor Color() const { return {Value(), Value(1), Value(2)}; }

private:
    float m_weight = 0.3F;
    float m_sum = 0;
};

Mixer Mixed(const QxPointsQuery& query)
{
    Mixer mixer;
    mixer << query.name << query.channel;
    for (const QxVector3& point : query.points)
        mixer << point;
    mixer << query.fidelity << query.samples << query.sBlur << query.tBlur << query.sWidth
          << query.tWidth << query.filter << query.lerp << query.fill << query.bias;
    mixer << static_cast<float>(query.sourceCount) << (query.inLight ? 1.0F : 0.0F);
    for (int i = 0; i < query.sourceCount && i < 4; ++i)
        mixer << query.sources[i];
    return mixer;
}

Mixer Mixed(const QxRayQuery& query)
{
    Mixer mixer;
    return mixer << query.position << query.direction << query.samples << query.angle << query.bias
                 << query.maxDistance << query.variance << query.environment << query.axis;
}

}  // namespace

void SqxScene::EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                              unsigned int count)
{
    for (unsigned int light = 0; light < count; ++light) {
        const float turn = static_cast<float>(light) * 2.4F;
        const QxVector3 place = {2 * std::cos(turn), 2 * std::sin(turn), -3};
        const QxRGBColor color = {0.5F + 0.25F * std::cos(turn), 0.5F,
                                  0.5F + 0.25F * std::sin(turn)};
        for (unsigned int i = 0; i < points; ++i) {
            lights[light].L[i] = place - positions[i];
            lights[light].Cl[i] = color;
            lights[light].Ol[i] = {1, 1, 1};
        }
    }
}

QxRGBColor SqxScene::Ambient(const QxVector3& position)
{
    return {0.1F, 0.2F, 0.05F * position.x};
}

QxRGBColor SqxScene::Texture(const QxTextureQuery& query)
{
    Mixer mixer;
    mixer << query.name << query.channel;
    for (int i = 0; i < 4; ++i)
        mixer << query.s[i] << query.t[i];
    mixer << query.fidelity << query.samples << query.sBlur << query.tBlur << query.sWidth
          << query.tWidth << query.filter << query.fill << query.lerp;
    return mixer.Color();
}

QxRGBColor SqxScene::Environment(const QxPointsQuery& query)
{
    return (Mixed(query) << 1.0F).Color();
}

QxRGBColor SqxScene::Shadow(const QxPointsQuery& query)
{
    return (Mixed(query) << 2.0F).Color();
}

float SqxScene::RayHit(const QxRayQuery& query)
{
    return 10 * Mixed(query).Value() - 2;
}

QxRGBColor SqxScene::Trace(const QxRayQuery& query, float& distance)
{
    distance = RayHit(query);
    return Mixed(query).Color();
}

QxRGBColor SqxScene::Transmission(const QxRayQuery& query)
{
    return (Mixed(query) << 3.0F).Color();
}

float SqxScene::Occlusion(const QxRayQuery& query, QxVector3& openDirection)
{
    const Mixer mixer = Mixed(query);
    openDirection = {mixer.Value(3), mixer.Value(4), mixer.Value(5)};
    return mixer.Value();
}

QxRGBColor SqxScene::IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                                     float& occlusion)
{
    occlusion = Occlusion(query, openDirection);
    return Mixed(query).Color();
}

bool SqxScene::Message(QxMessage message, const char* texture, const char* name,
                       const QxMessageValue& value)
{
    if (std::strncmp(name, "no", 2) == 0)
        return false;
    const Mixer mixer = Mixer() << static_cast<float>(message) << texture << name;
    if (value.type == QxValueType::String) {
        const std::vector<const char*> texts(value.length, name);
        value.Store(texts.data());
        return true;
    }
    std::vector<float> numbers(value.length * QxFloatCount(value.type));
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = mixer.Value(static_cast<float>(i));
    value.Store(numbers.data());
    return true;
}

float SqxScene::Depth(const QxVector3& position)
{
    return 0.1F * position.z + 0.3F;
}
