#pragma once

#include <string_view>
#include <vector>

#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcTypeNode.h"
#include "sqx/SqxShadeopText.h"

/// Reads the text by which a library declares a shadeop into nodes: "float blend(color, float[4])".
///
/// Each operation reads on from where the one before stopped, and none reads past the end.
class SlcShadeopReader {
public:
    /// The text must outlive the reader.
    explicit SlcShadeopReader(std::string_view text) : m_text(text) {}

    /// Null if the text does not begin with a type word.
    [[nodiscard]] SlcTypeNode* ReadReturnType();
    /// Null if no name follows.
    [[nodiscard]] SlcIdentNode* ReadMethodName();
    /// The types between the brackets; `isGood` is false if they are not written as they must be,
    /// if there is none, or if something follows them.
    [[nodiscard]] std::vector<SlcTypeNode*> ReadArguments(bool& isGood);

    /// One type, with the "(" in front of the first one and the "," in front of the others. Null,
    /// and `isGood` false, if there is none; `atEnd` becomes true in front of the ")".
    [[nodiscard]] SlcTypeNode* ReadArgType(bool first, bool& isGood, bool& atEnd);

    /// One of the six types that a shadeop can have; null for any other word.
    [[nodiscard]] static SlcTypeNode* StringToType(std::string_view word);

private:
    SqxShadeopText m_text;
};
