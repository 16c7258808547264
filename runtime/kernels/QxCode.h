#pragma once

#include <vector>

#include "kernels/QxKernel.h"

/// The action of the machine for one instruction.
enum class QxCodeStep : std::uint8_t {
    Kernel,         // inside parallel brackets: for the current points
    Once,           // outside of them: one time; all operands are uniform
    Grid,           // outside: for all points
    GridIf,         // outside: for the points of a flag
    BeginParallel,  // target: after the end; operands: variables with room for a strip
    EndParallel,
    IfTrue,  // inside parallel brackets
    IfFalse,
    EndIf,
    Where,       // inside parallel brackets, outside conditions: the next instructions, which are
                 // kernels, run for the points of a flag without a test whether there are any
    Goto,        // also inside parallel brackets, but not inside conditions
    GotoIfTrue,  // tests a uniform flag or, inside parallel brackets, whether a varying flag is set
                 // at any of the current points
    GotoIfFalse,
    BeginLights,  // target: after the loop
    EndLights,    // target: the first instruction of the loop
    Stop,
};

/// True for the start of conditional brackets. The code in them is for points whose flag is true
/// (`IfTrue`) or false (`IfFalse`).
inline bool QxIsCondition(QxCodeStep step)
{
    return step == QxCodeStep::IfTrue || step == QxCodeStep::IfFalse;
}

inline bool QxIsConditionalJump(QxCodeStep step)
{
    return step == QxCodeStep::GotoIfTrue || step == QxCodeStep::GotoIfFalse;
}

inline bool QxIsGoto(QxCodeStep step)
{
    return step == QxCodeStep::Goto || QxIsConditionalJump(step);
}

/// True for a goto, and for the start and the end of a loop over lights: after these, the
/// instruction at `target` may run next.
inline bool QxIsJump(QxCodeStep step)
{
    return QxIsGoto(step) || step == QxCodeStep::BeginLights || step == QxCodeStep::EndLights;
}

/// A translated instruction. If pointers have 64 bits, it has the size of a cache line, 64 bytes.
/// The step determines which fields are used. The translation fills them in, and runs only read
/// them.
struct QxCode {
    QxKernel all = nullptr;
    QxKernel masked = nullptr;
    QxPointKernel point = nullptr;        // null: `all` serves a grid of one point too
    const QxOperand* operands = nullptr;  // without counts, literals and the condition
    std::uint32_t count = 0;              // number of these operands
    std::uint32_t target = 0;             // index of an instruction
    std::int32_t number = 0;  // literal: number of a space, shadeop or source line; message: type
                              // of the answer; load: 1 if the element will be written; condition
                              // and Where: the distance to the code after their instructions;
                              // BeginParallel: points of a strip, or 0: one point if `pointwise`,
                              // otherwise the usual number; goto: number of loops over lights
                              // around its target
    QxOperand flag;           // of a condition, GridIf or conditional goto
    QxCodeStep step = QxCodeStep::Kernel;
    bool whole = false;      // GridIf: also runs if a varying flag is set at no point (light
                             // statement, message)
    bool copyFlag = false;   // IfTrue, IfFalse: the brackets write their own flag
    bool pointwise = false;  // BeginParallel: runs one point after the other
};

/// A translated code block. Codes point into `operands`, which must not change afterwards; the
/// block may be moved.
struct QxProgramBlock {
    std::vector<QxCode> codes;          // the last one is Stop
    std::vector<QxOperand> operands;    // of all instructions
    std::vector<std::uint32_t> clears;  // locals that a run sets to zero first, since they may be
                                        // read before they are written
};
