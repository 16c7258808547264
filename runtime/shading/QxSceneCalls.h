#pragma once

#include "QxCalls.h"

// Built-in functions that query the renderer: textures, environments, shadows and messages. The
// compiler passes all arguments in a fixed order, with default values for omitted ones. These
// functions convert them to queries of `QxShaderSupport`. Textures and `filterstep` also need the
// footprint of each point, which is computed here.

/// Stores the color with which the renderer answers; in a float, its red component.
inline void QxAnswer(float& result, const QxRGBColor& color)
{
    result = color.r;
}

inline void QxAnswer(QxRGBColor& result, const QxRGBColor& color)
{
    result = color;
}

/// Returns the name of the file if it is uniform, and an empty text for a null name; null if each
/// point has a separate name.
inline const char* QxNameOfAll(const char* name)
{
    return QxOrEmpty(name);
}

inline const char* QxNameOfAll(const char* const*)
{
    return nullptr;
}

/// Base of the functions that access files; `Query` is the type of the query of one point.
template <class Query>
class QxFileCall : public QxQuestion {
public:
    using Asked = QxGridQueries<Query>;
    using Answers = QxArray<QxRGBColor>;

    QxFileCall(QxShaderSupport* support, QxFileKind kind) : m_support(support), m_kind(kind) {}

    template <class Name, class... Rest>
    const void* File(const Name& name, const Rest&...) const
    {
        const char* const text = QxNameOfAll(name);
        return text ? m_support->FindFile(m_kind, text) : nullptr;
    }
    template <class Result, class... Arguments>
    static void Give(const Answers& answers, unsigned int k, Result& result, const Arguments&...)
    {
        QxAnswer(result, answers[k]);
    }

protected:
    template <class Result>
    static Result As(const QxRGBColor& color)
    {
        Result result;
        QxAnswer(result, color);
        return result;
    }

    QxShaderSupport* m_support;

private:
    QxFileKind m_kind;
};

/// `texture`: the query is the area between four corners in a file; the answer is a float or a
/// color.
template <class Result>
class QxTextureCall : public QxFileCall<QxTextureQuery> {
public:
    explicit QxTextureCall(QxShaderSupport* support) : QxFileCall(support, QxFileKind::Texture) {}

    static QxTextureQuery Query(const char* name, float channel, float s1, float t1, float s2,
                                float t2, float s3, float t3, float s4, float t4, float fidelity,
                                float samples, float sBlur, float tBlur, float sWidth, float tWidth,
                                const char* filter, float fill, float lerp)
    {
        return {
            QxOrEmpty(name), channel, {s1, s2, s3, s4}, {t1, t2, t3, t4},  fidelity, samples, sBlur,
            tBlur,           sWidth,  tWidth,           QxOrEmpty(filter), fill,     lerp};
    }
    template <class... Arguments>
    Result operator()(const Arguments&... arguments) const
    {
        return this->template As<Result>(m_support->Texture(Query(arguments...)));
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->TextureOverGrid(asked, answers.Data());
    }
};

/// Creates a query from the corners of an area, and the other arguments that calls for environments
/// and shadows have in common.
inline QxPointsQuery QxMakePointsQuery(const char* name, float channel, const QxVector3& p1,
                                       const QxVector3& p2, const QxVector3& p3,
                                       const QxVector3& p4, float fidelity, float samples,
                                       float sBlur, float tBlur, float sWidth, float tWidth,
                                       const char* filter)
{
    QxPointsQuery query = {};
    query.name = QxOrEmpty(name);
    query.channel = channel;
    query.points[0] = p1;
    query.points[1] = p2;
    query.points[2] = p3;
    query.points[3] = p4;
    query.fidelity = fidelity;
    query.samples = samples;
    query.sBlur = sBlur;
    query.tBlur = tBlur;
    query.sWidth = sWidth;
    query.tWidth = tWidth;
    query.filter = QxOrEmpty(filter);
    return query;
}

/// `environment`: the query is the area between four directions.
template <class Result>
class QxEnvironmentCall : public QxFileCall<QxPointsQuery> {
public:
    explicit QxEnvironmentCall(QxShaderSupport* support)
        : QxFileCall(support, QxFileKind::Environment)
    {
    }

    static QxPointsQuery Query(const char* name, float channel, const QxVector3& p1,
                               const QxVector3& p2, const QxVector3& p3, const QxVector3& p4,
                               float fidelity, float samples, float sBlur, float tBlur,
                               float sWidth, float tWidth, const char* filter, float lerp,
                               float fill)
    {
        QxPointsQuery query = QxMakePointsQuery(name, channel, p1, p2, p3, p4, fidelity, samples,
                                                sBlur, tBlur, sWidth, tWidth, filter);
        query.lerp = lerp;
        query.fill = fill;
        return query;
    }
    template <class... Arguments>
    Result operator()(const Arguments&... arguments) const
    {
        return this->template As<Result>(m_support->Environment(Query(arguments...)));
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->EnvironmentOverGrid(asked, answers.Data());
    }
};

/// `shadow` and, with the corners of an area light, `areashadow`.
template <class Result>
class QxShadowCall : public QxFileCall<QxPointsQuery> {
public:
    QxShadowCall(QxShaderSupport* support, bool inLight)
        : QxFileCall(support, QxFileKind::Shadow),
          m_inLight(inLight)
    {
    }

    QxPointsQuery Query(const char* name, float channel, const QxVector3& p1, const QxVector3& p2,
                        const QxVector3& p3, const QxVector3& p4, float fidelity, float samples,
                        float sBlur, float tBlur, float sWidth, float tWidth, const char* filter,
                        float bias) const
    {
        QxPointsQuery query = QxMakePointsQuery(name, channel, p1, p2, p3, p4, fidelity, samples,
                                                sBlur, tBlur, sWidth, tWidth, filter);
        query.bias = bias;
        query.inLight = m_inLight;
        return query;
    }
    QxPointsQuery Query(const char* name, float channel, const QxVector3& p1, const QxVector3& p2,
                        const QxVector3& p3, const QxVector3& p4, float fidelity, float samples,
                        float sBlur, float tBlur, float sWidth, float tWidth, const char* filter,
                        float bias, float sourceCount, const QxVector3& q1, const QxVector3& q2,
                        const QxVector3& q3, const QxVector3& q4) const
    {
        QxPointsQuery query = Query(name, channel, p1, p2, p3, p4, fidelity, samples, sBlur, tBlur,
                                    sWidth, tWidth, filter, bias);
        query.sourceCount = QxToInt(sourceCount, 0, 4);
        query.sources[0] = q1;
        query.sources[1] = q2;
        query.sources[2] = q3;
        query.sources[3] = q4;
        return query;
    }
    template <class... Arguments>
    Result operator()(const Arguments&... arguments) const
    {
        return this->template As<Result>(m_support->Shadow(Query(arguments...)));
    }
    void Ask(const Asked& asked, Answers& answers) const
    {
        m_support->ShadowOverGrid(asked, answers.Data());
    }

private:
    bool m_inLight;
};

// Footprints: the area that a shading point covers. With a condition, values at inactive points do
// not affect the results.

/// The values and their changes at each point, from which the corners of its footprint follow.

template <class Value>
class QxPatch {
public:
    template <class Operand, class Where>
    QxPatch(const Operand& operand, const QxGrid& grid, const Where& where)
        : m_center(grid.Size()),
          m_alongU(grid.Size()),
          m_alongV(grid.Size())
    {
        for (unsigned int i = 0; i < grid.Size(); ++i)
            m_center[i] = QxAt(operand, i);
        QxDifferences(m_alongU.Data(), m_center.Data(), grid, QxGridAxis::U, where);
        QxDifferences(m_alongV.Data(), m_center.Data(), grid, QxGridAxis::V, where);
    }
    /// `u` and `v` are -1 or 1 and select the corner.
    Value Corner(unsigned int point, float u, float v) const
    {
        return m_center[point] + m_alongU[point] * (0.5f * u) + m_alongV[point] * (0.5f * v);
    }
    const Value& AlongU(unsigned int point) const { return m_alongU[point]; }
    const Value& AlongV(unsigned int point) const { return m_alongV[point]; }

private:
    QxArray<Value> m_center;
    QxArray<Value> m_alongU;
    QxArray<Value> m_alongV;
};

/// Never called: denotes the type of a value without reference and `const`.
template <class Value>
Value QxValueOf(const Value&);

/// Computes the four corners at each active point, in order around it.
template <class Where, class Operand, class Result>
inline void QxPatchCorners(const QxGrid& grid, const Where& where, const Operand& p, Result&& p1,
                           Result&& p2, Result&& p3, Result&& p4)
{
    using Value = decltype(QxValueOf(QxAt(p, 0u)));
    const QxPatch<Value> patch(p, grid, where);
    for (unsigned int i = 0; i < grid.Size(); ++i) {
        if (!where(i))
            continue;
        QxAt(p1, i) = patch.Corner(i, -1, -1);
        QxAt(p2, i) = patch.Corner(i, 1, -1);
        QxAt(p3, i) = patch.Corner(i, 1, 1);
        QxAt(p4, i) = patch.Corner(i, -1, 1);
    }
}

/// Returns the second sample of `filterstep`, which encodes the length of an interval around the
/// first one, see `QxIntervalAround`. The arguments are the changes of the first sample.
inline float QxFilterStepEnd(float alongU, float alongV)
{
    return QxIntervalAround(qxmath::Abs(alongU) + qxmath::Abs(alongV));
}

/// Computes `s2` at each active point: the interval around `s1` that the point covers, encoded for
/// `QxFilterStepOf`.
template <class Where, class Result, class Operand>
inline void QxFilterStepEnds(const QxGrid& grid, const Where& where, Result&& s2, const Operand& s1)
{
    const QxPatch<float> patch(s1, grid, where);
    for (unsigned int i = 0; i < grid.Size(); ++i)
        if (where(i))
            QxAt(s2, i) = QxFilterStepEnd(patch.AlongU(i), patch.AlongV(i));
}

// Messages.

// `QxAddress` returns the address of the value of a message: of a text, of an array or the values
// of all points, or of one number or triple.
inline void* QxAddress(const char*& text)
{
    return &text;
}

template <class Value>
inline void* QxAddress(Value* values)
{
    return values;
}

template <class Value>
inline void* QxAddress(Value& value)
{
    return &value;
}

/// Sends a message for the points that `where` selects, even if there are none. Returns 1 if there
/// is an answer, else 0. `texture` is for `textureinfo`, otherwise empty. `light` is the number of
/// the light that `lightsource` asks.
template <class Where>
inline float QxSendMessage(QxShaderSupport* support, QxMessage message, const char* texture,
                           const char* name, void* value, float varying, float type, float length,
                           unsigned int points, const Where& where, unsigned int light = 0)
{
    QxArray<char> handled(points);
    for (unsigned int i = 0; i < points; ++i)
        handled[i] = where(i);
    const QxMessageValue target = {static_cast<QxValueType>(static_cast<int>(type)),
                                   varying != 0,
                                   static_cast<std::size_t>(length),
                                   value,
                                   points,
                                   handled.Data()};
    const bool answered =
        message == QxMessage::LightSource
            ? support->LightMessage(light, QxOrEmpty(name), target)
            : support->Message(message, QxOrEmpty(texture), QxOrEmpty(name), target);
    return answered ? 1.0f : 0.0f;
}

/// Stores `answer`, the result of `QxSendMessage`, if the condition holds at any point.
template <class Where>
inline void QxTakeAnswer(float& result, float answer, unsigned int points, const Where& where)
{
    for (unsigned int i = 0; i < points; ++i)
        if (where(i)) {
            result = answer;
            return;
        }
}
