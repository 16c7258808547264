#pragma once

#include <string>
#include <vector>

#include "QxShaderSupport.h"

/// A renderer for tests. Its answers are equal in each run, and most depend on every argument of
/// the query, so that a wrong argument of a call is noticed. It stores printed and reported texts.
class SqxScene : public QxShaderSupport {
public:
    /// Places the lights on a circle around the z axis, at z = -3; each has a different color.
    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override;
    QxRGBColor Ambient(const QxVector3& position) override;
    QxRGBColor Texture(const QxTextureQuery& query) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;
    QxRGBColor Shadow(const QxPointsQuery& query) override;
    float RayHit(const QxRayQuery& query) override;
    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    QxRGBColor Transmission(const QxRayQuery& query) override;
    float Occlusion(const QxRayQuery& query, QxVector3& openDirection) override;
    QxRGBColor IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                               float& occlusion) override;
    /// Derives numbers from the kind of message, the texture and the name; a text is the name
    /// itself. Returns false for names that start with "no".
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;
    float Depth(const QxVector3& position) override;
    void Print(const char* text) override { m_printed += text; }
    void Report(const char* text) override { m_reports.push_back(text); }

    [[nodiscard]] const std::string& Printed() const { return m_printed; }
    [[nodiscard]] const std::vector<std::string>& Reports() const { return m_reports; }

private:
    std::string m_printed;
    std::vector<std::string> m_reports;
};
