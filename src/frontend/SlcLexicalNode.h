#pragma once

#include <string>
#include <string_view>

#include "frontend/SlcSyntaxNode.h"

class SlcBoolConstNode;
class SlcFloatConstNode;
class SlcIdentNode;
class SlcIntConstNode;
class SlcStringLiteralNode;

/// Base of literals and names. They are pooled: the `Create` operations except `CreateBool` record
/// each new node in a list of its class, which lives until the compilation ends. Their position is
/// not set; the token value and the node that contains them have it.
class SlcLexicalNode : public SlcVisitable<SlcLexicalNode, SlcSyntaxNode> {
public:
    [[nodiscard]] virtual bool IsBool() const { return false; }
    [[nodiscard]] virtual bool IsInt() const { return false; }
    [[nodiscard]] virtual bool IsFloat() const { return false; }
    [[nodiscard]] virtual bool IsString() const { return false; }
    [[nodiscard]] virtual bool IsIdent() const { return false; }

    /// Returns one of two shared nodes.
    [[nodiscard]] static SlcBoolConstNode* CreateBool(bool value);
    /// `added` marks a constant that the compiler adds to a call, such as a count.
    [[nodiscard]] static SlcIntConstNode* CreateInt(int value, bool added);
    [[nodiscard]] static SlcFloatConstNode* CreateFloat(double value);
    /// `text` includes the enclosing double quotes and all backslashes, as in the source.
    [[nodiscard]] static SlcStringLiteralNode* CreateString(std::string_view text);
    [[nodiscard]] static SlcIdentNode* CreateIdent(std::string_view name);
    /// Returns the node that all occurrences of an identifier in the source share, and makes it on
    /// the first call, so that memory is used only once per name.
    [[nodiscard]] static SlcIdentNode* IdentOfSource(std::string_view name);

private:
    static SlcBoolConstNode sm_trueConst;
    static SlcBoolConstNode sm_falseConst;
};

/// True or false, which only the compiler creates: sources have no such literal.
class SlcBoolConstNode : public SlcVisitable<SlcBoolConstNode, SlcLexicalNode> {
public:
    explicit SlcBoolConstNode(bool value) : m_value(value) {}
    [[nodiscard]] bool IsBool() const override { return true; }
    [[nodiscard]] bool GetValue() const { return m_value; }

private:
    bool m_value;
};

/// A whole number without a point: the length of an array, the level of a `break` or `continue`, or
/// a number that the compiler adds to a call. The parser replaces one in an expression by a float.
class SlcIntConstNode : public SlcVisitable<SlcIntConstNode, SlcLexicalNode> {
public:
    SlcIntConstNode(int value, bool added) : m_value(value), m_added(added) {}
    [[nodiscard]] bool IsInt() const override { return true; }
    [[nodiscard]] int GetValue() const { return m_value; }
    /// True if the compiler has added the constant to a call. The lowering ignores such arguments
    /// when it decides whether a call can have a whole-grid form.
    [[nodiscard]] bool IsAdded() const { return m_added; }

private:
    int m_value;
    bool m_added;
};

/// A number of the source, or one that the compiler has computed.
class SlcFloatConstNode : public SlcVisitable<SlcFloatConstNode, SlcLexicalNode> {
public:
    explicit SlcFloatConstNode(double value) : m_value(value) {}
    [[nodiscard]] bool IsFloat() const override { return true; }
    [[nodiscard]] double GetValue() const { return m_value; }

private:
    double m_value;
};

/// `"text"`, including the quotes.
class SlcStringLiteralNode : public SlcVisitable<SlcStringLiteralNode, SlcLexicalNode> {
public:
    explicit SlcStringLiteralNode(std::string_view text) : m_text(text) {}
    [[nodiscard]] bool IsString() const override { return true; }
    /// Returns the text with the enclosing double quotes.
    [[nodiscard]] const std::string& GetText() const { return m_text; }

private:
    std::string m_text;
};

/// A name. Nodes of equal names are identical only if both come from the source.
class SlcIdentNode : public SlcVisitable<SlcIdentNode, SlcLexicalNode> {
public:
    explicit SlcIdentNode(std::string_view name) : m_name(name) {}
    [[nodiscard]] bool IsIdent() const override { return true; }
    [[nodiscard]] const std::string& GetName() const { return m_name; }

private:
    std::string m_name;
};
