#pragma once

#include <map>
#include <string>
#include <string_view>

#include "icode/SlcICodeParser.h"
#include "icode/SlcICodeText.h"

/// Builds lists of instructions from their text form, so that a test of a pass shows the code
/// before and after.
///
/// The first letter of a name determines the variable: f... varying flag, g... uniform flag, u...
/// uniform float, t... temp-uniform float, a... varying array of four floats, A... uniform array,
/// r... varying reference to a float, p... varying parameter, C... predefined variable that is
/// written, any other name varying float. Functions return a float and take input floats; calls of
/// RANDOM keep their order, all others may be folded.
class CodeText : private SlcICodeScope {
public:
    /// Returns the list of the instructions in `text`, where each name is one variable. Throws
    /// `SlcICodeSyntaxError`.
    [[nodiscard]] SlcPtr<SlcListICode> List(std::string_view text);
    [[nodiscard]] static std::string Print(const SlcListICode& list)
    {
        return SlcICodeText::Of(list);
    }
    /// Returns the variable of that name in the last list. Throws `std::out_of_range` if there is
    /// none.
    [[nodiscard]] SlcOperand Variable(const std::string& name) { return m_variables.at(name); }

private:
    [[nodiscard]] SlcOperand FindVariable(const std::string& name) override;
    [[nodiscard]] SlcPtr<SlcFuncSymbolEntry>
    FindFunction(SqxPrimitive primitive, const std::deque<SlcOperand>& arguments) override;

    SlcPtr<SlcListICode> m_list;
    std::map<std::string, SlcOperand> m_variables;
};
