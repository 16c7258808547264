#include "machine/SqxCall.h"

#include <algorithm>
#include <cmath>

std::span<float> SqxCall::Numbers(std::size_t place) const
{
    return m_store.Numbers(static_cast<std::size_t>(m_operands[place]), m_point);
}

std::span<std::string> SqxCall::Texts(std::size_t place) const
{
    return m_store.Texts(static_cast<std::size_t>(m_operands[place]), m_point);
}

const SqxVariable& SqxCall::Variable(std::size_t place) const
{
    return m_store.Variable(static_cast<std::size_t>(m_operands[place]));
}

std::span<float> SqxCall::Exactly(std::size_t place, std::size_t count) const
{
    const std::span<float> numbers = Numbers(place);
    if (numbers.size() != count)
        throw SqxFault{"Operand " + std::to_string(place) + " has " +
                       std::to_string(numbers.size()) + " numbers, not " + std::to_string(count)};
    return numbers;
}

template <>
float SqxCall::Get(std::size_t place) const
{
    return Exactly(place, 1)[0];
}

template <>
bool SqxCall::Get(std::size_t place) const
{
    const float truth = Exactly(place, 1)[0];
    if (std::isnan(truth))
        throw SqxFault{"Flag " + std::to_string(m_operands[place]) + " is read before it is set"};
    return truth != 0;
}

template <>
QxVector3 SqxCall::Get(std::size_t place) const
{
    const auto numbers = Exactly(place, 3);
    return {numbers[0], numbers[1], numbers[2]};
}

template <>
QxRGBColor SqxCall::Get(std::size_t place) const
{
    const auto numbers = Exactly(place, 3);
    return {numbers[0], numbers[1], numbers[2]};
}

template <>
QxMatrix44 SqxCall::Get(std::size_t place) const
{
    const auto numbers = Exactly(place, 16);
    QxMatrix44 matrix;
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = numbers[static_cast<std::size_t>(i)];
    return matrix;
}

template <>
std::string SqxCall::Get(std::size_t place) const
{
    return Texts(place)[0];
}

template <>
void SqxCall::Set(std::size_t place, const float& value) const
{
    Exactly(place, 1)[0] = value;
}

template <>
void SqxCall::Set(std::size_t place, const bool& value) const
{
    Exactly(place, 1)[0] = value ? 1 : 0;
}

template <>
void SqxCall::Set(std::size_t place, const QxVector3& value) const
{
    const auto numbers = Exactly(place, 3);
    for (int i = 0; i < 3; ++i)
        numbers[static_cast<std::size_t>(i)] = value[i];
}

template <>
void SqxCall::Set(std::size_t place, const QxRGBColor& value) const
{
    const auto numbers = Exactly(place, 3);
    for (int i = 0; i < 3; ++i)
        numbers[static_cast<std::size_t>(i)] = value[i];
}

template <>
void SqxCall::Set(std::size_t place, const QxMatrix44& value) const
{
    const auto numbers = Exactly(place, 16);
    for (int i = 0; i < 16; ++i)
        numbers[static_cast<std::size_t>(i)] = value[i / 4][i % 4];
}

template <>
void SqxCall::Set(std::size_t place, const std::string& value) const
{
    Texts(place)[0] = value;
}

SqxOperation SqxFindOperation(std::string_view primitive)
{
    for (const auto table : {SqxOperatorTable(), SqxMathTable(), SqxNoiseTable(),
                             SqxGeometryTable(), SqxTextTable(), SqxLightTable(), SqxSceneTable()})
        for (const SqxOperationRow& row : table) {
            std::string_view pattern = row.primitive;
            const bool start = pattern.ends_with('*');
            pattern.remove_suffix(start ? 1 : 0);
            if (start ? primitive.starts_with(pattern) : primitive == pattern)
                return row.operation;
        }
    return nullptr;
}
