#pragma once

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"

/// An operand of the intermediate code: a variable, a temporary or a constant.
///
/// A variable is one object, shared by every instruction that names it, so variables are compared
/// by address. Equal constants can be different objects, until the byte-code writer merges them.
class SlcLexType : public SlcCollectable {
public:
    /// `lexical` is the variable's name or the constant. None of the four nodes is owned.
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
    /// Used by the optimizer: data flow sets the detail of the varying variables to unknown, and
    /// `SlcConvertTmpVarDetail` then marks the locals and temporaries of which each value is used
    /// only for the current point, so that all points can share the storage.
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const { return m_storage; }

    /// True for a variable or temporary.
    [[nodiscard]] bool IsIdent() const { return m_lexical->IsIdent(); }
    [[nodiscard]] bool IsConst() const { return !IsIdent(); }
    [[nodiscard]] bool IsFloat() const { return m_lexical->IsFloat(); }
    [[nodiscard]] bool IsString() const { return m_lexical->IsString(); }
    [[nodiscard]] bool IsInt() const { return m_lexical->IsInt(); }
    [[nodiscard]] bool IsBool() const { return m_lexical->IsBool(); }
    [[nodiscard]] bool IsUniform() const { return m_detail->IsUniform(); }

    /// Returns the name of a variable; empty for a constant.
    [[nodiscard]] const std::string& GetName() const;
    /// Return the value of a constant, which must have that type.
    [[nodiscard]] double GetFloat() const;
    /// Returns the text of a string constant, with its quotes.
    [[nodiscard]] const std::string& GetString() const;
    [[nodiscard]] int GetInt() const;
    [[nodiscard]] bool GetBool() const;

    // Each call of the next four makes a new uniform constant.
    [[nodiscard]] static SlcPtr<SlcLexType> Float(double value);
    /// `text` includes the quotes.
    [[nodiscard]] static SlcPtr<SlcLexType> String(std::string_view text);
    /// `added` means that the compiler added the constant to a call: for an argument that the
    /// source omits, or a count of arguments.
    [[nodiscard]] static SlcPtr<SlcLexType> Int(int value, bool added);
    [[nodiscard]] static SlcPtr<SlcLexType> Bool(bool value);
    /// Returns the shared constant that folding and the byte-code writer use for `PI`: pi to ten
    /// decimal places.
    [[nodiscard]] static const SlcPtr<SlcLexType>& GetPI();
    /// Returns the shared operand of the language's variable `PI`, which never changes. A parameter
    /// may have the same name.
    [[nodiscard]] static const SlcPtr<SlcLexType>& GetPIVariable();
    [[nodiscard]] bool IsPIVariable() const { return this == &*GetPIVariable(); }

    /// Number of the variable or constant in the byte-code file; -1 until the writer assigns one.
    int m_index = -1;
    /// Index in the data-flow sets of the list being analysed; -1 if there is none.
    int m_setIndex = -1;

private:
    SlcLexicalNode* m_lexical;
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail;
    SlcStorageSpecNode* m_storage;
};

/// An operand as instructions hold it.
using SlcOperand = SlcPtr<SlcLexType>;
