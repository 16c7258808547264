#pragma once

#include <map>
#include <string>

#include "icode/SlcJumpICode.h"
#include "icode/SlcLexType.h"

/// Names of operands and labels in the text form.
///
/// Temporaries and generated labels are numbered by first use, so that equal code has equal text
/// regardless of what was compiled before: `u0` is a uniform flag, `f0` a varying flag, `t0` any
/// other temporary, `L0` a label. Predefined variables have their name in the source language, with
/// the prefix `light_` for those of the current light; other variables have their own name.
class SlcICodeNames {
public:
    /// Returns `L` and a number for a generated label; otherwise the name that the label has.
    [[nodiscard]] std::string Of(const SlcLabel& label);
    /// Returns the name of a variable, or the text of a constant: `0.5`, `true`, `"text"`, `#inf`
    /// for an infinite float, and `#3` for an integer that the compiler added to a call.
    [[nodiscard]] std::string Of(const SlcOperand& operand);
    /// True if the variable has a name such as `T12_`, which the lowering gives to temporaries;
    /// false for a local variable of the source.
    [[nodiscard]] static bool IsTemporary(const SlcLexType& operand);

private:
    [[nodiscard]] std::string Numbered(char kind, const std::string& name);

    std::map<char, std::map<std::string, std::size_t>> m_numbers;  // by kind, then by true name
};
