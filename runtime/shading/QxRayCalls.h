#pragma once

#include "QxForms.h"
#include "QxShaderSupport.h"

// Queries about rays, for one point or for all active points of a grid. The latter are sent to the
// host by `QxAskOverGrid`, which also sends the queries about files of QxSceneCalls.h.

// `QxGive` stores a value in an output argument. For one that a call omits, generated code contains
// the constant 0, to which nothing is written.

inline void QxGive(float& output, float value)
{
    output = value;
}

inline void QxGive(QxVector3& output, const QxVector3& value)
{
    output = value;
}

template <class Value>
inline void QxGive(float&&, const Value&)
{
}

/// Computes result = call(arguments...) for each active point, by one question to the host. If the
/// grid has one point, the call itself asks. Otherwise its members are used: `Query` creates the
/// query of one point, `File` returns the handle for the name of a file, or null, `Answers` is
/// memory for the answers of several points, `Ask` gets the answers from the host, and `Give`
/// stores the answers of a point in its result and output arguments.
template <class Where, class Call, class Result, class... Arguments>
inline void QxAskOverGrid(unsigned int points, const Where& where, const Call& call,
                          Result&& result, Arguments&&... arguments)
{
    if (points == 1) {  // needs no memory
        if (where(0))
            QxAt(result, 0u) = call(QxAt(arguments, 0u)...);
        return;
    }
    QxArray<decltype(call.Query(QxAt(arguments, 0u)...))> queries(points);
    QxArray<unsigned int> numbers(points);
    unsigned int count = 0;
    for (unsigned int i = 0; i < points; ++i) {
        if (!where(i))
            continue;
        queries[count] = call.Query(QxAt(arguments, i)...);
        numbers[count++] = i;
    }
    if (count == 0)
        return;
    typename Call::Answers answers(count);
    call.Ask({call.File(arguments...), queries.Data(), numbers.Data(), count}, answers);
    for (unsigned int k = 0; k < count; ++k)
        call.Give(answers, k, QxAt(result, numbers[k]), QxAt(arguments, numbers[k])...);
}

/// Base of the functions that send rays. `Query` is for functions whose arguments are two vectors:
/// the other fields of the query are 0 or empty.
class QxRayCall : public QxQuestion {
public:
    using Asked = QxGridQueries<QxRayQuery>;

    explicit QxRayCall(QxShaderSupport* support) : m_support(support) {}

    template <class... Outputs>
    static QxRayQuery Query(const QxVector3& position, const QxVector3& direction, Outputs&&...)
    {
        QxRayQuery query = {};
        query.position = position;
        query.direction = direction;
        query.environment = "";
        return query;
    }
    template <class... Arguments>
    static const void* File(const Arguments&...)
    {
        return nullptr;
    }

protected:
    QxShaderSupport* m_support;
};

/// `trace` as a float: the distance to the hit, which is negative if nothing is hit.
struct QxRayHitCall : QxRayCall {
    using QxRayCall::QxRayCall;
    using Answers = QxArray<float>;

    float operator()(const QxVector3& position, const QxVector3& direction) const
    {
        return m_support->RayHit(Query(position, direction));
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->RayHitOverGrid(asked, answers.Data());
    }
    static void Give(const Answers& answers, unsigned int k, float& result, const QxVector3&,
                     const QxVector3&)
    {
        result = answers[k];
    }
};

/// `transmission`: the fraction of light that passes between two points.
struct QxTransmissionCall : QxRayCall {
    using QxRayCall::QxRayCall;
    using Answers = QxArray<QxRGBColor>;

    QxRGBColor operator()(const QxVector3& from, const QxVector3& to) const
    {
        return m_support->Transmission(Query(from, to));
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->TransmissionOverGrid(asked, answers.Data());
    }
    static void Give(const Answers& answers, unsigned int k, QxRGBColor& result, const QxVector3&,
                     const QxVector3&)
    {
        result = answers[k];
    }
};

/// `trace` as a color; stores the distance, which is negative if nothing is hit, in `output`.
struct QxTraceCall : QxRayCall {
    using QxRayCall::QxRayCall;
    struct Answers {
        explicit Answers(unsigned int count) : colors(count), distances(count) {}
        QxArray<QxRGBColor> colors;
        QxArray<float> distances;
    };

    template <class Distance>
    QxRGBColor operator()(const QxVector3& position, const QxVector3& direction,
                          Distance&& output) const
    {
        float distance = 0;
        const QxRGBColor color = m_support->Trace(Query(position, direction), distance);
        QxGive(static_cast<Distance&&>(output), distance);
        return color;
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->TraceOverGrid(asked, answers.colors.Data(), answers.distances.Data());
    }
    template <class Distance>
    static void Give(const Answers& answers, unsigned int k, QxRGBColor& result, const QxVector3&,
                     const QxVector3&, Distance&& output)
    {
        result = answers.colors[k];
        QxGive(static_cast<Distance&&>(output), answers.distances[k]);
    }
};

/// The answers to queries about the hemispheres over `count` points. Before the renderer is asked,
/// `Ask` sets each open direction to the normal.
struct QxHemisphereAnswers {
    explicit QxHemisphereAnswers(unsigned int count)
        : colors(count),
          directions(count),
          occlusions(count)
    {
    }
    QxArray<QxRGBColor> colors;  // only for `indirectdiffuse`
    QxArray<QxVector3> directions;
    QxArray<float> occlusions;
};

/// `occlusion`. Stores the mean open direction in `output`.
struct QxOcclusionCall : QxRayCall {
    using QxRayCall::QxRayCall;
    using Answers = QxHemisphereAnswers;

    template <class Axis, class Open>
    static QxRayQuery Query(const QxVector3& position, const QxVector3& normal, float samples,
                            float angle, float bias, float maxDistance, float variance,
                            const Axis& axis, Open&&)
    {
        return {position, normal, samples, angle, bias, maxDistance, variance, "", QxToPoint(axis)};
    }
    template <class Axis, class Open>
    float operator()(const QxVector3& position, const QxVector3& normal, float samples, float angle,
                     float bias, float maxDistance, float variance, const Axis& axis,
                     Open&& output) const
    {
        const QxRayQuery query =
            Query(position, normal, samples, angle, bias, maxDistance, variance, axis, output);
        QxVector3 open = normal;
        const float occlusion = m_support->Occlusion(query, open);
        QxGive(static_cast<Open&&>(output), open);
        return occlusion;
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        for (unsigned int k = 0; k < asked.count; ++k)
            answers.directions[k] = asked.queries[k].direction;
        m_support->OcclusionOverGrid(asked, answers.occlusions.Data(), answers.directions.Data());
    }
    template <class Axis, class Open>
    static void Give(const Answers& answers, unsigned int k, float& result, const QxVector3&,
                     const QxVector3&, float, float, float, float, float, const Axis&,
                     Open&& output)
    {
        result = answers.occlusions[k];
        QxGive(static_cast<Open&&>(output), answers.directions[k]);
    }
};

/// `indirectdiffuse`. Stores the mean open direction and the occlusion in the outputs.
struct QxIndirectDiffuseCall : QxRayCall {
    using QxRayCall::QxRayCall;
    using Answers = QxHemisphereAnswers;

    template <class Environment, class Axis, class Open, class Occlusion>
    static QxRayQuery Query(const QxVector3& position, const QxVector3& normal, float samples,
                            float angle, float bias, float maxDistance, float variance,
                            const Environment& environment, const Axis& axis, Open&&, Occlusion&&)
    {
        return {position,    normal,   samples,           angle,          bias,
                maxDistance, variance, Text(environment), QxToPoint(axis)};
    }
    template <class Environment, class Axis, class Open, class Occlusion>
    QxRGBColor operator()(const QxVector3& position, const QxVector3& normal, float samples,
                          float angle, float bias, float maxDistance, float variance,
                          const Environment& environment, const Axis& axis, Open&& openOutput,
                          Occlusion&& occlusionOutput) const
    {
        const QxRayQuery query = Query(position, normal, samples, angle, bias, maxDistance,
                                       variance, environment, axis, openOutput, occlusionOutput);
        QxVector3 open = normal;
        float occlusion = 0;
        const QxRGBColor color = m_support->IndirectDiffuse(query, open, occlusion);
        QxGive(static_cast<Open&&>(openOutput), open);
        QxGive(static_cast<Occlusion&&>(occlusionOutput), occlusion);
        return color;
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        for (unsigned int k = 0; k < asked.count; ++k)
            answers.directions[k] = asked.queries[k].direction;
        m_support->IndirectDiffuseOverGrid(asked, answers.colors.Data(), answers.directions.Data(),
                                           answers.occlusions.Data());
    }
    template <class Environment, class Axis, class Open, class Occlusion>
    static void Give(const Answers& answers, unsigned int k, QxRGBColor& result, const QxVector3&,
                     const QxVector3&, float, float, float, float, float, const Environment&,
                     const Axis&, Open&& openOutput, Occlusion&& occlusionOutput)
    {
        result = answers.colors[k];
        QxGive(static_cast<Open&&>(openOutput), answers.directions[k]);
        QxGive(static_cast<Occlusion&&>(occlusionOutput), answers.occlusions[k]);
    }

private:
    static const char* Text(const char* text) { return QxOrEmpty(text); }
    static const char* Text(float) { return ""; }
};
