// Visits the operands that each instruction reads and writes, for all passes. They are passed by
// reference, so that a pass can also replace an operand.
//
// Only a call needs more than its row of SlcICodeClasses.def: which arguments are outputs depends
// on the function. An output argument is also read, since a call may leave it unchanged. A constant
// in its position stands for an output that the source omits, and is not written.
//
// Tested by tests/icode/SlcOperandWalkerTest.cpp; docs/icode.md shows the same as a table, which
// tests/layers compares with the rows.

#include "icode/SlcOperandWalker.h"

#include "icode/SlcICodeFields.h"
#include "symbols/SlcCallFormals.h"

namespace {

/// True if the built-in writes the argument at `position`.
bool IsOutputArg(const SlcCallICode& call, std::size_t position)
{
    // A constant stands for an output that the source omits.
    return !call.m_args[position]->IsConst() && call.m_funcEntry &&
           SlcFormalAt(*call.m_funcEntry, position).isOutput;
}

}  // namespace

void SlcOperandWalker::ReadWrite(SlcOperand& operand)
{
    Read(operand);
    Write(operand);
}

/// Passes the fields of an instruction to the walker, except fields that are not set.
struct SlcOperandWalker::Fields {
    SlcOperandWalker& walker;

    template <class... Field>
    void Reads(Field&&... fields)
    {
        (Read(fields), ...);
    }
    template <class... Field>
    void Writes(Field&&... fields)
    {
        (Write(fields), ...);
    }

    void Read(SlcOperand& operand)
    {
        if (operand)
            walker.Read(operand);
    }
    void Read(SlcGridForm& form) { ReadCondition(form.condition); }
    void Read(SlcLimitedBy& limit) { ReadCondition(limit.flag); }
    template <class Container>
    void Read(Container& operands)
    {
        for (SlcOperand& operand : operands)
            Read(operand);
    }
    void ReadCondition(SlcOperand& condition)
    {
        if (condition)
            walker.ReadCondition(condition);
    }

    void Write(SlcOperand& operand)
    {
        if (operand)
            walker.Write(operand);
    }
    void Write(SlcArraysOf& list)
    {
        for (SlcOperand& operand : list.operands)
            if (operand->GetType()->IsArrayType())
                Write(operand);
    }
    template <class Container>
    void Write(Container& operands)
    {
        for (SlcOperand& operand : operands)
            Write(operand);
    }
};

#define SLC_ICODE_OPERANDS(name, base, traits, reads, writes)                                      \
    void SlcOperandWalker::Case(SlcPtr<name> code)                                                 \
    {                                                                                              \
        Fields fields{*this};                                                                      \
        SlcVisitFields(&*code, fields);                                                            \
    }
#include "icode/SlcICodeClasses.def"

void SlcOperandWalker::Case(SlcPtr<SlcCallICode> code)
{
    if (code->m_form.condition)
        ReadCondition(code->m_form.condition);
    for (std::size_t i = 0; i < code->m_args.size(); ++i)
        if (!IsOutputArg(*code, i))
            Read(code->m_args[i]);
    for (std::size_t i = 0; i < code->m_args.size(); ++i)
        if (IsOutputArg(*code, i))
            ReadWrite(code->m_args[i]);
    if (code->m_result)
        Write(code->m_result);
}

void SlcOperandWalker::Default(SlcPtr<SlcICode>) {}
