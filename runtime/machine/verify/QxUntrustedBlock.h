#pragma once

#include <string>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// A shader is refused; the message is with who caught it last. Caught by the verifier.
class QxRefused {};

/// A block of code to verify, and what messages about it need. It refers to what it was made of,
/// which must last as long.
struct QxUntrustedBlock {
    /// Main, and the initializers that run once for a shader or at each point, see `QxVerifier`.
    enum class Kind { Main, OnceInitializer, PointInitializer };

    /// Throws `QxRefused`. `fault` goes on where the name of the instruction ends: "closes a
    /// bracket that was not opened last".
    [[noreturn]] void Refuse(const SqxInstruction& instruction, const std::string& fault) const
    {
        message = SqxFaultText(code.Line(instruction), section,
                               SqxBlock::Place(instruction) + ' ' + fault);
        throw QxRefused();
    }

    const SqxShader& shader;
    const SqxBlock& code;
    Kind kind;
    std::string section;
    std::string& message;  // where the reason goes
};
