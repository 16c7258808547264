#pragma once

#include <vector>

#include "kernels/QxKernel.h"

/// What the machine does for one instruction.
enum class QxCodeStep : std::uint8_t {
    Kernel,         // within parallel brackets: for the current points
    Once,           // outside of them: for the whole grid at once, with uniform operands
    Grid,           // for all points
    GridIf,         // for the points of a flag
    BeginParallel,  // target: after the end
    EndParallel,
    IfTrue,  // within parallel brackets
    IfFalse,
    EndIf,
    Goto,        // also within parallel brackets, but not within conditions
    GotoIfTrue,  // by a uniform flag
    GotoIfFalse,
    BeginLights,  // target: after the loop
    EndLights,    // target: the first instruction of the loop
    Stop,
};

/// An instruction, made ready to run: 64 bytes, as many as a line of the cache has. Which
/// fields count is said by the step; the translation fills them in, and a run only reads.
struct QxCode {
    QxKernel all = nullptr;
    QxKernel masked = nullptr;
    QxPointKernel point = nullptr;        // null: `all` serves a grid of one point too
    const QxOperand* operands = nullptr;  // without counts and the condition
    std::uint32_t count = 0;              // of them
    std::uint32_t target = 0;             // index of an instruction
    std::int32_t number = 0;  // a literal: of a space, shadeop or source line; of a condition, how
                              // far it is to what follows its brackets
    QxOperand flag;           // the condition
    QxCodeStep step = QxCodeStep::Kernel;
    bool whole = false;      // GridIf: reads neighbours, or has effects where the flag is not set
    bool copyFlag = false;   // If: the brackets write their own flag
    bool pointwise = false;  // BeginParallel: one point after the other
};

/// A code block, made ready to run. Codes point into `operands`, which therefore stays as it is
/// from then on; the block may be moved.
struct QxProgramBlock {
    std::vector<QxCode> codes;          // ended by Stop
    std::vector<QxOperand> operands;    // of all instructions
    std::vector<std::uint32_t> clears;  // locals that may be read before they are written
};
