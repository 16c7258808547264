// The lights of the machine: their evaluation, and the loops over them.

#include "machine/SqxMachine.h"

void SqxMachine::EvaluateLights(const std::vector<QxVector3>& positions)
{
    const std::size_t points = m_grid.Size();
    m_litPositions = positions;
    m_lights.assign(m_lightCount, {std::vector<QxVector3>(points), std::vector<QxRGBColor>(points),
                                   std::vector<QxRGBColor>(points)});
    m_lightInputs.clear();
    for (LightValues& light : m_lights)
        m_lightInputs.push_back({light.L.data(), light.Cl.data(), light.Ol.data()});
    m_support->EvaluateLights(m_litPositions.data(), static_cast<unsigned int>(points),
                              m_lightInputs.data(), static_cast<unsigned int>(m_lightCount));
    if (!m_lightLoops.empty())
        TakeLight(m_lightLoops.back().light);
}

QxLights SqxMachine::Lights() const
{
    if (!m_lightsAreForP)
        throw SqxFault{"Lights are asked for that were not run for P"};
    return {m_support, m_litPositions.data(), m_lightInputs.data(),
            static_cast<unsigned int>(m_lightInputs.size())};
}

const QxLightInput& SqxMachine::CurrentLight() const
{
    if (m_lightLoops.empty())
        throw SqxFault{"No loop over lights is open"};
    return m_lightInputs[m_lightLoops.back().light];
}

std::size_t SqxMachine::BeginLights(const SqxCode& code, std::size_t index)
{
    if (m_litPositions.empty())
        throw SqxFault{"A loop over lights that were not run"};
    if (m_lightInputs.empty())
        return code.other;
    m_lightLoops.push_back({index, 0});
    TakeLight(0);
    return index + 1;
}

/// Takes the next light and returns the index of the first instruction in the loop; after the last
/// light, returns the index after the loop. The jump target of `code` identifies the loop. Inner
/// loops that a jump has left end here too.
std::size_t SqxMachine::EndLights(const SqxCode& code, std::size_t index)
{
    while (!m_lightLoops.empty() && m_lightLoops.back().begin + 1 != code.other)
        m_lightLoops.pop_back();
    if (m_lightLoops.empty())
        throw SqxFault{"The end of a loop over lights that was not begun"};
    const std::size_t next = m_lightLoops.back().light + 1;
    if (next < m_lightInputs.size()) {
        m_lightLoops.back().light = next;
        TakeLight(next);
        return code.other;
    }
    m_lightLoops.pop_back();
    if (!m_lightLoops.empty())
        TakeLight(m_lightLoops.back().light);
    return index + 1;
}

/// Sets the predefined variables of light loops to the values of a light.
void SqxMachine::TakeLight(std::size_t light)
{
    const LightValues& values = m_lights[light];
    for (std::size_t i = 0; i < m_grid.Size(); ++i) {
        const auto give = [&](const char* name, const auto& triple) {
            if (const auto number = FindNamed(name)) {
                const auto numbers = m_store->Numbers(*number, i);
                for (int j = 0; j < 3; ++j)
                    numbers[static_cast<std::size_t>(j)] = triple[j];
            }
        };
        give("L", values.L[i]);
        give("Cl", values.Cl[i]);
        give("Ol", values.Ol[i]);
    }
}
