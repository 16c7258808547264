#pragma once

#include <cstddef>

#include "grammar.h"
#include "support/SlcSourcePosition.h"

// Families of tokens, for the code that sees each token before the parser does.

namespace SlcTokens {

inline bool IsType(int token)
{
    return token == VOID || token == FLOAT || token == STRING || token == NORMAL ||
           token == VECTOR || token == POINT || token == COLOR || token == MATRIX;
}

inline bool IsDeclarationWord(int token)
{
    return IsType(token) || token == VARYING || token == UNIFORM || token == EXTERN ||
           token == OUTPUT;
}

inline bool IsComparison(int token)
{
    return token == '<' || token == '>' || token == LE || token == GE || token == EQ || token == NE;
}

/// Returns the character after the last token; a blank at the end of the line.
inline char NextChar()
{
    const SlcSourcePosition& position = SlcCurrentPosition();
    const auto column = static_cast<std::size_t>(position.column);
    return column < position.currentLine.size() ? position.currentLine[column] : ' ';
}

}  // namespace SlcTokens
