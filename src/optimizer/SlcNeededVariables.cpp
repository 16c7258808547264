// Marks variables as needed: those read by an instruction that does more than compute one variable,
// such as a jump, a call or a write of an output, and those from which a needed variable is
// computed.
//
//     while c; b = a; c2 = b; a = c2; endwhile       a, b and c2 keep each other live, and nothing
//                                                    else reads them: none is needed
//
// Ron Cytron and others, "Efficiently computing static single assignment form and the control
// dependence graph" (1991), section 7.1, do this for values. Ours marks variables, since the code
// is not in static single assignment form, and treats all control flow as needed.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...).

#include "optimizer/SlcNeededVariables.h"

void SlcNeededVariables::AddReads(std::span<const int> uses)
{
    for (const int variable : uses) {
        if (m_needed[variable] != 0)
            continue;
        m_needed[variable] = 1;
        m_found.push_back(variable);
    }
}

void SlcNeededVariables::AddComputation(int variable, std::span<const int> uses)
{
    m_computations.push_back({m_last[variable], uses});
    m_last[variable] = static_cast<int>(m_computations.size()) - 1;
}

void SlcNeededVariables::Solve()
{
    while (!m_found.empty()) {
        const int variable = m_found.back();
        m_found.pop_back();
        for (int i = m_last[variable]; i >= 0; i = m_computations[i].next)
            AddReads(m_computations[i].uses);
    }
}
