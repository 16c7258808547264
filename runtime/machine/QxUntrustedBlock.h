#pragma once

#include <string>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// A shader is refused; the message is with who caught it last. Caught by the verifier.
class QxRefused {};

/// A block of code to verify, and what messages about it need.
struct QxUntrustedBlock {
    enum class Kind { Main, OnceInitializer, PointInitializer };

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
    std::string& message;
};
