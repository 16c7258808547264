#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

#include "machine/run/QxMachineProgram.h"
#include "machine/run/QxMachineStore.h"

/// What one run of a program needs for itself. It may be used for one grid after the other, and
/// then keeps its memory; a grid of another size than the one before costs new memory. For one
/// thread at a time; other threads have runs of their own of the same program.
class QxMachineRun : private QxWorkCounter {
public:
    // Of one evaluation, unless they are set.
    static constexpr std::size_t k_stepLimit = 10'000'000;
    static constexpr std::size_t k_memoryLimit = std::size_t{1} << (sizeof(void*) > 4 ? 32 : 31);

    /// The program must outlive the run.
    explicit QxMachineRun(const QxMachineProgram& program);

    /// An evaluation that takes more steps than this throws `QxHostError`: the shader does not end.
    /// Steps are instructions that run again: those that a jump back has left behind, whatever the
    /// size of the grid. Counted by itself, and for the average point, is the work on texts and
    /// lists: characters, values, and states of regular expressions.
    void SetStepLimit(std::size_t limit) { m_stepLimit = limit; }
    /// An evaluation whose variables need more bytes than this throws `QxHostError`.
    void SetMemoryLimit(std::size_t bytes) { m_memoryLimit = bytes; }
    /// An evaluation asks this every few milliseconds, in its own thread, and throws
    /// `QxHostStopped` when it says so. Nothing is asked after an empty one.
    void SetStopTest(std::function<bool()> test) { m_stopTest = std::move(test); }

    // Each of these throws `QxHostError`, and may be called again then. The variables are those
    // that `QxMachineProgram::Declare` made, with room for the points of the grid.

    /// Gives the variables that the host has not set their default values, but for those that are
    /// computed from shading data.
    void Initialize(const QxShadingContext& context, std::vector<QxVar>& variables);
    /// Shades a grid: reads and writes the values of `hidden` and of the variables. Computes the
    /// other default values first. What `hidden` lacks reads as zero. `lights`: room for the values
    /// of each light at each point, which the context's support fills when it is asked.
    void Evaluate(const QxGrid& grid, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights);

private:
    struct LightLoop {
        const QxCode* begin;  // its first instruction
        unsigned int light;
    };

    /// `firstDraw`: with what the counts of `random` begin.
    void Start(const QxGrid& grid, const QxShadingContext& context, std::vector<QxVar>& variables,
               unsigned int firstDraw);
    void InitializeAtPoints(std::vector<QxVar>& variables);
    void RunBlock(const QxProgramBlock& block);
    void RunBlockAtPoint(const QxProgramBlock& block);
    void RunParallel(const QxCode* codes, const QxCode* begin);
    void RunStrip(const QxCode* codes, const QxCode* begin, unsigned int first, unsigned int count);
    [[nodiscard]] const QxCode* Jump(const QxCode* codes, const QxCode* code);
    [[nodiscard]] const QxCode* Enter(const QxCode* code, QxPoints& points, unsigned int depth);
    void RunWhere(const QxCode& code);
    [[nodiscard]] const QxCode* BeginLights(const QxProgramBlock& block, const QxCode* code);
    [[nodiscard]] const QxCode* EndLights(const QxProgramBlock& block, const QxCode* code);
    void TakeLight();
    void CountSteps(std::size_t steps);
    void CountWork(std::size_t work);
    void CountInner(std::size_t work) override;
    void TellNotes();
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
    std::size_t m_innerWork = 0;  // of this evaluation
    std::function<bool()> m_stopTest;
    std::size_t m_memoryLimit = k_memoryLimit;
    std::size_t m_work = 0;                           // since the clock was looked at
    std::chrono::steady_clock::time_point m_asked;    // when the test was
    std::vector<LightLoop> m_loops;                   // innermost last
    std::vector<std::vector<QxStopAndBool>> m_masks;  // by depth of conditions
    std::vector<const QxStopAndBool*> m_outer;        // masks of the conditions that are open
};
