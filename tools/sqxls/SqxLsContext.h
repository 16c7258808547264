#pragma once

#include <string>
#include <vector>

#include "sqxls/SqxLsTokens.h"

/// What is being typed at a place, according to the tokens before it. The place may be in the
/// middle of a token, and any text may follow.
struct SqxLsContext {
    enum class Kind {
        Code,
        Directive,  // the word after a '#'
        Include,    // the name of an included file
        Text,       // in a string
        Comment,
    };

    Kind kind = Kind::Code;
    SqxLsSpan typed;  // the part of the word, string or file name before the place
    // Not set for `Directive` and `Include`:
    std::string call;  // word before the innermost open "(" that has one; empty if there is none
    std::size_t argument = 0;    // number of the argument of `call`, from 0
    std::size_t callBegin = 0;   // offset of `call`
    std::string before;          // token before the word
    bool isInLightLoop = false;  // in the body of `illuminance`
    std::string target;          // variable that the statement assigns to; empty if not known
};

/// Returns the context at an offset. Scans the text before it.
[[nodiscard]] SqxLsContext SqxLsContextAt(const SqxLsText& text, std::size_t offset);
