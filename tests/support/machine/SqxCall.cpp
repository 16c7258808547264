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

void SqxCall::Note(std::size_t place) const
{
    const bool isPoison =
        Variable(place).type == SqxType::String
            ? SqxIsPoison(Texts(place)[0])
            : std::ranges::any_of(Numbers(place), [](float number) { return SqxIsPoison(number); });
    m_gotPoison |= isPoison;
}

void SqxCall::RefusePoison() const
{
    if (m_gotPoison)
        throw SqxFault{"What nothing has written is used"};
}

template <>
float SqxCall::Part(std::size_t place) const
{
    return Exactly(place, 1)[0];
}

template <>
bool SqxCall::Part(std::size_t place) const
{
    const float truth = Exactly(place, 1)[0];
    if (std::isnan(truth))
        throw SqxFault{"Flag " + std::to_string(m_operands[place]) + " is read before it is set"};
    return truth != 0;
}

template <>
QxVector3 SqxCall::Part(std::size_t place) const
{
    const auto numbers = Exactly(place, 3);
    return {numbers[0], numbers[1], numbers[2]};
}

template <>
QxRGBColor SqxCall::Part(std::size_t place) const
{
    const auto numbers = Exactly(place, 3);
    return {numbers[0], numbers[1], numbers[2]};
}

template <>
QxMatrix44 SqxCall::Part(std::size_t place) const
{
    const auto numbers = Exactly(place, 16);
    QxMatrix44 matrix;
    for (int i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = numbers[static_cast<std::size_t>(i)];
    return matrix;
}

template <>
std::string SqxCall::Part(std::size_t place) const
{
    return Texts(place)[0];
}

/// Arithmetic itself propagates poison to the affected components; if it has lost the poison, the
/// whole result becomes poison.
void SqxCall::SetNumbers(std::size_t place, std::span<const float> values) const
{
    const auto numbers = Exactly(place, values.size());
    const bool isPoison =
        m_gotPoison &&
        std::none_of(values.begin(), values.end(), [](float value) { return SqxIsPoison(value); });
    if (isPoison)
        std::fill(numbers.begin(), numbers.end(), SqxPoison());
    else
        std::copy(values.begin(), values.end(), numbers.begin());
}

template <>
void SqxCall::Set(std::size_t place, const float& value) const
{
    SetNumbers(place, std::span(&value, 1));
}

template <>
void SqxCall::Set(std::size_t place, const bool& value) const
{
    Set(place, value ? 1.0F : 0.0F);
}

template <>
void SqxCall::Set(std::size_t place, const QxVector3& value) const
{
    const float numbers[] = {value[0], value[1], value[2]};
    SetNumbers(place, numbers);
}

template <>
void SqxCall::Set(std::size_t place, const QxRGBColor& value) const
{
    const float numbers[] = {value[0], value[1], value[2]};
    SetNumbers(place, numbers);
}

template <>
void SqxCall::Set(std::size_t place, const QxMatrix44& value) const
{
    float numbers[16];
    for (int i = 0; i < 16; ++i)
        numbers[i] = value[i / 4][i % 4];
    SetNumbers(place, numbers);
}

template <>
void SqxCall::Set(std::size_t place, const std::string& value) const
{
    Texts(place)[0] = m_gotPoison ? SqxPoisonText() : value;
}

SqxOperation SqxFindOperation(SqxPrimitive primitive)
{
    for (const auto table : {SqxOperatorTable(), SqxMathTable(), SqxNoiseTable(),
                             SqxGeometryTable(), SqxTextTable(), SqxLightTable(), SqxSceneTable()})
        for (const SqxOperationRow& row : table)
            if (row.primitive == primitive)
                return row.operation;
    return nullptr;
}
