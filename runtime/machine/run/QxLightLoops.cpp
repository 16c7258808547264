// Loops over lights. They stand outside of the parallel brackets, one round for each light, and may
// be within each other. While one runs, `L`, `Cl` and `Ol` are those of the light that it has come
// to.
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

/// Loops that were left by a jump end here too.
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

/// Gives the predefined variables of light loops the values of the current light, or those of the
/// grid.
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
