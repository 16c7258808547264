// Loops over lights. They are outside parallel brackets, have one iteration for each light, and may
// be nested. In loops, `L`, `Cl` and `Ol` have the values of the current light of the innermost
// loop. A jump out of loops ends them.
//
// Tested by tests/machine/QxMachineRunTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/run/QxMachineRun.h"

const QxCode* QxMachineRun::BeginLights(const QxProgramBlock& block, const QxCode* code)
{
    m_state.lightNumber = 0;
    if (m_state.lightCount == 0)
        return block.codes.data() + code->target;
    m_loops.push_back(0);
    TakeLight();
    return code + 1;
}

const QxCode* QxMachineRun::EndLights(const QxProgramBlock& block, const QxCode* code)
{
    const QxCode* const begin = block.codes.data() + code->target;
    CountSteps(static_cast<std::size_t>(code - begin) + 1);
    m_state.lightNumber = ++m_loops.back();
    const bool more = m_state.lightNumber < m_state.lightCount;
    if (!more)
        m_loops.pop_back();
    TakeLight();
    return more ? begin : code + 1;
}

/// Ends the innermost loops until `loops` of them are open.
void QxMachineRun::LeaveLights(std::size_t loops)
{
    m_loops.resize(loops);
    TakeLight();
}

/// Binds the predefined variables of light loops to the values of the current light, or to those of
/// the grid outside all loops.
void QxMachineRun::TakeLight()
{
    m_state.light = nullptr;
    if (!m_loops.empty()) {
        m_state.lightNumber = m_loops.back();
        m_state.light = &m_state.lights[m_state.lightNumber];
    }
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
