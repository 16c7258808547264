#pragma once

#include <string>
#include <vector>

#include "machine/SqxGridOperations.h"

/// How the machine executes an instruction.
enum class SqxStep : unsigned char {
    Plain,  // an operation at one point, or once for the whole grid
    Simd,   // the same operation at all points, outside the brackets
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
    std::vector<int> operands;  // variables and literals; without counts and the condition
    int condition = -1;         // flag of the points that a Simd or Grid step is limited to
    bool wanted = true;         // required value of the flag of If and GotoIf
    bool isStatement = false;   // of lights: its flag, operand 0, is false at points left out
    std::size_t other = 0;      // index of the target, or of the bracket's other end
    int number = 0;             // of a shadeop
    const SqxInstruction* source = nullptr;
};

/// A code block that is prepared to run: its operations, targets and brackets are resolved.
class SqxProgram {
public:
    /// Throws `SqxFault` if something in the block is unknown or its brackets do not nest. The
    /// block must outlive the program.
    explicit SqxProgram(const SqxBlock& block);
    /// True if the machine supports the primitive.
    [[nodiscard]] static bool Knows(SqxPrimitive primitive);
    [[nodiscard]] const std::vector<SqxCode>& Codes() const { return m_codes; }

private:
    [[nodiscard]] static SqxCode Translate(const SqxBlock& block, const SqxInstruction& source);
    void MatchBrackets();

    std::vector<SqxCode> m_codes;
};
