#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

/// A value with its type, as a host hands it over by name: one element or several.
///
/// Several are the elements of an array, or one for each shading point; where an array has a value
/// for each point, all points of its first element come first. A matrix has its numbers row by row.
struct QxHostValue {
    QxValueType type;
    std::vector<float> numbers;  // 1, 3 or 16 for each element
    std::vector<std::string> texts;

    /// Any number of elements, one behind the other. Throws `QxHostError` if the numbers make no
    /// whole elements, or the type is a string.
    QxHostValue(QxValueType itsType, std::vector<float> itsNumbers);
    QxHostValue(std::vector<std::string> itsTexts);

    // One element, or an array of floats.

    QxHostValue(float number) : QxHostValue(QxValueType::Float, {number}) {}
    QxHostValue(double number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(int number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(std::vector<float> floats) : QxHostValue(QxValueType::Float, std::move(floats)) {}
    QxHostValue(const QxVector3& p) : QxHostValue(QxValueType::Point, {p.x, p.y, p.z}) {}
    QxHostValue(const QxRGBColor& c) : QxHostValue(QxValueType::Color, {c.r, c.g, c.b}) {}
    QxHostValue(const QxMatrix44& matrix);
    QxHostValue(const char* text) : QxHostValue(std::string(text)) {}
    QxHostValue(std::string text) : QxHostValue(std::vector<std::string>{std::move(text)}) {}

    /// What a variable holds: all elements at all points. A text that was never set is empty.
    [[nodiscard]] static QxHostValue Of(QxVar& variable);

    /// Elements that it holds.
    [[nodiscard]] std::size_t Count() const;
    /// Whether it may be given where that type is wanted. Points, vectors and normals pass for each
    /// other; nothing else does, not even an array of three floats for a color.
    [[nodiscard]] bool Fits(QxValueType wanted) const;
};

/// How users call a type, such as "color", and the type of a name; none for another word.
[[nodiscard]] const char* QxTypeName(QxValueType type);
[[nodiscard]] std::optional<QxValueType> QxTypeNamed(std::string_view name);
/// A value of one type passes for another one: points, vectors and normals for each other.
[[nodiscard]] bool QxFitsType(QxValueType type, QxValueType wanted);
