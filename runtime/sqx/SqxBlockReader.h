#pragma once

#include <cstddef>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// Reads blocks of code within the text of a byte-code file. All faults throw `SqxMalformed`, with
/// the line of the number at fault; what was read by then stands in the block.
class SqxBlockReader {
public:
    /// Reads on where the cursor stands. `shader`: what was read of the file so far. Both must
    /// outlive this.
    SqxBlockReader(SqxCursor& cursor, const SqxShader& shader) : m_cursor(cursor), m_shader(shader)
    {
    }

    /// Reads a block, its count first, and finds its instructions. `names`: so many of the shader's
    /// variables the block may name. O(n log n) for n numbers.
    void Read(SqxBlock& block, std::size_t names);

    /// Whether the block calls shadeops of the file alone, which stand behind the first blocks.
    void CheckShadeops(const SqxBlock& block) const;

private:
    void Decode(SqxBlock& block, std::size_t names) const;
    [[nodiscard]] SqxInstruction InstructionAt(const SqxBlock& block, std::size_t position) const;
    void CheckValue(const SqxBlock& block, const SqxInstruction& instruction, std::size_t i,
                    std::size_t names) const;
    void CheckJumps(const SqxBlock& block) const;

    SqxCursor& m_cursor;
    const SqxShader& m_shader;
};
