#pragma once

#include <exception>
#include <utility>

#include "QxShaderSupport.h"
#include "kernels/QxFileHandles.h"

/// Passes the questions of a built shader on, and holds an error of an answer back until the shader
/// has ended: it frees its locals at its end alone, which an exception would pass by.
///
/// After an error the shader gets neutral answers. One that keeps asking is left with the error all
/// the same, since it may never end. Questions of one point are asked as those of a grid are, so
/// that a host may answer in either form.
class QxErrorHolder : public QxShaderSupport {
public:
    /// `answers` and `files` must outlive it.
    /// `firstDraw`: with what the counts of `random` begin.
    QxErrorHolder(QxShaderSupport& answers, QxFileHandles& files, unsigned int firstDraw = 0)
        : m_answers(answers),
          m_files(files)
    {
        m_draws.Start(firstDraw);
    }

    /// Throws the error that was held back, if there is one. The shader has ended.
    void Release()
    {
        if (m_error)
            std::rethrow_exception(std::exchange(m_error, nullptr));
    }

    void EvaluateLights(const QxVector3* positions, unsigned int points, QxLightInput* lights,
                        unsigned int count) override;
    QxRGBColor Ambient(const QxVector3& position) override;
    void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                         QxRGBColor* results) override;
    QxRGBColor Texture(const QxTextureQuery& query) override;
    QxRGBColor Environment(const QxPointsQuery& query) override;
    QxRGBColor Shadow(const QxPointsQuery& query) override;
    float RayHit(const QxRayQuery& query) override;
    QxRGBColor Trace(const QxRayQuery& query, float& distance) override;
    QxRGBColor Transmission(const QxRayQuery& query) override;
    float Occlusion(const QxRayQuery& query, QxVector3& openDirection) override;
    QxRGBColor IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                               float& occlusion) override;
    bool IsShadowRay() override;
    bool IsIndirectRay() override;
    float RayLevel() override;
    bool Message(QxMessage message, const char* texture, const char* name,
                 const QxMessageValue& value) override;
    float Depth(const QxVector3& position) override;
    float Random() override;
    void Print(const char* text) override;
    void Report(const char* text) override;
    bool LightMessage(unsigned int light, const char* name, const QxMessageValue& value) override;
    const void* FindFile(QxFileKind kind, const char* name) override;
    void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) override;
    void EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked,
                             QxRGBColor* results) override;
    void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results) override;
    void TraceOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results,
                       float* distances) override;
    void TransmissionOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results) override;
    void OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* results,
                           QxVector3* openDirections) override;
    void RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* distances) override;
    void IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results,
                                 QxVector3* openDirections, float* occlusions) override;
    float RandomNumber(unsigned int point, unsigned int draw) override;
    /// Counts the calls of each point.
    float NextRandomNumber(unsigned int point) override;
    QxRGBColor AmbientAt(const QxVector3& position, unsigned int point) override;

private:
    template <class Result, class... Arguments>
    Result Ask(Result (QxShaderSupport::*question)(Arguments...), Result neutral,
               Arguments... arguments);
    template <class Query, class... Results>
    void AskGrid(void (QxShaderSupport::*question)(const QxGridQueries<Query>&, Results*...),
                 const QxGridQueries<Query>& asked, Results*... results);
    template <class... Arguments>
    void Tell(void (QxShaderSupport::*question)(Arguments...), Arguments... arguments);
    void Count();

    QxShaderSupport& m_answers;
    QxFileHandles& m_files;
    std::exception_ptr m_error;
    unsigned long m_asked = 0;  // since then
    QxDraws m_draws;
};
