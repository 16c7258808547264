#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "icode/SlcListICode.h"

/// Builds lists of instructions from a few lines of text, and prints them back, so that a test of
/// a pass shows the code before and after.
///
/// One instruction a line:
///   x = 1 | x = y | x = y + z | x = -y | x <- y (whole grid) | f = x < y
///   { } (parallel run) | if f L1 | ifnot f L1 | endif L1
///   L1: | goto L1 | goto L1 if g | goto L1 ifnot g
///   g = any f | f = not f | f = not f in h | f = f | h | break f g L1 | continue f L1
///   r = ref a x | r = call NAME x y | call NAME x y | illuminance L1 L2 | again L1
///   begin | end
/// What a variable is follows from its name: f... varying flag, g... uniform flag, u... uniform
/// float, a... array, A... uniform array, r... reference, p... parameter, C... predefined and
/// written, any other name a varying float; true, false and numbers are constants.
class CodeText {
public:
    /// A list with these instructions; each name is one variable.
    [[nodiscard]] SlcPtr<SlcListICode> List(std::string_view text);
    /// The instructions of a list, joined by "; ".
    [[nodiscard]] static std::string Print(const SlcListICode& list);
    /// The variable of that name in the list last built.
    [[nodiscard]] SlcOperand Variable(const std::string& name) { return m_variables.at(name); }

private:
    [[nodiscard]] SlcOperand Operand(const std::string& name);
    [[nodiscard]] SlcPtr<SlcLabelICode> Label(const std::string& name);
    [[nodiscard]] SlcPtr<SlcICode> Parse(const std::string& line);
    [[nodiscard]] SlcPtr<SlcICode> ParseAssignment(const std::vector<std::string>& words);
    [[nodiscard]] SlcPtr<SlcICode> ParseControl(const std::vector<std::string>& words);
    template <class Code>
    [[nodiscard]] SlcPtr<SlcICode> Leave(const std::vector<std::string>& words);
    [[nodiscard]] SlcPtr<SlcICode> Call(SlcOperand result, const std::vector<std::string>& words,
                                        std::size_t first);

    SlcPtr<SlcListICode> m_list;
    std::map<std::string, SlcOperand> m_variables;
    std::map<std::string, SlcPtr<SlcLabelICode>> m_labels;
};
