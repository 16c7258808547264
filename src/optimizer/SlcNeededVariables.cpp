// Mark and sweep over variables: what control flow, calls and outputs read is needed, and so is
// what a needed variable is computed from.
//
//     while c; b = a; c2 = b; a = c2; endwhile       a, b and c2 keep each other alive, and nothing
//                                                    else reads them: none is needed
//
// Ron Cytron and others, "Efficiently computing static single assignment form and the control
// dependence graph" (1991), section 7.1, has it for values; ours marks variables, since the code is
// in no such form, and takes all control flow for needed.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...).

#include "optimizer/SlcNeededVariables.h"

void SlcNeededVariables::AddReads(std::span<const int> uses)
{
    for (const int variable : uses) {
        if (m_needed[variable])
            continue;
        m_needed[variable] = true;
        m_found.push_back(variable);
    }
}

void SlcNeededVariables::AddComputation(int variable, std::span<const int> uses)
{
    m_computations.push_back({variable, static_cast<int>(m_uses.size())});
    m_uses.insert(m_uses.end(), uses.begin(), uses.end());
}

void SlcNeededVariables::Solve()
{
    // The computations of each variable, as a chain through `next`.
    std::vector<int> first(m_needed.size(), -1);
    std::vector<int> next(m_computations.size());
    for (std::size_t i = 0; i < m_computations.size(); ++i) {
        next[i] = first[m_computations[i].variable];
        first[m_computations[i].variable] = static_cast<int>(i);
    }
    m_computations.push_back({-1, static_cast<int>(m_uses.size())});
    while (!m_found.empty()) {
        const int variable = m_found.back();
        m_found.pop_back();
        for (int i = first[variable]; i >= 0; i = next[i])
            AddReads(std::span(m_uses).subspan(m_computations[i].firstUse,
                                               m_computations[i + 1].firstUse -
                                                   m_computations[i].firstUse));
    }
}
