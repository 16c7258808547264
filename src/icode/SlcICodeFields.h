#pragma once

#include "icode/SlcICodes.h"

/// Marks a field that holds the flag of the points for which the instruction runs.
struct SlcLimitedBy {
    explicit SlcLimitedBy(SlcOperand& operand) : flag(operand) {}

    SlcOperand& flag;  // null operand: all points
};

/// Marks a list of operands in which the instruction may write the arrays, but no other operand.
struct SlcArraysOf {
    explicit SlcArraysOf(std::deque<SlcOperand>& list) : operands(list) {}

    std::deque<SlcOperand>& operands;
};

/// Passes the operands of an instruction whose class lists them in SlcICodeClasses.def to `visit`:
/// one call `visit.Reads(fields...)`, then one call `visit.Writes(fields...)`. A field is an
/// `SlcOperand&`, which may be null, a container of them, an `SlcGridForm&`, an `SlcLimitedBy` or
/// an `SlcArraysOf`.
#define SLC_ICODE_OPERANDS(name, base, traits, reads, writes)                                      \
    template <class Visitor>                                                                       \
    void SlcVisitFields([[maybe_unused]] name* code, Visitor& visit)                               \
    {                                                                                              \
        visit.Reads reads;                                                                         \
        visit.Writes writes;                                                                       \
    }
#include "icode/SlcICodeClasses.def"
