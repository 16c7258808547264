// Reads the numbers of a block line by line, then decodes the instructions: the number of an
// instruction determines its layout, and the layout determines the number of operands. If a list of
// arguments follows, one of the operands is their count:
//
//     CALL_PRIM_CONCAT 2 r s1 s2     layout "nw*": n is 2, the count; w is r; * is s1 and s2
//
// An operand that refers to something must refer to an existing item, and the target of a jump must
// be the start of an instruction or the end of the block. So code that uses a block need not check
// its references.
//
// Tested by tests/backends/SqxReaderTest.cpp and the fuzz target `bytecode`.

#include "sqx/SqxBlockReader.h"

#include <string>

void SqxBlockReader::Read(SqxBlock& block, std::size_t names)
{
    const int count = m_cursor.ReadCountLine("Number of values");
    block.line = m_cursor.Line();
    for (int i = 0; i < count; ++i) {
        const int line = m_cursor.Line();
        const int value = m_cursor.ReadIntLine("Value");
        if (value != static_cast<std::int16_t>(value))
            m_cursor.FailAt(line, "Value " + std::to_string(value) + " does not fit into 16 bits");
        block.code.push_back(static_cast<std::int16_t>(value));
    }
    Decode(block, names);
    CheckJumps(block);
}

void SqxBlockReader::Decode(SqxBlock& block, std::size_t names) const
{
    for (std::size_t position = 0; position < block.code.size();) {
        const SqxInstruction instruction = InstructionAt(block, position);
        for (std::size_t i = 0; i < instruction.count; ++i)
            CheckValue(block, instruction, i, names);
        position += 1 + instruction.count;
        block.instructions.push_back(instruction);
    }
}

SqxInstruction SqxBlockReader::InstructionAt(const SqxBlock& block, std::size_t position) const
{
    const int number = block.code[position];
    SqxInstruction instruction;
    instruction.position = position;
    instruction.layout = SqxLayout::Find(number);
    if (!instruction.layout)
        m_cursor.FailAt(block.Line(instruction), "Unknown instruction " + std::to_string(number) +
                                                     " at " + std::to_string(position));
    const std::string_view operands = instruction.layout->operands;
    instruction.count = operands.size();
    const auto counter = operands.find('n');
    const auto fail = [&](const char* fault) {
        m_cursor.FailAt(block.Line(instruction), block.Place(instruction) + fault);
    };
    if (counter != std::string_view::npos && position + 1 + counter < block.code.size()) {
        const int extra = block.Value(instruction, counter);
        if (extra < 0)
            fail(" has a negative number of arguments");
        instruction.count += static_cast<std::size_t>(extra) - 1;
        if (instruction.count < instruction.layout->LeastCount())
            fail(" has too few arguments");
    }
    if (position + 1 + instruction.count > block.code.size())
        fail(" goes beyond the end of its block");
    return instruction;
}

void SqxBlockReader::CheckValue(const SqxBlock& block, const SqxInstruction& instruction,
                                std::size_t i, std::size_t names) const
{
    std::size_t count = names;
    switch (SqxBlock::Letter(instruction, i)) {
    case 'i':
    case 'n':
    case 'd':
    case 'j':  // 'd' and 'j' are checked later: their targets may not have been read yet
        return;
    case 's':
        count = m_shader.spaces.size();
        break;
    default:
        break;
    }
    const int value = block.Value(instruction, i);
    if (value < 0 || static_cast<std::size_t>(value) >= count)
        m_cursor.FailAt(block.Line(instruction, i), block.BadValue(instruction, i));
}

void SqxBlockReader::CheckJumps(const SqxBlock& block) const
{
    for (const SqxInstruction& instruction : block.instructions) {
        if (!instruction.layout->operands.ends_with('j'))
            continue;
        const std::size_t i = instruction.count - 1;
        const int value = block.Value(instruction, i);
        const auto position = static_cast<std::size_t>(value);
        const std::size_t target = value < 0 ? 0 : block.IndexOf(position);
        const bool isStart = target < block.instructions.size()
                                 ? block.instructions[target].position == position
                                 : position == block.code.size();
        if (value < 0 || !isStart)
            m_cursor.FailAt(block.Line(instruction, i), block.BadValue(instruction, i));
    }
}

void SqxBlockReader::CheckShadeops(const SqxBlock& block) const
{
    for (const SqxInstruction& instruction : block.instructions) {
        if (!instruction.layout->operands.starts_with('d'))
            continue;
        const int value = block.Value(instruction, 0);
        if (value < 0 || static_cast<std::size_t>(value) >= m_shader.functions.size())
            m_cursor.FailAt(block.Line(instruction, 0), block.BadValue(instruction, 0));
    }
}
