// Loops over lights. They are outside parallel brackets, have one iteration for each light, and may
// be nested. While a loop runs, `L`, `Cl` and `Ol` have the values of its current light.
//
// Tested by tests/host/AgreementTest.cpp.

#include <algorithm>

#include "machine/run/QxMachineRun.h"

const QxCode* QxMachineRun::BeginLights(const QxProgramBlock& block, const QxCode* code)
{
    m_state.lightNumber = 0;
    if (m_state.lightCount == 0)
        return block.codes.data() + code->target;
    m_loops.push_back({code + 1, 0});
    TakeLight();
    return code + 1;
}

/// Also ends inner loops that a jump has left.
const QxCode* QxMachineRun::EndLights(const QxProgramBlock& block, const QxCode* code)
{
    const QxCode* const begin = block.codes.data() + code->target;
    while (!m_loops.empty() && m_loops.back().begin != begin)
        m_loops.pop_back();
    if (m_loops.empty())
        return code + 1;
    CountSteps(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, code - begin)) + 1);
    m_state.lightNumber = ++m_loops.back().light;
    const bool more = m_state.lightNumber < m_state.lightCount;
    if (!more)
        m_loops.pop_back();
    TakeLight();
    return more ? begin : code + 1;
}

/// Binds the predefined variables of light loops to the values of the current light, or to those of
/// the grid outside all loops.
void QxMachineRun::TakeLight()
{
    m_state.light = m_loops.empty() ? nullptr : &m_state.lights[m_loops.back().light];
    for (std::size_t i = 0; i < 3; ++i)
        for (const std::uint32_t variable : m_code.lightVariables[i]) {
            void* value = m_store.Home(variable);
            if (m_state.light)
                value = i == 0   ? static_cast<void*>(m_state.light->L)
                        : i == 1 ? static_cast<void*>(m_state.light->Cl)
                                 : static_cast<void*>(m_state.light->Ol);
            m_state.values[variable] = value;
        }
}
