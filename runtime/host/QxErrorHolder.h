#pragma once

#include <exception>
#include <utility>

#include "QxShaderSupport.h"
#include "kernels/QxFileHandles.h"

/// Forwards the questions of a shared object to the host, and holds an exception that an answer
/// throws until the shader has returned. The shader frees its locals only when it returns, so an
/// exception that passed through it would leak them.
///
/// After an error the host gets no more questions, and the shader gets neutral answers; a random
/// number is the next one of a stream. A shader that keeps asking may never return, so after very
/// many more questions the error is thrown through it.
///
/// Questions about files and rays for one point are forwarded as questions for a grid, so that a
/// host needs to override only one of the two forms.
class QxErrorHolder : public QxShaderSupport {
public:
    /// `answers` and `files` must outlive the object. `firstDraw` is the initial value of the count
    /// of `random` calls of each point.
    QxErrorHolder(QxShaderSupport& answers, QxFileHandles& files, unsigned int firstDraw = 0)
        : m_answers(answers),
          m_files(files)
    {
        m_draws.Start(firstDraw);
    }

    /// Throws the stored error, if there is one, and forgets it. Must be called when the shader has
    /// returned.
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
    /// Counts the calls for each point, and returns the random number of that count.
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
    void Forward(void (QxShaderSupport::*question)(Arguments...), Arguments... arguments);
    void CountQuestionAfterError();

    QxShaderSupport& m_answers;
    QxFileHandles& m_files;
    std::exception_ptr m_error;
    unsigned long m_askedSinceError = 0;
    QxDraws m_draws;
};
