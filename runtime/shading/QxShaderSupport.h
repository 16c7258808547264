#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "QxDraws.h"
#include "QxNoise.h"
#include "QxShading.h"

/// A texture look-up: the four corners of the patch that a shading point covers, and the options of
/// the call. Numbers come from the shader unchecked: they may have any value, including NaN.
struct QxTextureQuery {
    const char* name;  // as in the source; texts are valid during the call
    float channel;     // the first channel to return, from 0
    float s[4];        // corners in order around the patch; 0 to 1 spans the texture
    float t[4];
    float fidelity;  // of the result; 1 by default
    float samples;   // 1 by default
    float sBlur;     // width of the blur, as a fraction of the texture
    float tBlur;
    float sWidth;  // factor for the size of the patch; 1 by default
    float tWidth;
    const char* filter;  // "gaussian" by default
    float fill;          // value of channels that the texture lacks
    float lerp;          // 1: blend between two sizes of the texture
};

/// A look-up in an environment, by directions, or in a shadow, by positions in the current space.
struct QxPointsQuery {
    const char* name;
    float channel;
    QxVector3 points[4];  // directions need no unit length
    float fidelity;
    float samples;
    float sBlur;
    float tBlur;
    float sWidth;
    float tWidth;
    const char* filter;
    float lerp;            // environment
    float fill;            // environment
    float bias;            // shadow: distance within which a surface does not shadow itself
    int sourceCount;       // area shadow: number of corners of the light in `sources`
    QxVector3 sources[4];  // area shadow
    bool inLight;          // called by a light shader
};

/// A question about rays from a point, in the current space. Fields that do not apply to the
/// function are 0 or empty. `direction` is the other position for `transmission`, and the normal
/// for `occlusion` and `indirectdiffuse`.
struct QxRayQuery {
    QxVector3 position;
    QxVector3 direction;      // of any length
    float samples;            // 0: the renderer's own choice
    float angle;              // of the cone of directions; -1: the renderer's own choice
    float bias;               // distance from the position at which a ray starts
    float maxDistance;        // surfaces beyond it are not hit; 0: no limit
    float variance;           // acceptable error of the result; 0: the renderer's own choice
    const char* environment;  // name of a map for rays that hit nothing; empty for none
    QxVector3 axis;           // of the cone of directions; zero: the normal
};

/// The value that a message asks for: its type, and the memory to store it in.
struct QxMessageValue {
    QxValueType type;
    bool varying;
    std::size_t length;   // array elements
    void* value;          // element j of point p is at j * points + p
    std::size_t points;   // 1 for a uniform value
    const char* handled;  // for each point, whether it receives the value

    /// Copies a value for each point, in the layout of `value`, to the handled points. Null texts
    /// are copied as empty ones.
    void StoreForEachPoint(const void* source) const
    {
        const std::size_t floats = QxFloatCount(type);
        for (std::size_t place = 0; place < length * points; ++place)
            if (handled[place % points])
                StoreElement(source, place, place, floats);
    }
    /// Copies one value with all its array elements, floats or strings, to all handled points.
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

/// The receiver of a message. A message to `TextureInfo` also names a texture. `Incident` and
/// `Opposite` are the volume shaders on the two sides of the surface.
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

/// The queries of several points of a grid, in the order of the points. All pointers except `file`
/// are valid only during the call.
template <class Query>
struct QxGridQueries {
    const void* file;  // result of `FindFile`; null, also if the names may differ: use the names
    const Query* queries;
    const unsigned int* points;  // number of each point in the grid
    unsigned int count;
};

/// The purpose of a file that is looked up by name.
enum class QxFileKind { Texture, Environment, Shadow };

/// The services of a renderer that shaders call: everything that needs a scene, and random numbers,
/// printing and reports. Each function has a neutral answer, that of an empty scene without files.
///
/// The functions are called in the thread that shades, while the shader waits. A shared object may
/// ask all its questions for one point before those for the next; byte-code asks most questions for
/// many points. Texts and arrays in the arguments are valid only during the call.
class QxShaderSupport {
public:
    virtual ~QxShaderSupport() = default;

    /// Evaluates lights. Arguments: positions, their number, the inputs to fill for each light, and
    /// the number of lights. A shader calls it when it first needs the lights at its `P`, for each
    /// loop over the lights at other positions, and for `P` again after such a loop or after it has
    /// moved its points. Neutral: leaves the inputs unchanged.
    virtual void EvaluateLights(const QxVector3*, unsigned int, QxLightInput*, unsigned int) {}
    /// Returns the ambient light at a position. Neutral: none.
    virtual QxRGBColor Ambient(const QxVector3&) { return {0, 0, 0}; }
    /// Fills the ambient light at many positions. Neutral: calls `AmbientAt` for each.
    virtual void AmbientOverGrid(const QxVector3* positions, unsigned int points,
                                 QxRGBColor* results)
    {
        for (unsigned int i = 0; i < points; ++i)
            results[i] = AmbientAt(positions[i], i);
    }

    /// Returns the color of a patch of a texture or environment; a shader that asks for a float
    /// gets its red component. Neutral: gray with the fill value, 0 by default.
    virtual QxRGBColor Texture(const QxTextureQuery& query) { return Gray(query.fill); }
    virtual QxRGBColor Environment(const QxPointsQuery& query) { return Gray(query.fill); }
    /// Returns how much of the light is blocked, from 0 for none to 1 for all; a shader that asks
    /// for a float gets the red component. Neutral: none.
    virtual QxRGBColor Shadow(const QxPointsQuery&) { return Gray(0); }

    /// Returns the distance of the first hit, or a negative number for none. Neutral: no hit.
    virtual float RayHit(const QxRayQuery&) { return -1; }
    /// Returns the color seen along the ray and sets the distance of the hit, which is negative if
    /// there is none. Neutral: black, no hit.
    virtual QxRGBColor Trace(const QxRayQuery&, float& distance)
    {
        distance = -1;
        return Gray(0);
    }
    /// Returns how much light passes between two positions. Neutral: all.
    virtual QxRGBColor Transmission(const QxRayQuery&) { return Gray(1); }
    /// Returns the covered share of the hemisphere, and sets the mean uncovered direction. Neutral:
    /// 0, and the direction of the query.
    virtual float Occlusion(const QxRayQuery& query, QxVector3& openDirection)
    {
        openDirection = query.direction;
        return 0;
    }
    /// Returns the light that other surfaces scatter to the position, and sets both results of
    /// `Occlusion`. Neutral: black, and the neutral results of `Occlusion`.
    virtual QxRGBColor IndirectDiffuse(const QxRayQuery& query, QxVector3& openDirection,
                                       float& occlusion)
    {
        openDirection = query.direction;
        occlusion = 0;
        return Gray(0);
    }
    /// Properties of the ray for which the grid is shaded. Neutral: those of a camera ray.
    virtual bool IsShadowRay() { return false; }
    virtual bool IsIndirectRay() { return false; }
    virtual float RayLevel() { return 0; }

    /// Stores the value and returns true, or returns false if there is none. The first text is the
    /// texture for `textureinfo`, otherwise empty; the second names the value. Neutral: false.
    virtual bool Message(QxMessage, const char*, const char*, const QxMessageValue&)
    {
        return false;
    }
    /// Returns the depth of a position between the clipping planes, 0 to 1. Neutral: 0.
    virtual float Depth(const QxVector3&) { return 0; }

    /// Returns a number from 0 up to, but not including, 1. A host with its own generator overrides
    /// this function. Neutral: if `RandomNumber` calls it, the number that `RandomNumber` has
    /// computed; otherwise the next number of a stream.
    virtual float Random() { return m_isDrawn ? m_drawn : m_random.Next(); }
    /// Writes the text of `printf`. Neutral: to standard output.
    virtual void Print(const char* text) { std::fputs(text, stdout); }
    /// Reports an error of the shader at run time. Neutral: to standard error.
    virtual void Report(const char* text) { std::fprintf(stderr, "%s\n", text); }

    // The functions below were added later. New functions are added at the end, since existing
    // shared objects call functions by their position in the table of virtual functions.

    /// Answers `lightsource`, as `Message` does, for the light of that number among the inputs of
    /// `EvaluateLights`: the current light of a loop over lights. Outside such a loop the number
    /// has no meaning and may have any value. Neutral: calls `Message`.
    virtual bool LightMessage(unsigned int, const char* name, const QxMessageValue& value)
    {
        return Message(QxMessage::LightSource, "", name, value);
    }

    // Questions for a whole grid: a call in a shader asks once for all its points. Some calls in
    // shared objects, and all in those compiled without optimization, ask for one point at a time;
    // the host library passes such a question on as one for a grid, with point number 0. So a host
    // overrides either these functions or those for one point above. Neutral: calls the function
    // for one point for each query. Results are in the order of the queries.

    /// Returns a handle that replaces the name of a file in the queries of a grid. The host library
    /// stores the handles with the instance of the shader and calls this once for each name and
    /// kind, until `QxHostScene::ForgetFiles` is called. Neutral: null.
    virtual const void* FindFile(QxFileKind, const char*) { return nullptr; }
    virtual void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Texture(asked.queries[i]);
    }
    virtual void EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Environment(asked.queries[i]);
    }
    virtual void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* results)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Shadow(asked.queries[i]);
    }
    /// Also fills the distances.
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
    /// Also fills the open directions.
    virtual void OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* results,
                                   QxVector3* openDirections)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = Occlusion(asked.queries[i], openDirections[i]);
    }

    // Numbers for `random`. The draws of each point are counted from 0 in each run, except that
    // default values that are computed once for several runs are counted from
    // `QxDraws::k_ofDefaults`. A draw with a uniform result belongs to the point
    // `QxDraws::k_allPoints`.

    /// Returns the number of a point and draw. Called by byte-code, and by the host library for
    /// shared objects. Neutral: calls `Random`, which returns this number unless it is overridden.
    virtual float RandomNumber(unsigned int point, unsigned int draw)
    {
        return Offer(0, {static_cast<int>(draw), static_cast<int>(point)});
    }
    /// Returns the next number of a point. Called by shared objects, which do not count draws; the
    /// host library counts them and calls `RandomNumber`. Neutral: calls `Random`.
    virtual float NextRandomNumber(unsigned int) { return Random(); }

    /// As `Ambient`, for the point of the grid with this number. Neutral: calls `Ambient`.
    virtual QxRGBColor AmbientAt(const QxVector3& position, unsigned int)
    {
        return Ambient(position);
    }

    // More questions for a whole grid, like those above.

    virtual void RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* distances)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            distances[i] = RayHit(asked.queries[i]);
    }
    /// Also fills the open directions and occlusions.
    virtual void IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked,
                                         QxRGBColor* results, QxVector3* openDirections,
                                         float* occlusions)
    {
        for (unsigned int i = 0; i < asked.count; ++i)
            results[i] = IndirectDiffuse(asked.queries[i], openDirections[i], occlusions[i]);
    }

protected:
    /// Calls `Random`, which returns the random number of the place unless it is overridden.
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
    bool m_isDrawn = false;  // `Random` returns `m_drawn`
};
