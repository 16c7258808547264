#pragma once

#include <map>
#include <set>
#include <string>

#include "backends/SlcEquCType.h"
#include "frontend/SlcCodeWalker.h"
#include "icode/SlcLexType.h"

/// The C++ text of an operand.
///
/// Inside a parallel run a varying operand is printed for one point, with `[polyCnt]`; for a
/// whole-grid instruction it is printed as the array of its values. What is not uniform counts as
/// varying, an unknown detail too.
///
/// One converter serves one file: it remembers which references point into uniform arrays.
class SlcEquCValue : private SlcCodeWalker {
public:
    /// For the current point.
    [[nodiscard]] std::string GetString(const SlcOperand& operand);
    /// For all points.
    [[nodiscard]] std::string GetStringSIMD(const SlcOperand& operand);
    /// The address of an element, for the current point; of a varying array and for all points,
    /// that of the element's first value.
    [[nodiscard]] std::string GetStringArray(const SlcOperand& array, const SlcOperand& index);
    /// The reference itself, not what it refers to: the left side when it is made.
    [[nodiscard]] std::string GetStringRef(const SlcOperand& ref) const;

    /// `ref` was made to point into `array`. An element of a uniform array is one value even where
    /// the index varies, and the reference is bound again for each point.
    void BindRef(const SlcOperand& ref, const SlcOperand& array);

    /// From now on the operand is a variable of this name for the current point.
    void Keep(const SlcOperand& operand, std::string name)
    {
        m_kept.insert_or_assign(operand, std::move(name));
    }
    void ForgetKept() { m_kept.clear(); }

    /// A string constant as C++ reads it; `text` with its quotes. An escape that C++ does not know
    /// is printed as the character that it stands for, and no two "?" meet, since old dialects
    /// take them and what follows for one character. A character has eight bits.
    [[nodiscard]] static std::string Quote(const std::string& text);
    /// Any text as a string literal of C++, or of byte-code.
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
    const SlcTypeNode* m_type = nullptr;  // of the element where one is asked for
    Form m_form = Form::Point;
    bool m_elementWanted = false;
    bool m_isFlatRef = false;
    std::string m_index;  // text of the element's index
};
