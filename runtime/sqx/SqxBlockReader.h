#pragma once

#include <cstddef>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// Reads blocks of code within the text of a byte-code file. All faults throw `SqxMalformed`, with
/// the line of the faulty operand or instruction; the block then contains what was read so far.
class SqxBlockReader {
public:
    /// Reads from the cursor's position. `shader` is the part of the file read so far. Both must
    /// outlive this object.
    SqxBlockReader(SqxCursor& cursor, const SqxShader& shader) : m_cursor(cursor), m_shader(shader)
    {
    }

    /// Reads a block, its count first, and decodes its instructions. The block may use only the
    /// first `names` variables of the shader. O(n log n) for n numbers.
    void Read(SqxBlock& block, std::size_t names);

    /// Checks that the block calls only shadeops that the file declares. A separate step, since the
    /// file lists shadeops after the blocks of initializers.
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
