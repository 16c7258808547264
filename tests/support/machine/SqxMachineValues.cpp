// The values with which a run of the machine starts.

#include <algorithm>

#include "machine/SqxDefaults.h"
#include "machine/SqxMachine.h"

void SqxMachine::SetVariable(std::size_t number, std::span<const float> numbers)
{
    const std::size_t points = Shader().variables[number].uniform ? 1 : m_grid.Size();
    for (std::size_t i = 0; i < points; ++i) {
        const auto target = m_store->Numbers(number, i);
        if (numbers.size() != target.size() && numbers.size() != target.size() * points)
            throw SqxFault{"Variable '" + Shader().variables[number].name + "' is set to " +
                           std::to_string(numbers.size()) + " numbers"};
        const bool each = numbers.size() != target.size();
        const auto source = each ? numbers.subspan(i * target.size(), target.size()) : numbers;
        std::copy(source.begin(), source.end(), target.begin());
    }
}

void SqxMachine::ApplySettings()
{
    for (std::size_t i = 0; i < Shader().predefinedCount; ++i)
        SetVariable(i, SqxDefaultValues(Shader().variables[i].name, m_grid));
    for (const auto& [name, setting] : m_settings) {
        const auto number = FindNamed(name);
        if (!number)
            continue;  // a setting may be meant for other shaders
        if (Shader().variables[*number].type != SqxType::String)
            SetVariable(*number, setting.numbers);
        else
            for (std::size_t i = 0; i < m_grid.Size(); ++i)
                m_store->Texts(*number, i)[0] = setting.text;
    }
}

QxVector3 SqxMachine::PredefinedTriple(const char* name, std::size_t point)
{
    if (const auto number = FindNamed(name)) {
        const auto numbers = m_store->Numbers(*number, point);
        return {numbers[0], numbers[1], numbers[2]};
    }
    const auto numbers = SqxDefaultValues(name, m_grid);
    const std::size_t first = 3 * (point == k_uniformPoint ? 0 : point);
    return {numbers[first], numbers[first + 1], numbers[first + 2]};
}
