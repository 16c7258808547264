// Checks that random shaders compute the expected values, at every optimization level and in both
// machines, and that those which break the rules of uniform and varying values are refused.
//
// SLC_REFERENCE_SEED and SLC_REFERENCE_COUNT select other shaders and their number.

#include <gtest/gtest.h>

#include <exception>

#include "random/RandomRun.h"
#include "random/ShrinkStatements.h"
#include "shaders/ReferenceShader.h"

namespace {

/// A fault and its kind, which stays the same while the shader is made smaller.
struct Fault {
    enum Kind { None, Accepted, Refused, Values } kind = None;
    std::string text = {};
    unsigned int levels = 0;  // that have been compared
};

/// Returns the expected values at the first points of the machine's grid of 3 by 2.
RunOutcome Expected(const ReferenceProgram& program, int points)
{
    RunOutcome outcome;
    for (const ReferenceVariable* output : program.outputs)
        outcome.outputs.push_back({output->name, {}});
    for (int point = 0; point < points; ++point) {
        const int row = point / 3;
        const auto numbers =
            EvaluateAtPoint(program, 0.5F * static_cast<float>(point % 3), static_cast<float>(row));
        auto next = numbers.begin();
        for (std::size_t i = 0; i < program.outputs.size(); ++i) {
            const auto end = next + (program.outputs[i]->type == ReferenceType::Point ? 3 : 1);
            auto& all = outcome.outputs[i].numbers;
            all.insert(all.end(), next, end);
            next = end;
        }
    }
    return outcome;
}

/// Sorts the outputs like those of `wanted`, and removes those that `wanted` does not have.
void Align(RunOutcome& outcome, const RunOutcome& wanted)
{
    std::vector<RunOutcome::Output> outputs;
    for (const auto& output : wanted.outputs)
        for (auto& own : outcome.outputs)
            if (own.name == output.name)
                outputs.push_back(std::move(own));
    outcome.outputs = std::move(outputs);
}

Fault FindValueFault(const std::string& source, const ReferenceProgram& program)
{
    RunOutcome expected = Expected(program, 6);
    RunOutcome first = Expected(program, 1);
    unsigned int levels = 0;
    for (int level = 0; level <= 3; ++level) {
        const std::string byteCode = ByteCodeOf(source, level);
        if (byteCode.empty())
            continue;  // too large for byte-code
        RunOutcome outcome = RunByteCode(byteCode);
        Align(outcome, expected);
        if (outcome.fault.empty()) {
            Align(expected, outcome);
            Align(first, outcome);
        }
        std::string difference = Difference(outcome, expected);
        if (difference.empty())
            difference = MachineDifference(byteCode, outcome);
        if (difference.empty() && outcome.fault.empty())
            difference = Difference(RunAtOnePoint(byteCode, outcome), first);
        if (!difference.empty())
            return {Fault::Values, "-O" + std::to_string(level) + ": " + difference};
        ++levels;
    }
    return {Fault::None, "", levels};
}

Fault FindFault(const ReferenceProgram& program)
{
    const std::string source = program.Text();
    SlcOptionsControl options;
    options.m_validateICode = true;
    const CheckedShader checked(source, options);
    const bool accepted = checked.IsAccepted();
    const ReferenceVerdict verdict = JudgeProgram(program);
    if (!accepted) {
        if (verdict == ReferenceVerdict::Accepted)
            return {Fault::Refused, checked.Output()};
        return {};
    }
    if (verdict == ReferenceVerdict::Refused)
        return {Fault::Accepted, "is accepted"};
    return FindValueFault(source, program);
}

/// Returns the kind of the fault of a program from which statements have been removed; none if the
/// fault may come from the removal.
Fault::Kind FaultKind(const ReferenceProgram& program)
{
    try {
        const Fault fault = FindFault(program);
        if (fault.kind != Fault::Refused)
            return fault.kind;
        for (const char* missing : {"Undefined", "outer scope", "doesn't return"})
            if (fault.text.find(missing) != std::string::npos)
                return Fault::None;
        return fault.kind;
    } catch (const std::exception&) {
        return Fault::None;
    }
}

bool ShrinkFunctions(std::vector<ReferenceStatement>& list, const auto& stillFails)
{
    bool smaller = false;
    for (ReferenceStatement& statement : list) {
        if (statement.function)
            smaller |= ShrinkStatements(statement.function->body, stillFails);
        smaller |= ShrinkFunctions(statement.body, stillFails);
        smaller |= ShrinkFunctions(statement.otherwise, stillFails);
    }
    return smaller;
}

void Shrink(ReferenceProgram& program, Fault::Kind kind)
{
    const auto stillFails = [&] { return FaultKind(program) == kind; };
    if (!stillFails())
        return;
    for (bool smaller = true; smaller;) {
        smaller = ShrinkStatements(program.body, stillFails);
        smaller |= ShrinkFunctions(program.body, stillFails);
        for (auto& function : program.functions)
            smaller |= ShrinkStatements(function->body, stillFails);
        for (std::size_t i = program.functions.size(); i-- > 0;) {
            const auto functions = program.functions;
            program.functions.erase(program.functions.begin() + static_cast<std::ptrdiff_t>(i));
            if (!stillFails())
                program.functions = functions;
        }
    }
}

}  // namespace

TEST(ReferenceShaders, ComputeTheExpectedValues)
{
    const unsigned int first = Setting("SLC_REFERENCE_SEED", 1);
    const unsigned int count = Setting("SLC_REFERENCE_COUNT", 300);
    unsigned int verdicts[3] = {};
    unsigned int levels = 0;
    for (unsigned int seed = first; seed < first + count; ++seed) {
        ReferenceProgram program = ReferenceShader(seed).Make();
        ++verdicts[static_cast<int>(JudgeProgram(program))];
        const Fault fault = FindFault(program);
        levels += fault.levels;
        if (fault.kind == Fault::None)
            continue;
        Shrink(program, fault.kind);
        ADD_FAILURE() << "seed " << seed << ", " << fault.text
                      << "\nsmaller: " << FindFault(program).text << '\n'
                      << program.Text();
    }
    std::cout << "seeds from " << first << ": " << verdicts[0] << " accepted, " << verdicts[1]
              << " open, " << verdicts[2] << " refused\n";
    // A short run may consist of shaders that are refused or too large for byte-code.
    EXPECT_GE(verdicts[0] + 5, count * 8 / 10);
    EXPECT_GE(levels + 20, 4 * verdicts[0] * 9 / 10);
}
