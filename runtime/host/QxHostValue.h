#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

/// A typed value of a parameter, a predefined variable or an answer, with any number of elements.
///
/// A value for all points has one element, or those of an array. A value for each point has one
/// element per point; for an array it stores all points of the first array element, then all points
/// of the second, and so on. Matrices are stored row by row.
struct QxHostValue {
    QxValueType type;
    std::vector<float> numbers;      // 1, 3 or 16 for each element; empty for strings
    std::vector<std::string> texts;  // one for each element of strings; else empty

    /// Any number of elements, one after the other. Throws `QxHostError` if the type is a string,
    /// or if the numbers do not form whole elements of the type.
    QxHostValue(QxValueType itsType, std::vector<float> itsNumbers);
    /// Any number of strings.
    QxHostValue(std::vector<std::string> itsTexts);

    // One element, or any number of floats. A `QxVector3` is stored as a point, which fits vectors
    // and normals too.

    QxHostValue(float number) : QxHostValue(QxValueType::Float, {number}) {}
    QxHostValue(double number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(int number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(std::vector<float> floats) : QxHostValue(QxValueType::Float, std::move(floats)) {}
    QxHostValue(const QxVector3& p) : QxHostValue(QxValueType::Point, {p.x, p.y, p.z}) {}
    QxHostValue(const QxRGBColor& c) : QxHostValue(QxValueType::Color, {c.r, c.g, c.b}) {}
    QxHostValue(const QxMatrix44& matrix);
    QxHostValue(const char* text) : QxHostValue(std::string(text)) {}
    QxHostValue(std::string text) : QxHostValue(std::vector<std::string>{std::move(text)}) {}

    /// Copies all elements of a variable at all points. A text that was never set becomes "".
    [[nodiscard]] static QxHostValue Of(QxVar& variable);

    /// Returns the number of elements.
    [[nodiscard]] std::size_t Count() const;
    /// True if a value of this type may be used where `wanted` is expected, see `QxFitsType`.
    [[nodiscard]] bool Fits(QxValueType wanted) const;
};

/// Returns the name of a type in the shading language, such as "color".
[[nodiscard]] const char* QxTypeName(QxValueType type);
/// Returns the type with this name, or nothing if `name` is not a type.
[[nodiscard]] std::optional<QxValueType> QxTypeNamed(std::string_view name);
/// True if the types are equal, or each is a point, vector or normal. No other types fit each
/// other: an array of three floats is not a color.
[[nodiscard]] bool QxFitsType(QxValueType type, QxValueType wanted);
