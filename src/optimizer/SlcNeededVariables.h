#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Finds the variables that the code needs: those that are read by an instruction that does more
/// than compute one variable, or by one that computes a needed variable.
///
/// The analysis ignores the order of the code, so in straight-line code it finds less dead code
/// than liveness does. But it also finds variables that only feed each other around a loop, which
/// liveness keeps, and it finds in one step a dead chain of assignments across iterations, of which
/// liveness finds one per round. Linear in the instructions.
class SlcNeededVariables {
public:
    /// `variables` is the number of variables.
    explicit SlcNeededVariables(int variables) : m_needed(variables, 0), m_last(variables, -1) {}

    /// Adds an instruction that reads `uses` and does more than compute one variable.
    void AddReads(std::span<const int> uses);
    /// Adds an instruction that only computes `variable` from `uses`, and can be removed if the
    /// variable is not needed. The memory of `uses` must live until the end of `Solve`.
    void AddComputation(int variable, std::span<const int> uses);
    /// Finds the needed variables. Call once, after all instructions have been added.
    void Solve();

    // Valid after `Solve`.

    [[nodiscard]] bool IsNeeded(int variable) const { return m_needed[variable] != 0; }
    /// True if `other`, for the same number of variables, has found the same ones to be needed.
    [[nodiscard]] bool FoundTheSame(const SlcNeededVariables& other) const
    {
        return m_needed == other.m_needed;
    }

private:
    struct Computation {
        int next;  // the previous computation of the variable, or -1
        std::span<const int> uses;
    };

    std::vector<std::uint8_t> m_needed;  // by variable
    std::vector<int> m_last;             // by variable: its last computation, or -1
    std::vector<int> m_found;  // needed variables whose computations have not been processed
    std::vector<Computation> m_computations;
};
