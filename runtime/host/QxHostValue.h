#pragma once

#include <string>
#include <vector>

#include "QxShading.h"

/// A value with its type, as a host hands it over by name: one element or several.
///
/// Several are the elements of an array, or one for each shading point; where an array has a value
/// for each point, all points of its first element come first.
struct QxHostValue {
    QxValueType type;
    std::vector<float> numbers;  // 1, 3 or 16 for each element
    std::vector<std::string> texts;

    QxHostValue(QxValueType itsType, std::vector<float> itsNumbers);
    QxHostValue(std::vector<std::string> itsTexts);

    QxHostValue(float number) : QxHostValue(QxValueType::Float, {number}) {}
    QxHostValue(double number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(int number) : QxHostValue(static_cast<float>(number)) {}
    QxHostValue(std::vector<float> floats) : QxHostValue(QxValueType::Float, std::move(floats)) {}
    QxHostValue(const QxVector3& p) : QxHostValue(QxValueType::Point, {p.x, p.y, p.z}) {}
    QxHostValue(const QxRGBColor& c) : QxHostValue(QxValueType::Color, {c.r, c.g, c.b}) {}
    QxHostValue(const QxMatrix44& matrix);
    QxHostValue(const char* text) : QxHostValue(std::string(text)) {}
    QxHostValue(std::string text) : QxHostValue(std::vector<std::string>{std::move(text)}) {}

    /// What a variable holds.
    [[nodiscard]] static QxHostValue Of(QxVar& variable);

    /// Elements that it holds.
    [[nodiscard]] std::size_t Count() const;
    /// Points, vectors and normals pass for each other.
    [[nodiscard]] bool Fits(QxValueType wanted) const;
};

/// How users call a type, such as "color".
[[nodiscard]] const char* QxTypeName(QxValueType type);
