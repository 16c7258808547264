#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "QxArray.h"
#include "QxMatrixMath.h"
#include "QxPattern.h"

// The interface between a host and a built shader. A shader only queries the registries of a host,
// so that they are declared here without their implementation. The layout of these classes is part
// of the interface version: objects built with other headers of it must go on running.

class QxShaderSupport;

/// A coordinate system, as the two matrices between it and the current one.
struct QxFrame3D {
    QxMatrix44 toCurrent;
    QxMatrix44 fromCurrent;

    explicit QxFrame3D(const QxMatrix44& matrixToCurrent = QxMatrix44::Identity())
        : toCurrent(matrixToCurrent),
          fromCurrent(QxInverse(matrixToCurrent))
    {
    }
};

/// The coordinate systems of a host by name. The frames keep their places for the registry's life.
class QxSpaceRegistry {
public:
    /// The frame of a name that may be defined later on: until then it is that of the current
    /// space.
    virtual const QxFrame3D* Reserve(const char* name) = 0;
    /// The current space for an unknown name.
    virtual const QxFrame3D* Find(const char* name) const = 0;

protected:
    ~QxSpaceRegistry() = default;
};

/// Where a host looks for shadeop libraries.
class QxSearchPath {
public:
    /// The path of the first file of that name, valid until the next call; null if there is none.
    virtual const char* Find(const char* file) const = 0;

protected:
    ~QxSearchPath() = default;
};

/// A name that host and shader share. A pointer to one identifies the name.
struct QxToken {
    const char* name;
};

/// Gives each name one token.
class QxTokenRegistry {
public:
    /// That of the name, made if it is new. It lasts as long as the registry.
    virtual QxToken* Find(const char* name) = 0;

protected:
    ~QxTokenRegistry() = default;
};

/// A parameter as the shader declares it, such as `varying color[4]`.
struct QxShaderToken {
    QxToken* token = nullptr;
    const char* name = "";         // these live as long as the shader's code
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

/// The type of a value that is handed over without the shader's knowledge of it. The numbers are
/// those that generated code uses.
enum class QxValueType {
    Float = 1,
    Point = 2,
    Color = 3,
    String = 4,
    Matrix = 7,
    Vector = 8,
    Normal = 9
};

/// Floats in one element of that type; none for a string.
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

/// A parameter of a shader instance with its storage: one value, or one for each shading point,
/// of every array element in turn.
class QxVar {
public:
    QxVar() = default;
    QxVar(const QxVar&) = delete;
    QxVar& operator=(const QxVar&) = delete;
    ~QxVar() { FreeStrings(); }

    /// Takes name and type from a declaration, with room for one point. The name must outlive it.
    void Declare(const QxShaderToken& token);
    /// The same by parts; `length` is 1 for what is no array.
    void Declare(const char* name, QxValueType type, bool varying, std::size_t length)
    {
        m_name = name;
        m_type = type;
        m_varying = varying;
        m_length = length;
        Resize(1);
    }
    /// Makes room for that many shading points; what was stored is lost.
    void Resize(std::size_t points);
    /// The same in floats of the caller, which must live as long as they are used.
    void Borrow(std::size_t points, float* storage)
    {
        m_points = m_varying ? points : 1;
        m_useDefault = true;
        m_value = storage;
    }

    /// Floats, or pointers to texts, that of element j at point p at place j * Points() + p. A text
    /// is from malloc, and null if it was never set; code that replaces one frees it.
    void* Value() { return m_value; }
    /// The host has set no value.
    bool UseDefaultValue() const { return m_useDefault; }
    /// Copies a value of all array elements, floats or strings by type, to every point.
    void Store(const void* value);
    /// The same for a value of the host's.
    void SetValue(const void* value)
    {
        Store(value);
        m_useDefault = false;
    }
    /// The same for a value of each point, laid out as they are stored.
    void SetValueForEachPoint(const void* values)
    {
        StoreForEachPoint(values);
        m_useDefault = false;
    }
    /// The same for a value of the shader's own.
    void StoreForEachPoint(const void* values);
    /// What is stored is the host's.
    void KeepValue() { m_useDefault = false; }

    const char* Name() const { return m_name; }
    QxValueType Type() const { return m_type; }
    bool IsVarying() const { return m_varying; }
    std::size_t Length() const { return m_length; }
    /// How many points it has a value for.
    std::size_t Points() const { return m_points; }
    /// The space that the default value is given in, "" for what has none. It is known once that
    /// value was computed, and lives as long as the shader.
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

    void* m_value = nullptr;  // that of the arrays below, or the caller's
    const char* m_name = "";
    QxValueType m_type = QxValueType::Float;
    bool m_varying = false;
    bool m_useDefault = true;
    std::size_t m_length = 1;  // array elements
    std::size_t m_points = 1;
    const char* m_defaultSpace = "";
    QxArray<float> m_floats;
    QxArray<const char*> m_strings;  // owned, from malloc: the shader replaces them
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

// Not expanded in place: a caller's value of one float would seem to be read as a string.
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

// Kept apart: a compiler that inlines it where the value is a float warns of a read past its end.
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

/// The description of a shader.
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

/// One light as a surface sees it: a value for each shading point.
struct QxLightInput {
    QxVector3* L;  // from the point to the light
    QxRGBColor* Cl;
    QxRGBColor* Ol;
};

/// The predefined variables of a grid. A host sets those that the shader asks for; a varying one
/// points to a value for each shading point.
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
    float* du = nullptr;  // one value, as are the next ones
    float* dv = nullptr;
    float* ncomps = nullptr;
    float* time = nullptr;
};

/// The predefined variables as generated code reaches them.
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

// Each kind of shader has its own class in its entry point.
class QxSurfaceHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};
class QxLightHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};
class QxImagerHidden : public QxHiddens {
    using QxHiddens::QxHiddens;
};

/// What one evaluation needs beyond the grid's values.
class QxShadingContext {
public:
    /// All must outlive the context. `spaces`: as `QxInterrogate` gave them.
    QxShadingContext(QxShaderSupport* support, const QxSpaceRegistry* registry,
                     const QxFrame3D* const* spaces, const QxVector3& eye)
        : m_support(support),
          m_registry(registry),
          m_spaces(spaces),
          m_eye(eye)
    {
    }
    /// The same with other services, which must outlive it too.
    QxShadingContext With(QxShaderSupport& support) const
    {
        return {&support, m_registry, m_spaces, m_eye};
    }
    QxShaderSupport* ShaderSupport() const { return m_support; }
    const QxVector3* Eye() const { return &m_eye; }
    const QxFrame3D& Space(int number) const { return *m_spaces[number]; }
    const QxFrame3D& Space(const char* name) const { return *m_registry->Find(name); }
    /// As `QxPattern` has it, for all calls of a run.
    bool Match(const char* expression, const char* text) const
    {
        return m_pattern.Match(expression, text);
    }
    /// What these calls took.
    std::size_t MatchWork() const { return m_pattern.Work(); }

private:
    QxShaderSupport* m_support;
    const QxSpaceRegistry* m_registry;
    const QxFrame3D* const* m_spaces;
    QxVector3 m_eye;
    mutable QxPattern m_pattern;  // what is kept between calls; a run has one thread
};
