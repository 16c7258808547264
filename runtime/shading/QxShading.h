#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "QxArray.h"
#include "QxMatrixMath.h"
#include "QxPattern.h"

// The interface between a host and a shared object; the machine for byte-code uses some of its
// classes. A shader only calls the registries of a host, so they are declared here without an
// implementation. The layout of these classes is part of the interface version: shared objects
// built with earlier headers of the same version must still run.

class QxShaderSupport;

/// A coordinate system: the two matrices between it and the current one.
struct QxFrame3D {
    QxMatrix44 toCurrent;
    QxMatrix44 fromCurrent;

    explicit QxFrame3D(const QxMatrix44& matrixToCurrent = QxMatrix44::Identity())
        : toCurrent(matrixToCurrent),
          fromCurrent(QxInverse(matrixToCurrent))
    {
    }
};

/// The coordinate systems of a host by name. Frames keep their addresses as long as the registry
/// exists.
class QxSpaceRegistry {
public:
    /// Returns the frame of a name, which may be defined later; until then the frame equals that of
    /// the current space.
    virtual const QxFrame3D* Reserve(const char* name) = 0;
    /// Returns the frame of a name, or that of the current space if the name is unknown; never
    /// null.
    virtual const QxFrame3D* Find(const char* name) const = 0;

protected:
    ~QxSpaceRegistry() = default;
};

/// The folders in which a host searches for shadeop libraries.
class QxSearchPath {
public:
    /// Returns the path of the first file of that name, which is valid until the next call; null if
    /// no folder contains one.
    virtual const char* Find(const char* file) const = 0;

protected:
    ~QxSearchPath() = default;
};

/// A name that host and shader share. The address of the token identifies the name.
struct QxToken {
    const char* name;
};

/// Gives each name one token.
class QxTokenRegistry {
public:
    /// Returns the token of a name, which exists as long as the registry.
    virtual QxToken* Find(const char* name) = 0;

protected:
    ~QxTokenRegistry() = default;
};

/// A parameter as the shader declares it, such as `varying color[4]`.
struct QxShaderToken {
    QxToken* token = nullptr;
    const char* name = "";  // both texts exist as long as the shader's code
    const char* declaration = "";

    void Init(QxToken* itsToken, const char* itsName, const char* itsDeclaration)
    {
        token = itsToken;
        name = itsName;
        declaration = itsDeclaration;
    }
};

struct QxTokenInfo {
    enum QxClass { e_constant };
};

/// The type of a value that host and shader exchange. The numbers are those that generated code
/// uses.
enum class QxValueType {
    Float = 1,
    Point = 2,
    Color = 3,
    String = 4,
    Matrix = 7,
    Vector = 8,
    Normal = 9
};

/// Returns the number of floats in one element of that type; 0 for a string.
inline std::size_t QxFloatCount(QxValueType type)
{
    switch (type) {
    case QxValueType::Float:
        return 1;
    case QxValueType::String:
        return 0;
    case QxValueType::Matrix:
        return 16;
    case QxValueType::Point:
    case QxValueType::Color:
    case QxValueType::Vector:
    case QxValueType::Normal:
        break;
    }
    return 3;
}

/// A parameter of a shader instance with its storage: for each array element in turn, one value if
/// the parameter is uniform, or one for each shading point if it is varying.
class QxVar {
public:
    QxVar() = default;
    QxVar(const QxVar&) = delete;
    QxVar& operator=(const QxVar&) = delete;
    ~QxVar() { FreeStrings(); }

    /// Sets name, type, detail and length from a declaration, and allocates memory for one point.
    /// The name must outlive the variable. Vectors and normals are declared as points.
    void Declare(const QxShaderToken& token);
    /// As above, from parts; `length` is 1 for a variable that is not an array.
    void Declare(const char* name, QxValueType type, bool varying, std::size_t length)
    {
        m_name = name;
        m_type = type;
        m_varying = varying;
        m_length = length;
        Resize(1);
    }
    /// Allocates memory for that many shading points, or for one value if the variable is uniform.
    /// Stored values are lost: all numbers become 0, and texts null.
    void Resize(std::size_t points);
    /// As above, but uses floats of the caller, which must exist as long as they are used and keep
    /// their values. Not for strings.
    void Borrow(std::size_t points, float* storage)
    {
        m_points = m_varying ? points : 1;
        m_useDefault = true;
        m_value = storage;
    }

    /// Returns floats, or pointers to texts; element j of point p is at index j * Points() + p. A
    /// text is from malloc, and null if it was never set; code that replaces a text frees it.
    void* Value() { return m_value; }
    /// True unless the host has set a value since the last `Declare`, `Resize` or `Borrow`.
    bool UseDefaultValue() const { return m_useDefault; }
    /// Copies one value with all its array elements, floats or strings, to every point.
    void Store(const void* value);
    /// As above, and marks the value as set by the host.
    void SetValue(const void* value)
    {
        Store(value);
        m_useDefault = false;
    }
    /// As above, for one value for each point, in the layout of `Value`.
    void SetValueForEachPoint(const void* values)
    {
        StoreForEachPoint(values);
        m_useDefault = false;
    }
    /// As above, without the mark: for default values that the shader computes.
    void StoreForEachPoint(const void* values);
    /// Marks the stored value as set by the host.
    void KeepValue() { m_useDefault = false; }

    const char* Name() const { return m_name; }
    QxValueType Type() const { return m_type; }
    bool IsVarying() const { return m_varying; }
    std::size_t Length() const { return m_length; }
    /// The number of points that the variable has values for; 1 if it is uniform.
    std::size_t Points() const { return m_points; }
    /// The space in which the source specifies the default value, "" for none. Known only after the
    /// default value has been computed; the text exists as long as the shader.
    const char* DefaultSpace() const { return m_defaultSpace; }
    void SetDefaultSpace(const char* space) { m_defaultSpace = space; }

private:
    std::size_t FloatCount() const { return m_points * m_length * QxFloatCount(m_type); }
    void StoreStrings(const char* const* value);
    void StoreString(std::size_t place, const char* text)
    {
        std::free(const_cast<char*>(m_strings[place]));
        m_strings[place] = strdup(text ? text : "");
    }
    void FreeStrings()
    {
        for (const char*& text : m_strings) {
            std::free(const_cast<char*>(text));
            text = nullptr;
        }
    }

    void* m_value = nullptr;  // data of the arrays below, or the caller's
    const char* m_name = "";
    QxValueType m_type = QxValueType::Float;
    bool m_varying = false;
    bool m_useDefault = true;
    std::size_t m_length = 1;  // array elements
    std::size_t m_points = 1;
    const char* m_defaultSpace = "";
    QxArray<float> m_floats;
    QxArray<const char*> m_strings;  // owned, from malloc, since the shader replaces them
};

inline void QxVar::Declare(const QxShaderToken& token)
{
    const char* const text = token.declaration;
    const auto has = [&](const char* word) { return std::strstr(text, word) != nullptr; };
    QxValueType type = QxValueType::Float;
    if (has(" string"))
        type = QxValueType::String;
    else if (has(" matrix"))
        type = QxValueType::Matrix;
    else if (has(" color"))
        type = QxValueType::Color;
    else if (has(" point"))
        type = QxValueType::Point;
    const char* const bracket = std::strchr(text, '[');
    const std::size_t length = bracket ? std::strtoul(bracket + 1, nullptr, 10) : 1;
    Declare(token.name, type, has("varying "), length);
}

inline void QxVar::Resize(std::size_t points)
{
    m_points = m_varying ? points : 1;
    m_useDefault = true;
    m_floats.Reset(FloatCount());
    FreeStrings();
    m_strings.Reset(m_type == QxValueType::String ? m_points * m_length : 0);
    m_value = m_floats.Data();
    if (m_type == QxValueType::String)
        m_value = m_strings.Data();
}

// Not inlined: for a caller with one float, compilers would warn of reading it as a string.
__attribute__((noinline)) inline void QxVar::Store(const void* value)
{
    if (m_type == QxValueType::String) {
        StoreStrings(static_cast<const char* const*>(value));
        return;
    }
    const std::size_t floats = QxFloatCount(m_type);
    const float* source = static_cast<const float*>(value);
    float* target = static_cast<float*>(m_value);
    for (std::size_t element = 0; element < m_length; ++element, source += floats)
        for (std::size_t point = 0; point < m_points; ++point, target += floats)
            std::memcpy(target, source, floats * sizeof(float));
}

// Not inlined: for a value of one float, compilers would warn of a read past its end.
__attribute__((noinline)) inline void QxVar::StoreStrings(const char* const* value)
{
    for (std::size_t element = 0; element < m_length; ++element)
        for (std::size_t point = 0; point < m_points; ++point)
            StoreString(element * m_points + point, value[element]);
}

__attribute__((noinline)) inline void QxVar::StoreForEachPoint(const void* values)
{
    for (std::size_t place = 0; place < m_strings.Size(); ++place)
        StoreString(place, static_cast<const char* const*>(values)[place]);
    if (m_type != QxValueType::String)
        std::memcpy(m_value, values, FloatCount() * sizeof(float));
}

/// Parts of the description of a shader that `QxInterrogate` returns: its type and its sizes.
struct QxShaderInterface {
    enum QxType {
        e_typeLight,
        e_typeSurface,
        e_typeVolume,
        e_typeDisplacement,
        e_typeImager,
    };
    struct QxDataSize {
        std::size_t parameters;
        std::size_t predefinedVariables;
        std::size_t localUniform;  // bytes
        std::size_t localVarying;  // bytes
        std::size_t spaces;
    };
};

/// The values of one light at each shading point of a surface or volume.
struct QxLightInput {
    QxVector3* L;  // from the point to the light
    QxRGBColor* Cl;
    QxRGBColor* Ol;
};

/// The predefined variables of a grid, except `E`, which `QxShadingContext` contains. A host sets
/// those that the shader uses. The pointer of a varying variable leads to one value for each
/// shading point.
struct QxHiddenVariables {
    QxRGBColor* Cs = nullptr;
    QxRGBColor* Os = nullptr;
    QxRGBColor* Ci = nullptr;
    QxRGBColor* Oi = nullptr;
    QxRGBColor* Cl = nullptr;
    QxRGBColor* Ol = nullptr;
    QxVector3* P = nullptr;
    QxVector3* dPdu = nullptr;
    QxVector3* dPdv = nullptr;
    QxVector3* N = nullptr;
    QxVector3* Ng = nullptr;
    QxVector3* L = nullptr;
    QxVector3* I = nullptr;
    QxVector3* Ps = nullptr;
    float* u = nullptr;
    float* v = nullptr;
    float* s = nullptr;
    float* t = nullptr;
    float* alpha = nullptr;
    float* du = nullptr;  // one value, like those below
    float* dv = nullptr;
    float* ncomps = nullptr;
    float* time = nullptr;
};

/// The predefined variables as generated code accesses them.
class QxHiddens : protected QxHiddenVariables {
public:
    explicit QxHiddens(const QxHiddenVariables& variables) : QxHiddenVariables(variables) {}
    QxRGBColor* GetCs() const { return Cs; }
    QxRGBColor* GetOs() const { return Os; }
    QxRGBColor* GetCi() const { return Ci; }
    QxRGBColor* GetOi() const { return Oi; }
    QxRGBColor* GetCl() const { return Cl; }
    QxRGBColor* GetOl() const { return Ol; }
    QxVector3* GetP() const { return P; }
    QxVector3* GetDPdu() const { return dPdu; }
    QxVector3* GetDPdv() const { return dPdv; }
    QxVector3* GetN() const { return N; }
    QxVector3* GetNg() const { return Ng; }
    QxVector3* GetL() const { return L; }
    QxVector3* GetI() const { return I; }
    QxVector3* GetPs() const { return Ps; }
    float* GetU() const { return u; }
    float* GetV() const { return v; }
    float* GetS() const { return s; }
    float* GetT() const { return t; }
    float* GetAlpha() const { return alpha; }
    float* GetDu() const { return du; }
    float* GetDv() const { return dv; }
    float* GetNcomps() const { return ncomps; }
    float* GetTime() const { return time; }
};

// The types of shaders that differ in the parameters of `QxEvaluate` have separate classes; volume
// and displacement shaders have that of surfaces.
class QxSurfaceHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};
class QxLightHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};
class QxImagerHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};

/// What one evaluation needs in addition to the values of the grid.
class QxShadingContext {
public:
    /// The objects that are passed by pointer must outlive the context. `spaces` has the order of
    /// the spaces in the byte-code file, or of the list that `QxInterrogate` returns.
    QxShadingContext(QxShaderSupport* support, const QxSpaceRegistry* registry,
                     const QxFrame3D* const* spaces, const QxVector3& eye)
        : m_support(support),
          m_registry(registry),
          m_spaces(spaces),
          m_eye(eye)
    {
    }
    /// Returns a context that differs only in `support`, which must outlive it, and in the cache of
    /// `Match`, which is empty.
    QxShadingContext With(QxShaderSupport& support) const
    {
        return {&support, m_registry, m_spaces, m_eye};
    }
    QxShaderSupport* ShaderSupport() const { return m_support; }
    const QxVector3* Eye() const { return &m_eye; }
    const QxFrame3D& Space(int number) const { return *m_spaces[number]; }
    const QxFrame3D& Space(const char* name) const { return *m_registry->Find(name); }
    /// See `QxPattern::Match`. All calls with one context share a pattern, also the cached
    /// expression.
    bool Match(const char* expression, const char* text) const
    {
        return m_pattern.Match(expression, text);
    }
    /// The work of all calls of `Match`, as `QxPattern` counts it.
    std::size_t MatchWork() const { return m_pattern.Work(); }

private:
    QxShaderSupport* m_support;
    const QxSpaceRegistry* m_registry;
    const QxFrame3D* const* m_spaces;
    QxVector3 m_eye;
    mutable QxPattern m_pattern;  // cached between calls; a run has one thread
};
