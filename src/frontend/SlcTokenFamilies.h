#pragma once

#include <cstddef>

#include "grammar.h"
#include "support/SlcSourcePosition.h"

// Families of tokens, for `SlcParseAdvice`, which sees each token before the parser does.

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

/// Returns the character after the last token; a blank if the line ends there, or if the scanner
/// has not stored the rest of the line: on the first line of the source, and beyond the maximum
/// length of a token.
inline char NextChar()
{
    const SlcSourcePosition& position = SlcCurrentPosition();
    const auto column = static_cast<std::size_t>(position.column);
    return column < position.currentLine.size() ? position.currentLine[column] : ' ';
}

}  // namespace SlcTokens
