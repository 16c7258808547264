#pragma once

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"

/// An operand of the intermediate code: a variable, a temporary or a constant.
///
/// One object stands for one variable in every instruction that names it: identity of the object
/// is identity of the variable. Constants are made where they are needed, so that equal ones are
/// distinct objects until the byte-code writer merges them.
class SlcLexType : public SlcCollectable {
public:
    /// `lexical` is the variable's name or the constant; none of the four is owned.
    SlcLexType(SlcLexicalNode* lexical, SlcTypeNode* type, SlcDetailNode* detail,
               SlcStorageSpecNode* storage)
        : m_lexical(lexical),
          m_type(type),
          m_detail(detail),
          m_storage(storage)
    {
    }

    [[nodiscard]] SlcLexicalNode* GetLexical() const { return m_lexical; }
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    /// For passes that find a varying temporary to be the same at all points.
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const { return m_storage; }

    /// A variable or temporary.
    [[nodiscard]] bool IsIdent() const { return m_lexical->IsIdent(); }
    [[nodiscard]] bool IsConst() const { return !IsIdent(); }
    [[nodiscard]] bool IsFloat() const { return m_lexical->IsFloat(); }
    [[nodiscard]] bool IsString() const { return m_lexical->IsString(); }
    [[nodiscard]] bool IsInt() const { return m_lexical->IsInt(); }
    [[nodiscard]] bool IsBool() const { return m_lexical->IsBool(); }
    [[nodiscard]] bool IsUniform() const { return m_detail->IsUniform(); }

    /// The name of a variable; empty for a constant.
    [[nodiscard]] const std::string& GetName() const;
    /// The value of a constant, which must be one of the type.
    [[nodiscard]] double GetFloat() const;
    /// The text of a string constant, with its quotes.
    [[nodiscard]] const std::string& GetString() const;
    [[nodiscard]] int GetInt() const;
    [[nodiscard]] bool GetBool() const;

    // New uniform local constants.
    [[nodiscard]] static SlcPtr<SlcLexType> Float(double value);
    /// `text` with its quotes.
    [[nodiscard]] static SlcPtr<SlcLexType> String(std::string_view text);
    /// `added`: by the compiler, to a call; it stands for what the source leaves out.
    [[nodiscard]] static SlcPtr<SlcLexType> Int(int value, bool added);
    [[nodiscard]] static SlcPtr<SlcLexType> Bool(bool value);
    /// The shared constant pi, to ten decimal places: what folding takes for `PI`.
    [[nodiscard]] static const SlcPtr<SlcLexType>& GetPI();
    /// The shared operand of the language's variable `PI`, a constant in all but form. A parameter
    /// may have the same name.
    [[nodiscard]] static const SlcPtr<SlcLexType>& GetPIVariable();
    [[nodiscard]] bool IsPIVariable() const { return this == &*GetPIVariable(); }

    /// Variable number in the byte-code file; -1 until a declaration section gives it one.
    int m_index = -1;
    /// Place in the universe of the data-flow sets of the list being analysed; -1 outside.
    int m_setIndex = -1;

private:
    SlcLexicalNode* m_lexical;
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail;
    SlcStorageSpecNode* m_storage;
};

/// An operand as instructions hold it.
using SlcOperand = SlcPtr<SlcLexType>;
