#pragma once

#include <string_view>
#include <vector>

#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcTypeNode.h"
#include "sqx/SqxShadeopText.h"

/// Parses the declaration of a shadeop, such as "float blend(color, float[4])", and makes the nodes
/// of its types and its name.
///
/// Each `Read` operation continues where the previous one stopped, and none reads past the end.
class SlcShadeopReader {
public:
    /// The text must outlive the reader.
    explicit SlcShadeopReader(std::string_view text) : m_text(text) {}

    /// Returns null if the text does not begin with a type that a shadeop can use.
    [[nodiscard]] SlcTypeNode* ReadReturnType();
    /// Returns null if no name follows.
    [[nodiscard]] SlcIdentNode* ReadMethodName();
    /// Returns the types between the parentheses. `isGood` becomes false if they are malformed, if
    /// there are none, or if text other than blanks follows the ")"; otherwise true.
    [[nodiscard]] std::vector<SlcTypeNode*> ReadArguments(bool& isGood);

    /// Reads one type with the "(" before it if `first`, otherwise with a ",". Sets `isGood` to
    /// whether there is one, and returns null if not. Otherwise sets `atEnd` to whether a ")"
    /// follows.
    [[nodiscard]] SlcTypeNode* ReadArgType(bool first, bool& isGood, bool& atEnd);

    /// Returns one of the six types that a shadeop can use; null for any other word.
    [[nodiscard]] static SlcTypeNode* StringToType(std::string_view word);

private:
    SqxShadeopText m_text;
};
