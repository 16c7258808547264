#pragma once

#include <string>
#include <vector>

#include "machine/SqxGridOperations.h"

/// How the machine executes an instruction.
enum class SqxStep : unsigned char {
    Plain,  // an operation at one point, or once for the whole grid
    Simd,   // the same operation at all points, outside the parallel brackets
    Grid,   // an operation on all points at once
    BeginParallel,
    EndParallel,
    If,
    EndIf,
    Goto,
    GotoIf,
    SetBool,
    BeginLights,
    EndLights,
    EvalLights,
    EvalLightsForP,
    ResetLights,
    ArrayRef,
    CheckIndex,
    CallShadeop,
};

struct SqxCode {
    SqxStep step = SqxStep::Plain;
    SqxOperation operation = nullptr;          // Plain, Simd
    SqxGridOperation gridOperation = nullptr;  // Grid
    // The variables and literals, without counts, condition, jump target and number of a shadeop.
    std::vector<int> operands;
    int condition = -1;  // flag of the points that a Simd or Grid step is limited to
    bool wanted = true;  // required value of the flag of If and GotoIf
    // True for a light statement: its flag, operand 0, becomes false where the condition is false.
    bool isStatement = false;
    std::size_t other = 0;  // index of the jump target, or of the bracket's other end
    int number = 0;         // index of the called shadeop in the file
    const SqxInstruction* source = nullptr;
};

/// A code block that is prepared to run: its operations, targets and brackets are resolved.
class SqxProgram {
public:
    /// Throws `SqxFault` if the machine does not support an instruction of the block, or if its
    /// brackets do not nest. The block must outlive the program.
    explicit SqxProgram(const SqxBlock& block);
    /// True if the machine supports the primitive.
    [[nodiscard]] static bool Knows(SqxPrimitive primitive);
    [[nodiscard]] const std::vector<SqxCode>& Codes() const { return m_codes; }

private:
    [[nodiscard]] static SqxCode Translate(const SqxBlock& block, const SqxInstruction& source);
    void MatchBrackets();

    std::vector<SqxCode> m_codes;
};
