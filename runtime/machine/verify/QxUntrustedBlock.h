#pragma once

#include <string>

#include "sqx/SqxCursor.h"
#include "sqx/SqxShader.h"

/// Thrown if a shader is rejected. `QxVerifier` catches it, and already contains the message.
class QxRefused {};

/// A block of code to verify, and what messages about it need. The objects that it refers to must
/// outlive it.
struct QxUntrustedBlock {
    /// Main, and the initializers that run once per instance or at each point, see `QxVerifier`.
    enum class Kind { Main, OnceInitializer, PointInitializer };

    /// Stores the message and throws `QxRefused`. `fault` continues the sentence after the name of
    /// the instruction: "goes into or out of brackets".
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
    std::string& message;  // of the verifier; receives the reason
};
