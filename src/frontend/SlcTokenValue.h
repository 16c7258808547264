#pragma once

#include "frontend/SlcSyntaxNode.h"

/// The semantic value of a token and of every entry on the parser's value stack. A plain record, as
/// the parser copies it: who takes the node off it takes it over, unless it belongs to a pool.
struct SlcTokenValue {
    SlcSyntaxNode* node;  // lexical node of a literal or name, or what an action built
    int line;             // at the end of the token
    int column;
    const std::string* file;  // in the scanner's list of names

    [[nodiscard]] SlcPosition Position() const { return {line, column, file}; }
};
