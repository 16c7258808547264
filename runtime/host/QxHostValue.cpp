// A value of any type is one list of numbers or of texts: an array of two colors is six numbers. So
// parameters, predefined variables and answers share the checks of type and count.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxHostValue.h"

#include "QxHostError.h"

namespace {

/// Points, vectors and normals have the same storage.
QxValueType Storage(QxValueType type)
{
    const bool isPoint = type == QxValueType::Vector || type == QxValueType::Normal;
    return isPoint ? QxValueType::Point : type;
}

}  // namespace

QxHostValue::QxHostValue(QxValueType itsType, std::vector<float> itsNumbers)
    : type(itsType),
      numbers(std::move(itsNumbers))
{
    const std::size_t width = QxFloatCount(type);
    if (width == 0 || numbers.size() % width != 0)
        throw QxHostError(std::string("A ") + QxTypeName(type) + " cannot be made of " +
                          std::to_string(numbers.size()) + " numbers");
}

QxHostValue::QxHostValue(std::vector<std::string> itsTexts)
    : type(QxValueType::String),
      texts(std::move(itsTexts))
{
}

QxHostValue::QxHostValue(const QxMatrix44& matrix)
    : type(QxValueType::Matrix),
      numbers(&matrix.m[0][0], &matrix.m[0][0] + 16)
{
}

QxHostValue QxHostValue::Of(QxVar& variable)
{
    const std::size_t count = variable.Length() * variable.Points();
    if (variable.Type() == QxValueType::String) {
        const auto* texts = static_cast<const char* const*>(variable.Value());
        std::vector<std::string> copies;
        for (std::size_t i = 0; i < count; ++i)
            copies.emplace_back(texts[i] ? texts[i] : "");
        return copies;
    }
    const auto* numbers = static_cast<const float*>(variable.Value());
    return {variable.Type(),
            std::vector<float>(numbers, numbers + count * QxFloatCount(variable.Type()))};
}

std::size_t QxHostValue::Count() const
{
    return type == QxValueType::String ? texts.size() : numbers.size() / QxFloatCount(type);
}

bool QxHostValue::Fits(QxValueType wanted) const
{
    return QxFitsType(type, wanted);
}

bool QxFitsType(QxValueType type, QxValueType wanted)
{
    return Storage(type) == Storage(wanted);
}

std::optional<QxValueType> QxTypeNamed(std::string_view name)
{
    for (const QxValueType type :
         {QxValueType::Float, QxValueType::Point, QxValueType::Color, QxValueType::String,
          QxValueType::Matrix, QxValueType::Vector, QxValueType::Normal})
        if (name == QxTypeName(type))
            return type;
    return std::nullopt;
}

const char* QxTypeName(QxValueType type)
{
    switch (type) {
    case QxValueType::Float:
        return "float";
    case QxValueType::Point:
        return "point";
    case QxValueType::Color:
        return "color";
    case QxValueType::String:
        return "string";
    case QxValueType::Matrix:
        return "matrix";
    case QxValueType::Vector:
        return "vector";
    case QxValueType::Normal:
        break;
    }
    return "normal";
}
