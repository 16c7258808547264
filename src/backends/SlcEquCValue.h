#pragma once

#include <map>
#include <set>
#include <string>

#include "backends/SlcEquCType.h"
#include "frontend/SlcCodeWalker.h"
#include "icode/SlcLexType.h"

/// Returns the C++ text of an operand.
///
/// Inside a parallel run a varying operand is printed for one point, with `[polyCnt]`; for a
/// whole-grid instruction it is printed as the array of its values. An operand that is not uniform
/// counts as varying, even if its detail is unknown.
///
/// One object serves one file, since it records which references point into uniform arrays.
class SlcEquCValue : private SlcCodeWalker {
public:
    /// Returns the text for the current point.
    [[nodiscard]] std::string GetString(const SlcOperand& operand);
    /// Returns the text for all points.
    [[nodiscard]] std::string GetStringSIMD(const SlcOperand& operand);
    /// Returns the address of an element, for the index of the current point; for a varying array,
    /// the address of the element's value at the first point.
    [[nodiscard]] std::string GetStringArray(const SlcOperand& array, const SlcOperand& index);
    /// Returns the reference itself, not the element: the left side of its binding.
    [[nodiscard]] std::string GetStringRef(const SlcOperand& ref) const;

    /// Records that `ref` now points into `array`. An element of a uniform array is a single value
    /// even if the index varies; the reference is then bound again for each point.
    void BindRef(const SlcOperand& ref, const SlcOperand& array);

    /// Until `ForgetKept`, `GetString` returns this name for the operand: a variable that holds the
    /// value at the current point.
    void Keep(const SlcOperand& operand, std::string name)
    {
        m_kept.insert_or_assign(operand, std::move(name));
    }
    void ForgetKept() { m_kept.clear(); }

    /// Returns a string constant as a C++ literal; `text` includes its quotes. Escapes that C++
    /// does not define are replaced by the characters that they stand for. Adjacent "?" are
    /// separated by a backslash, since old dialects would read a trigraph. Octal escapes keep only
    /// eight bits.
    [[nodiscard]] static std::string Quote(const std::string& text);
    /// Returns any text as a string literal of C++ or byte-code.
    [[nodiscard]] static std::string Literal(const std::string& text);

private:
    enum class Form { Point, Grid };

    using SlcCodeWalker::Case;
    void Case(SlcFloatConstNode* constant) override;
    void Case(SlcIntConstNode* constant) override;
    void Case(SlcStringLiteralNode* constant) override;
    void Case(SlcBoolConstNode* constant) override;
    void Case(SlcIdentNode* ident) override;
    void Default(SlcSyntaxNode* node) override;

    void Convert(const SlcOperand& operand);
    void ConvertLocal(const std::string& name);
    void ConvertParameter(const std::string& name);
    void ConvertPredefined(const std::string& name);
    void AddVaryingTail();

    SlcEquCType m_types;
    std::map<SlcOperand, std::string> m_kept;  // names of variables; for look-up only
    std::set<SlcOperand> m_flatRefs;           // references into uniform arrays; for look-up only

    // The current request.
    std::string m_text;
    const SlcLexType* m_operand = nullptr;
    const SlcTypeNode* m_type = nullptr;  // of the operand; for an array, of its elements
    Form m_form = Form::Point;
    bool m_elementWanted = false;
    bool m_isFlatRef = false;
    std::string m_index;  // text of the element's index
};
