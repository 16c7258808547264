#pragma once

#include <string>
#include <string_view>

#include "frontend/SlcSyntaxNode.h"

class SlcBoolConstNode;
class SlcFloatConstNode;
class SlcIdentNode;
class SlcIntConstNode;
class SlcStringLiteralNode;

/// Base of literals and names. They are pooled: the `Create` operations record each new node in
/// a list of its class, which lives until the process ends. Their own position stays unset; it
/// travels in the token value and in the node that contains them.
class SlcLexicalNode : public SlcVisitable<SlcLexicalNode, SlcSyntaxNode> {
public:
    [[nodiscard]] virtual bool IsBool() const { return false; }
    [[nodiscard]] virtual bool IsInt() const { return false; }
    [[nodiscard]] virtual bool IsFloat() const { return false; }
    [[nodiscard]] virtual bool IsString() const { return false; }
    [[nodiscard]] virtual bool IsIdent() const { return false; }

    /// One of two shared nodes.
    [[nodiscard]] static SlcBoolConstNode* CreateBool(bool value);
    /// `added` marks a constant that the compiler adds to a call, such as a count.
    [[nodiscard]] static SlcIntConstNode* CreateInt(int value, bool added);
    [[nodiscard]] static SlcFloatConstNode* CreateFloat(double value);
    /// `text` with its enclosing double quotes and every backslash, as in the source.
    [[nodiscard]] static SlcStringLiteralNode* CreateString(std::string_view text);
    [[nodiscard]] static SlcIdentNode* CreateIdent(std::string_view name);
    /// The one node of a name in a source: a name costs its memory once, however often it occurs.
    [[nodiscard]] static SlcIdentNode* IdentOfSource(std::string_view name);

private:
    static SlcBoolConstNode sm_trueConst;
    static SlcBoolConstNode sm_falseConst;
};

/// True or false, which no source can spell: made by the compiler.
class SlcBoolConstNode : public SlcVisitable<SlcBoolConstNode, SlcLexicalNode> {
public:
    explicit SlcBoolConstNode(bool value) : m_value(value) {}
    [[nodiscard]] bool IsBool() const override { return true; }
    [[nodiscard]] bool GetValue() const { return m_value; }

private:
    bool m_value;
};

/// `3` as a length or level; also whole numbers that the compiler adds to calls.
class SlcIntConstNode : public SlcVisitable<SlcIntConstNode, SlcLexicalNode> {
public:
    SlcIntConstNode(int value, bool added) : m_value(value), m_added(added) {}
    [[nodiscard]] bool IsInt() const override { return true; }
    [[nodiscard]] int GetValue() const { return m_value; }
    /// The compiler has added it to a call; what suits calls to the grid leaves it alone.
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

/// `"text"`, quotes included.
class SlcStringLiteralNode : public SlcVisitable<SlcStringLiteralNode, SlcLexicalNode> {
public:
    explicit SlcStringLiteralNode(std::string_view text) : m_text(text) {}
    [[nodiscard]] bool IsString() const override { return true; }
    /// The text with the enclosing double quotes.
    [[nodiscard]] const std::string& GetText() const { return m_text; }

private:
    std::string m_text;
};

/// A name. Two nodes of one name are the same only if both come from the source.
class SlcIdentNode : public SlcVisitable<SlcIdentNode, SlcLexicalNode> {
public:
    explicit SlcIdentNode(std::string_view name) : m_name(name) {}
    [[nodiscard]] bool IsIdent() const override { return true; }
    [[nodiscard]] const std::string& GetName() const { return m_name; }

private:
    std::string m_name;
};
