#include "machine/SqxStore.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "sqx/SqxCursor.h"

namespace {

// More than any test needs; a damaged file must not exhaust memory.
constexpr std::size_t k_highestCount = std::size_t{1} << 28;

// A quiet NaN with a distinct payload, which the processor propagates to the results of arithmetic.
constexpr std::uint32_t k_poisonBits = 0x7FCDEAD1U;
constexpr std::uint32_t k_signBit = 0x80000000U;
constexpr const char* k_poisonText = "\001nothing has written this";

}  // namespace

float SqxPoison()
{
    return std::bit_cast<float>(k_poisonBits);
}

std::string SqxPoisonText()
{
    return k_poisonText;
}

bool SqxIsPoison(float number)
{
    return (std::bit_cast<std::uint32_t>(number) | k_signBit) == (k_poisonBits | k_signBit);
}

bool SqxIsPoison(const std::string& text)
{
    return text == k_poisonText;
}

std::size_t SqxComponents(SqxType type)
{
    switch (type) {
    case SqxType::Point:
    case SqxType::Color:
    case SqxType::Vector:
    case SqxType::Normal:
        return 3;
    case SqxType::Matrix:
        return 16;
    case SqxType::Float:
    case SqxType::Int:
    case SqxType::Bool:
    case SqxType::String:
        return 1;
    }
    return 1;
}

SqxStore::SqxStore(const SqxShader& shader, std::size_t points)
    : m_shader(shader),
      m_points(points),
      m_values(shader.variables.size())
{
    for (std::size_t i = 0; i < m_values.size(); ++i)
        Allocate(shader.variables[i], m_values[i]);
}

void SqxStore::Allocate(const SqxVariable& variable, Values& values) const
{
    const std::size_t places = variable.uniform ? 1 : m_points;
    values.width = SqxComponents(variable.type) * static_cast<std::size_t>(variable.size);
    if (values.width * places > k_highestCount)
        throw SqxFault{"A variable is too large"};
    if (variable.reference)
        values.bindings.resize(places);
    else if (variable.type == SqxType::String)
        values.texts.assign(values.width * places, k_poisonText);
    else
        values.numbers.assign(values.width * places, SqxPoison());
    if (variable.kind != SqxVariableKind::Constant)
        return;
    if (variable.type == SqxType::String)
        values.texts[0] = SqxLiteralText(variable.text);
    else
        values.numbers[0] = static_cast<float>(variable.number);
}

const SqxVariable& SqxStore::Variable(std::size_t number) const
{
    return m_shader.variables[number];
}

std::size_t SqxStore::Place(std::size_t number, std::size_t point) const
{
    if (Variable(number).uniform)
        return 0;
    if (point == k_uniformPoint)
        throw SqxFault{"Variable " + std::to_string(number) +
                       " is varying, but is used outside the points of the grid"};
    return point;
}

const SqxStore::Binding& SqxStore::Resolve(std::size_t reference, std::size_t point) const
{
    const Binding& binding = m_values[reference].bindings[Place(reference, point)];
    if (binding.array == k_uniformPoint)
        throw SqxFault{"Reference " + std::to_string(reference) + " refers to nothing yet"};
    return binding;
}

std::span<float> SqxStore::Numbers(std::size_t number, std::size_t point)
{
    const SqxVariable& variable = Variable(number);
    if (variable.type == SqxType::String)
        throw SqxFault{"Variable " + std::to_string(number) + " is a text, not a number"};
    if (variable.reference) {
        const Binding& binding = Resolve(number, point);
        const std::size_t components = SqxComponents(variable.type);
        if (binding.isLost) {
            m_lostNumbers.assign(components, SqxPoison());
            return m_lostNumbers;
        }
        return Numbers(binding.array, point).subspan(binding.element * components, components);
    }
    Values& values = m_values[number];
    return std::span(values.numbers).subspan(Place(number, point) * values.width, values.width);
}

std::span<std::string> SqxStore::Texts(std::size_t number, std::size_t point)
{
    const SqxVariable& variable = Variable(number);
    if (variable.type != SqxType::String)
        throw SqxFault{"Variable " + std::to_string(number) + " is no text"};
    if (variable.reference) {
        const Binding& binding = Resolve(number, point);
        if (binding.isLost) {
            m_lostTexts.assign(1, k_poisonText);
            return m_lostTexts;
        }
        return Texts(binding.array, point).subspan(binding.element, 1);
    }
    Values& values = m_values[number];
    return std::span(values.texts).subspan(Place(number, point) * values.width, values.width);
}

bool SqxStore::HasPoison(std::size_t number, std::size_t point)
{
    const auto isPoison = [](const auto& value) { return SqxIsPoison(value); };
    return Variable(number).type == SqxType::String
               ? std::ranges::any_of(Texts(number, point), isPoison)
               : std::ranges::any_of(Numbers(number, point), isPoison);
}

void SqxStore::Bind(std::size_t reference, std::size_t point, std::size_t array, float index)
{
    if (!Variable(reference).reference || Variable(array).reference || Variable(array).size < 1 ||
        Variable(array).type != Variable(reference).type)
        throw SqxFault{"Variable " + std::to_string(reference) +
                       " cannot stand for an element of " + std::to_string(array)};
    const float last = static_cast<float>(Variable(array).size - 1);
    const float element = std::isnan(index) ? 0 : std::clamp(std::trunc(index), 0.0F, last);
    auto& bindings = m_values[reference].bindings;
    const Binding binding = {array, static_cast<std::size_t>(element), SqxIsPoison(index)};
    if (point == k_uniformPoint)
        std::fill(bindings.begin(), bindings.end(), binding);
    else
        bindings[Place(reference, point)] = binding;
}
