#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "machine/run/QxMachineProgram.h"
#include "machine/run/QxMachineStore.h"
#include "machine/run/QxStopTest.h"

/// The state of one run of a program. It can shade any number of grids, one after another, and
/// keeps its memory for grids of the same size. Use it in one thread at a time; other threads need
/// their own runs of the same program.
class QxMachineRun : private QxWorkCounter {
public:
    // Default limits of one call of `Initialize` or `Evaluate`.
    static constexpr std::size_t k_stepLimit = 10'000'000;
    static constexpr std::size_t k_memoryLimit = std::size_t{1} << (sizeof(void*) > 4 ? 32 : 31);

    /// The program must outlive the run.
    explicit QxMachineRun(const QxMachineProgram& program);

    /// A call of `Initialize` or `Evaluate` that takes more steps than this throws `QxHostError`,
    /// since the shader does not seem to end. A backward jump, and an iteration over lights, takes
    /// as many steps as the loop has instructions, independent of the size of the grid. The work on
    /// texts and lists (characters, values, and states of regular expressions) is counted
    /// separately, as the mean of all points, with the same limit.
    void SetStepLimit(std::size_t limit) { m_stepLimit = limit; }
    /// A call of `Initialize` or `Evaluate` that would need more bytes than this for variables and
    /// masks throws `QxHostError`. Memory that is kept from the last grid is not checked again.
    void SetMemoryLimit(std::size_t bytes) { m_memoryLimit = bytes; }
    /// `Initialize` and `Evaluate` call `test` every few milliseconds, in the thread that calls
    /// them, and throw `QxHostStopped` if the test returns true. An empty test disables this.
    void SetStopTest(QxStopTest test) { m_stopTest = std::move(test); }
    /// Discards the handles of files, which are otherwise kept from one evaluation to the next.
    /// Call it when they become invalid, for example before evaluations with another host.
    void ForgetFiles() { m_state.questions.files.Forget(); }

    // Both functions may throw `QxHostError`, `QxHostStopped` and what the host throws, and may be
    // called again afterwards. The variables must come from `QxShaderInfo::Declare`. `Evaluate`
    // throws if a varying one has values for another number of points than the grid.

    /// Assigns default values to the variables that the host has not set, except default values
    /// that depend on shading data.
    void Initialize(const QxShadingContext& context, std::vector<QxVar>& variables);
    /// Shades a grid: reads and writes the values of `hidden` and of the variables. First computes
    /// the default values that depend on shading data. Arrays missing from `hidden` are zero at
    /// first. `lights` has room for the values of each light at each point, which the context's
    /// support fills on request.
    void Evaluate(const QxGrid& grid, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights);

private:
    /// `firstDraw` is the initial value of the counters of `random`.
    void Start(const QxGrid& grid, const QxShadingContext& context, std::vector<QxVar>& variables,
               unsigned int firstDraw);
    void InitializeAtPoints(std::vector<QxVar>& variables);
    void RunBlock(const QxProgramBlock& block);
    void RunBlockAtPoint(const QxProgramBlock& block);
    void RunParallel(const QxCode* codes, const QxCode* begin);
    void RunStrip(const QxCode* codes, const QxCode* begin, unsigned int first, unsigned int count);
    [[nodiscard]] const QxCode* RunAtFlag(const QxCode* code, QxPoints points);
    [[nodiscard]] const QxCode* Jump(const QxCode* codes, const QxCode* code,
                                     const QxPoints& points);
    [[nodiscard]] bool IsTrueSomewhere(const QxCode& code, const QxPoints& points) const;
    [[nodiscard]] const QxCode* Enter(const QxCode* code, QxPoints& points, unsigned int depth);
    void RunWhere(const QxCode& code);
    [[nodiscard]] const QxCode* BeginLights(const QxProgramBlock& block, const QxCode* code);
    [[nodiscard]] const QxCode* EndLights(const QxProgramBlock& block, const QxCode* code);
    void LeaveLights(std::size_t loops);
    void TakeLight();
    void CountSteps(std::size_t steps);
    void CountWork(std::size_t work);
    void CountInner(std::size_t work) override;
    void SendNotes();
    [[nodiscard]] bool IsTrue(const QxCode& code) const
    {
        return static_cast<bool>(*static_cast<QxStopAndBool*>(m_state.values[code.flag.variable]));
    }

    const QxMachineProgram& m_program;
    const QxMachineCode& m_code;
    QxMachineStore m_store;
    QxMachineState m_state;
    std::size_t m_stepLimit = k_stepLimit;
    std::size_t m_steps = 0;
    std::size_t m_innerWork = 0;  // on texts and lists, since `Start`
    QxStopTest m_stopTest;
    std::size_t m_memoryLimit = k_memoryLimit;
    std::size_t m_work = 0;                           // since a read of the clock was last due
    std::chrono::steady_clock::time_point m_asked;    // time of the last stop test
    std::vector<unsigned int> m_loops;                // lights of the open loops, innermost last
    std::vector<std::vector<QxStopAndBool>> m_masks;  // by depth of conditions
    std::vector<const QxStopAndBool*> m_outer;        // masks around the open conditions
};
