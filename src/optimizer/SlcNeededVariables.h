#pragma once

#include <span>
#include <vector>

#include "optimizer/SlcDefUse.h"

/// Finds the variables that the code needs: those that are read for more than to compute unneeded
/// variables.
///
/// The analysis ignores the order of the code, so it finds less than liveness in straight-line
/// code. But it finds in one step chains that only feed themselves around a loop, of which liveness
/// removes one link per round. Linear in the instructions.
class SlcNeededVariables {
public:
    /// `variables` is the number of variables.
    explicit SlcNeededVariables(int variables) : m_needed(variables, false) {}

    /// Adds an instruction that does more than compute one variable.
    void AddReads(std::span<const int> uses);
    /// Adds an instruction that only computes the variable from `uses`, and can be removed with it.
    void AddComputation(int variable, std::span<const int> uses);
    /// Call it after the last instruction.
    void Solve();

    [[nodiscard]] bool IsNeeded(int variable) const { return m_needed[variable]; }

private:
    struct Computation {
        int variable;
        int firstUse;  // in m_uses, up to that of the next computation
    };

    std::vector<bool> m_needed;
    std::vector<int> m_found;  // needed variables whose computations have not been processed
    std::vector<Computation> m_computations;
    std::vector<int> m_uses;
};
