#pragma once

#include "frontend/SlcSyntaxNode.h"

/// The semantic value of a token and of every entry on the parser's value stack. A plain record,
/// since the parser copies it: the code that takes the node takes ownership, unless the node
/// belongs to a pool.
struct SlcTokenValue {
    SlcSyntaxNode* node;  // lexical node of a literal or name, or the result of an action; or null
    int line;             // of the end of the (first) token, as is the column
    int column;
    const std::string* file;  // in the scanner's list of names; null before the first line marker

    [[nodiscard]] SlcPosition Position() const { return {line, column, file}; }
};
