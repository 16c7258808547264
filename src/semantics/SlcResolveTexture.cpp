// Texture accesses are not functions. Their arguments are a name, a channel, coordinates (none, two
// or eight floats, or one or four points), then names, each with its value ("source" has two to
// four points). The table lists, for each name, the accesses that accept it and the type of its
// value. A name that is not a constant is known only at run time, so its value is not checked.
//
// Tested by tests/semantics/SlcResolveUniqueTypeTest.cpp and tests/golden/bad_textures.sl.

#include "semantics/SlcResolveTexture.h"

#include <algorithm>
#include <string>

#include "semantics/SlcTypedExpr.h"

using namespace SlcTypedExpr;
using T = SlcTypeNode;

/// The reports that are worded differently for each kind of access.
struct SlcResolveTexture::KindTexts {
    const char* filename;
    const char* tooFew;
    const char* coordinate;
    const char* missingValue;
};

namespace {

enum class Value { Float, String, Points };

struct Parameter {
    std::string_view name;
    bool (*in)(const SlcTextureTypeNode& kind);
    Value value;
};

bool Everywhere(const SlcTextureTypeNode&)
{
    return true;
}

bool NotInShadow(const SlcTextureTypeNode& kind)
{
    return !kind.IsShadow();
}

bool InShadow(const SlcTextureTypeNode& kind)
{
    return kind.IsShadow();
}

// clang-format off
//   name               in            value
constexpr Parameter k_parameters[] = {
    {"\"samples\"",     Everywhere,   Value::Float},
    {"\"fidelity\"",    Everywhere,   Value::Float},
    {"\"swidth\"",      Everywhere,   Value::Float},
    {"\"twidth\"",      Everywhere,   Value::Float},
    {"\"blur\"",        Everywhere,   Value::Float},
    {"\"sblur\"",       Everywhere,   Value::Float},
    {"\"tblur\"",       Everywhere,   Value::Float},
    {"\"width\"",       Everywhere,   Value::Float},
    {"\"fill\"",        NotInShadow,  Value::Float},
    {"\"lerp\"",        NotInShadow,  Value::Float},
    {"\"bias\"",        InShadow,     Value::Float},
    {"\"gapbias\"",     InShadow,     Value::Float},
    {"\"filter\"",      Everywhere,   Value::String},
    {"\"source\"",      InShadow,     Value::Points},
};
// clang-format on

constexpr std::size_t k_mostPoints = 4;

const Parameter* FindParameter(std::string_view name, const SlcTextureTypeNode& kind)
{
    const auto* found =
        std::find_if(std::begin(k_parameters), std::end(k_parameters),
                     [&](const Parameter& p) { return p.name == name && p.in(kind); });
    return found == std::end(k_parameters) ? nullptr : found;
}

/// True if the type is not in the set and no other report explains why.
bool LacksType(const SlcExprNode* expr, T* type)
{
    return !HasType(expr, type) && !HasOwnReport(expr);
}

}  // namespace

const SlcResolveTexture::KindTexts& SlcResolveTexture::TextsOf(const SlcTextureTypeNode& kind)
{
    static constexpr KindTexts texture = {
        "First argument to texture(...) must be a string",
        "Invalid number of arguments for texture(...)",
        "Texture coordinate must be a float",
        "Argument missing for a name-value pair in texture(...)",
    };
    static constexpr KindTexts environment = {
        "First argument to enviroment(...) must be a string",
        "environment(...) needs at least two arguments",
        "Second argument to environment(...) must be a point",
        "Argument missing for a name-value in texture(...)",
    };
    static constexpr KindTexts shadow = {
        "First argument to shadow(...) must be a string",
        "shadow(...) needs at least two arguments",
        "Second argument to shadow(...) must be a point",
        "Argument missing for a name-value pair in shadow(...)",
    };
    if (kind.IsTexture())
        return texture;
    return kind.IsShadow() ? shadow : environment;
}

void SlcResolveTexture::Resolve(SlcTextureExprNode* texture)
{
    m_kind = texture->GetKind();
    m_args.clear();
    m_hasFault = false;
    for (const auto& argument : texture->GetArguments()->GetArgs()) {
        SelectFirst(argument.get());
        m_args.push_back(argument.get());
        m_hasFault = m_hasFault || HasOwnReport(argument.get());
    }
    static_cast<void>(ResolveRequestedType(texture));

    ResolveFilename(texture);
    SlcExprNode* channel = texture->GetChannel()->GetChannel();
    if (LacksType(channel, T::AFloat()))
        m_errors->Error(texture, "Texture channel must be a float");
    SetUnique(channel, T::AFloat());

    const int coordinates = ResolveCoordinates(texture);
    if (coordinates >= 0)
        ResolveParameters(static_cast<std::size_t>(coordinates));
}

void SlcResolveTexture::ResolveFilename(const SlcTextureExprNode* texture)
{
    if (!texture->GetFilename())
        return;
    SlcExprNode* filename = texture->GetFilename()->GetName();
    if (LacksType(filename, T::AString()))
        m_errors->Error(texture, TextsOf(*m_kind).filename);
    SetUnique(filename, T::AString());
}

void SlcResolveTexture::ErrorOfPlace(const SlcSyntaxNode* node, std::string_view message)
{
    if (!m_hasFault)
        m_errors->Error(node, message);
}

int SlcResolveTexture::ResolveCoordinates(SlcTextureExprNode* texture)
{
    return m_kind->IsTexture() ? ResolveFloats(texture) : ResolvePoints(texture);
}

int SlcResolveTexture::ResolveFloats(SlcTextureExprNode* texture)
{
    const auto firstName =
        std::find_if(m_args.begin(), m_args.end(), [](const SlcExprNode* argument) {
            return HasType(argument, T::AString()) && !IsFaulty(argument);
        });
    const auto given = firstName - m_args.begin();
    if (given == 1) {
        ErrorOfPlace(texture, TextsOf(*m_kind).tooFew);
        SetUnique(m_args.front(), T::AFloat());
        return -1;
    }
    // Other numbers of floats match no form. The argument after those taken is then reported: it
    // is not a name or, if it is the last one, lacks a value.
    const int taken = given >= 8 ? 8 : given >= 2 ? 2 : 0;
    const auto lacks = [](const SlcExprNode* argument) { return LacksType(argument, T::AFloat()); };
    const auto faulty = std::find_if(m_args.begin(), m_args.begin() + taken, lacks);
    if (faulty != m_args.begin() + taken)
        m_errors->Error(*faulty, TextsOf(*m_kind).coordinate);
    for (int i = 0; i < taken; ++i)
        SetUnique(m_args[i], T::AFloat());
    return taken;
}

int SlcResolveTexture::ResolvePoints(SlcTextureExprNode* texture)
{
    if (m_args.empty()) {
        m_errors->Error(texture, TextsOf(*m_kind).tooFew);
        return -1;
    }
    if (!HasType(m_args.front(), T::APoint())) {
        if (!HasOwnReport(m_args.front()))
            m_errors->Error(texture, TextsOf(*m_kind).coordinate);
        return -1;
    }
    const auto firstOther =
        std::find_if(m_args.begin(), m_args.end(),
                     [](const SlcExprNode* argument) { return !HasType(argument, T::APoint()); });
    const auto given = static_cast<std::size_t>(firstOther - m_args.begin());
    // Other numbers of points match no form. The argument after those taken is then reported: it
    // is not a name or, if it is the last one, lacks a value.
    const std::size_t taken = given >= k_mostPoints ? k_mostPoints : 1;
    for (std::size_t i = 0; i < taken; ++i)
        SetUnique(m_args[i], T::APoint());
    return static_cast<int>(taken);
}

void SlcResolveTexture::ResolveParameters(std::size_t first)
{
    for (std::size_t i = first; i < m_args.size();) {
        if (i + 1 == m_args.size())
            return ErrorOfPlace(m_args[i], TextsOf(*m_kind).missingValue);
        const std::size_t taken = CheckTextureAccessParameter(i);
        if (taken == 0)
            return;
        i += taken;
    }
}

std::size_t SlcResolveTexture::CheckTextureAccessParameter(std::size_t position)
{
    SlcExprNode* name = m_args[position];
    SlcExprNode* value = m_args[position + 1];
    const std::string kind = m_kind->ToString();
    if (!HasType(name, T::AString())) {
        constexpr std::size_t k_afterFilename = 2;  // counted from 1, the texture's name first
        ErrorOfPlace(name, "String expected as a texture access parameter to " + kind +
                               "(...), argument " + std::to_string(position + k_afterFilename));
        return 0;
    }
    SetUnique(name, T::AString());
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(name);
    if (!constant) {
        // The meaning of the name is known only at run time.
        if (HasType(value, T::AFloat()))
            SetUnique(value, T::AFloat());
        return 2;
    }
    const std::string& text = constant->GetStringConst()->GetText();
    const Parameter* parameter = FindParameter(text, *m_kind);
    if (!parameter) {
        m_errors->Warning(name, "Unknown argument " + text + " to " + kind + "(...), ignored.", 1);
        return 2;
    }
    switch (parameter->value) {
    case Value::Points:
        return 1 + ResolveSource(position + 1);
    case Value::Float:
        ResolveFloatValue(text, value);
        break;
    case Value::String:
        ResolveStringValue(value);
        break;
    }
    return 2;
}

std::size_t SlcResolveTexture::ResolveSource(std::size_t first)
{
    std::size_t points = 0;
    while (points < k_mostPoints && first + points < m_args.size() &&
           HasType(m_args[first + points], T::APoint()))
        SetUnique(m_args[first + points++], T::APoint());
    if (points < 2)
        ErrorOfPlace(m_args[first - 1],
                     "\"source\" argument in shadow(...) needs 2, 3 or 4 points.");
    // Without a point, skip the argument in the position of the first one, which is a wrong value.
    return std::max<std::size_t>(points, 1);
}

void SlcResolveTexture::ResolveFloatValue(std::string_view name, SlcExprNode* value)
{
    if (LacksType(value, T::AFloat()))
        m_errors->Error(value, "Scalar value expected for " + std::string(name) + "parameter in " +
                                   m_kind->ToString() + "(...)");
    SetUnique(value, T::AFloat());
}

void SlcResolveTexture::ResolveStringValue(SlcExprNode* value)
{
    if (LacksType(value, T::AString()))
        m_errors->Error(value, "String value expected for 'filter' parameter in " +
                                   m_kind->ToString() + "(...)");
    SetUnique(value, T::AString());
}
