#pragma once

#include <span>
#include <vector>

#include "optimizer/SlcDefUse.h"

/// Variables that the code reads for more than to compute variables that nobody reads.
///
/// The order of the code does not count, so it finds less than liveness does in a straight line,
/// but it finds at once what feeds only itself around a loop, where liveness loses one link a
/// round. Linear in the instructions.
class SlcNeededVariables {
public:
    /// `variables`: how many there are.
    explicit SlcNeededVariables(int variables) : m_needed(variables, false) {}

    /// An instruction that does more than to compute one variable.
    void AddReads(std::span<const int> uses);
    /// One that reads the `uses` to compute the variable, and can go with it.
    void AddComputation(int variable, std::span<const int> uses);
    /// Behind the last instruction.
    void Solve();

    [[nodiscard]] bool IsNeeded(int variable) const { return m_needed[variable]; }

private:
    struct Computation {
        int variable;
        int firstUse;  // in m_uses, up to that of the next computation
    };

    std::vector<bool> m_needed;
    std::vector<int> m_found;  // needed, and their computations not looked at yet
    std::vector<Computation> m_computations;
    std::vector<int> m_uses;
};
