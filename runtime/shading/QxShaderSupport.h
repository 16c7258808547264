#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "QxDraws.h"
#include "QxNoise.h"
#include "QxShading.h"

/// The four corners of the patch that a shading point covers in a texture, and how to look. The
/// numbers are as the shader gave them: of any value, also no numbers.
struct QxTextureQuery {
    const char* name;    // as in the source; texts last for the call
    float channel;       // the first one to give, from 0
    float s[4];          // corners in turn around the patch, 0 to 1 across the texture
    float t[4];
    float fidelity;      // of the answer; 1 unless given
    float samples;       // 1 unless given
    float sBlur;         // width to blur over, as a share of the texture
    float tBlur;
    float sWidth;        // factor of the patch's size; 1 unless given
    float tWidth;
    const char* filter;  // "gaussian" unless given
    float fill;          // what a channel holds that the texture lacks
    float lerp;          // 1: blend between two sizes of the texture
};

/// The same for an environment, by directions, and for a shadow, by places in the current space.
struct QxPointsQuery {
    const char* name;
    float channel;
    QxVector3 points[4];   // directions need no unit length
    float fidelity;
    float samples;
    float sBlur;
    float tBlur;
    float sWidth;
    float tWidth;
    const char* filter;
    float lerp;            // environment
    float fill;            // environment
    float bias;            // shadow: distance within which nothing shades itself
    int sourceCount;       // area shadow: how many of the corners of the light are given
    QxVector3 sources[4];  // area shadow
    bool inLight;          // asked by a light shader
};

/// What rays into the scene are asked for at a point, in the current space. The fields that a query
/// has no use for are 0.
struct QxRayQuery {
    QxVector3 position;
    QxVector3 direction;      // of any length; or the other end, for a transmission
    float samples;            // 0: the renderer's own choice
    float angle;              // of the cone of directions; -1: the renderer's own choice
    float bias;               // distance from the position at which a ray begins
    float maxDistance;        // what lies beyond it is not hit; 0: no limit
    float variance;           // how far an answer may be off; 0: the renderer's own choice
    const char* environment;  // name of a map for what rays miss; empty for none
    QxVector3 axis;           // of the directions; null: the normal
};

/// A value that a message asks for, and where it goes.
struct QxMessageValue {
    QxValueType type;
    bool varying;
    std::size_t length;   // array elements
    void* value;          // as in a shader's storage: element j of point p at j * points + p
    std::size_t points;   // 1 for a uniform value
    const char* handled;  // by point, whether the message asks for it

    /// Copies a value of each point, laid out as `value` is, to the handled points. Texts that are
    /// null count as empty.
    void StoreForEachPoint(const void* source) const
    {
        const std::size_t floats = QxFloatCount(type);
        for (std::size_t place = 0; place < length * points; ++place)
            if (handled[place % points])
                StoreElement(source, place, place, floats);
    }
    /// Copies a value of all array elements, floats or strings by type, to the handled points.
    void Store(const void* source) const
    {
        const std::size_t floats = QxFloatCount(type);
        for (std::size_t element = 0; element < length; ++element)
            for (std::size_t point = 0; point < points; ++point)
                if (handled[point])
                    StoreElement(source, element, element * points + point, floats);
    }

private:
    void StoreElement(const void* source, std::size_t element, std::size_t place,
                      std::size_t floats) const
    {
        if (type == QxValueType::String) {
            const char*& text = static_cast<const char**>(value)[place];
            std::free(const_cast<char*>(text));
            const char* const given = static_cast<const char* const*>(source)[element];
            text = strdup(given ? given : "");
        } else {
            const float* from = static_cast<const float*>(source) + element * floats;
            std::memcpy(static_cast<float*>(value) + place * floats, from, floats * sizeof(float));
        }
    }
};

/// Whom a message asks. `TextureInfo` names a texture too; `Incident` and `Opposite` are the volume
/// shaders on both sides of the surface.
enum class QxMessage {
    Attribute,
    Option,
    RendererInfo,
    Surface,
    Displacement,
    LightSource,
    Atmosphere,
    Incident,
    Opposite,
    TextureInfo,
};

/// Queries that points of a grid ask at once, in the order of the points. What it refers to is good
/// for the call alone.
template <class Query>
struct QxGridQueries {
    const void* file;            // what `FindFile` gave for the name of all; null: look at each name
    const Query* queries;
    const unsigned int* points;  // number of each point in the grid
    unsigned int count;
};

/// What the name of a file is looked up for.
enum class QxFileKind { Texture, Environment, Shadow };

/// The services of a renderer that shaders call: everything that needs a scene. Each has a
/// neutral answer, which describes an empty scene without files.
///
/// They are called in the thread that shades, while the shader waits. A built shader may ask all of
/// its questions for one point before the next point, byte-code asks one question for many points.
/// Texts and arrays that they are handed are good for the call alone.
class QxShaderSupport {
public:
    virtual ~QxShaderSupport() = default;

    /// Runs the lights for these positions, so many as the second number says, and fills the inputs
    /// of each of as many lights as the last one says. A shader asks for its `P` once, and again
    /// where it lights other places or has moved its points. Neutral: leaves them.
    virtual void EvaluateLights(const QxVector3*, unsigned int, QxLightInput*, unsigned int) {}
    /// Light that comes from everywhere. Neutral: none.
    virtual QxRGBColor Ambient(const QxVector3&) { return {0, 0, 0}; }
    /// The same for many positions at once. Neutral: asks for each in turn.
    virtual void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                 QxRGBColor* results)
    {
        for (unsigned int i = 0; i < points; ++i)
            results[i] = AmbientAt(positions[i], i);
    }

    /// What a patch of a texture or environment holds; where a number is wanted, red is taken.
    /// Neutral: as bright as the fill value says, 0 unless given.
    virtual QxRGBColor Texture(const QxTextureQuery& query) { return Gray(query.fill); }
    virtual QxRGBColor Environment(const QxPointsQuery& query) { return Gray(query.fill); }
    /// How much of the light is kept off, from 0 for none to 1 for all. Neutral: nothing.
    virtual QxRGBColor Shadow(const QxPointsQuery&) { return Gray(0); }

    /// Distance to what the ray hits, or a negative number. Neutral: it hits nothing.
    virtual float RayHit(const QxRayQuery&) { return -1; }
    /// The color that the ray brings, and the distance to what it hits. Neutral: black.
    virtual QxRGBColor Trace(const QxRayQuery&, float& distance)
    {
        distance = -1;
        return Gray(0);
    }
    /// How much light passes between two places. Neutral: all.
    virtual QxRGBColor Transmission(const QxRayQuery&) { return Gray(1); }
    /// The covered share of the hemisphere. Neutral: none; the open direction is the one asked.
    virtual float Occlusion(const QxRayQuery& query, QxVector3& openDirection)
    {
        openDirection = query.direction;
        return 0;
    }
    /// Light that other surfaces scatter to the position, and what `Occlusion` gives. Neutral:
    /// black.
    virtual QxRGBColor IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                                       float& occlusion)
    {
        openDirection = query.direction;
        occlusion = 0;
        return Gray(0);
    }
    /// About the ray that this shading answers. Neutral: one from the camera.
    virtual bool IsShadowRay() { return false; }
    virtual bool IsIndirectRay() { return false; }
    virtual float RayLevel() { return 0; }

    /// Fills the value and returns whether it could. The first text is the texture of `textureinfo` and
    /// else empty, the second the name of what is asked for. Neutral: nothing is known.
    virtual bool Message(QxMessage, const char*, const char*, const QxMessageValue&)
    {
        return false;
    }
    /// Distance from the camera between the clipping planes, 0 to 1. Neutral: 0.
    virtual float Depth(const QxVector3&) { return 0; }

    /// A number from 0 up to, but not including, 1: the next one of a host that has its own generator.
    /// Neutral: within `RandomNumber` what that has computed, else the next one of a stream.
    virtual float Random() { return m_isDrawn ? m_drawn : m_random.Next(); }
    /// What `printf` writes. Neutral: to standard output.
    virtual void Print(const char* text) { std::fputs(text, stdout); }
    /// A fault of the shader. Neutral: to standard error.
    virtual void Report(const char* text) { std::fprintf(stderr, "%s\n", text); }

    // What follows came later: new functions go to the end, where shared objects that were built
    // before do not look for others.

    /// What `Message` does for `lightsource`, with the number among the lights that
    /// `EvaluateLights` filled: that of the loop over lights which asks. What asks outside of such a loop
    /// has a number without meaning, which may be as high as any. Neutral: asks `Message`.
    virtual bool LightMessage(unsigned int, const char* name, const QxMessageValue& value)
    {
        return Message(QxMessage::LightSource, "", name, value);
    }

    // Questions for a whole grid, asked once for all points of a call. A shared object that was
    // compiled without optimization asks for one point at a time, with the number 0. A host answers
    // in the form that it likes. Neutral: each point's question is asked by itself, with the
    // functions above. Results have the order of the queries.

    /// What stands for the name of a file in the queries of a grid. An instance asks once for each
    /// name, see `QxHostScene::ForgetFiles`. Neutral: null.
    virtual const void* FindFile(QxFileKind, const char*) { return nullptr; }
    virtual void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Texture(asked.queries[i]);
    }
    virtual void EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked,
                                     QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Environment(asked.queries[i]);
    }
    virtual void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Shadow(asked.queries[i]);
    }
    /// Fills the distances too.
    virtual void TraceOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results,
                               float* distances)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Trace(asked.queries[i], distances[i]);
    }
    virtual void TransmissionOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Transmission(asked.queries[i]);
    }
    /// Fills the open directions too.
    virtual void OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* results,
                                   QxVector3* openDirections)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Occlusion(asked.queries[i], openDirections[i]);
    }

    // Numbers for `random`. Each point counts its calls from 0 in each run; a call whose result is uniform
    // belongs to the point `QxDraws::k_allPoints`.

    /// Asked by byte-code, and for shared objects by the host library. Neutral: asks `Random`, which
    /// gives the number of this point and call if it is neutral too.
    virtual float RandomNumber(unsigned int point, unsigned int draw)
    {
        return Offer(0, {static_cast<int>(draw), static_cast<int>(point)});
    }
    /// Asked by a shared object, which does not count. Neutral: asks `Random`.
    virtual float NextRandomNumber(unsigned int) { return Random(); }

    /// `Ambient` for a point of the grid, by its position and number. Neutral: asks that.
    virtual QxRGBColor AmbientAt(const QxVector3& position, unsigned int)
    {
        return Ambient(position);
    }

    // More questions for a whole grid, as those above.

    virtual void RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* distances)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            distances[i] = RayHit(asked.queries[i]);
    }
    /// Fills the open directions and what `Occlusion` gives, too.
    virtual void IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked,
                                         QxRGBColor* results, QxVector3* openDirections,
                                         float* occlusions)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = IndirectDiffuse(asked.queries[i], openDirections[i], occlusions[i]);
    }

protected:
    /// Asks `Random`, which, if it is neutral, gives the number of the place.
    template <int n>
    float Offer(unsigned int seed, const int (&place)[n])
    {
        m_drawn = QxRandomNumber(seed, place);
        m_isDrawn = true;
        const float number = Random();
        m_isDrawn = false;
        return number;
    }

private:
    static QxRGBColor Gray(float value) { return {value, value, value}; }

    QxRandomStream m_random;
    float m_drawn = 0;
    bool m_isDrawn = false;  // `Random` is asked for it
};
