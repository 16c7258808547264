#pragma once

#include <string>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"

/// Prints a tree as nested lists, for comparing shapes: `(= x (+ a (* b 2)))`.
class TreeText : public SlcCodeWalker {
public:
    [[nodiscard]] std::string operator()(SlcSyntaxNode* node)
    {
        m_text.clear();
        node->ApplyWalker(this);
        return m_text;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcLexicalNode*) override {}
    void Case(SlcIntConstNode* node) override { Word(std::to_string(node->GetValue())); }
    void Case(SlcFloatConstNode* node) override
    {
        std::string digits = std::to_string(node->GetValue());
        digits.erase(digits.find_last_not_of('0') + 1);
        Word(digits.back() == '.' ? digits.substr(0, digits.size() - 1) : digits);
    }
    void Case(SlcStringLiteralNode* node) override { Word(node->GetText()); }
    void Case(SlcIdentNode* node) override { Word(node->GetName()); }
    void Case(SlcTypeNode* node) override { Word(node->ToString()); }
    void Case(SlcDetailNode* node) override { Word(node->ToString()); }
    void Case(SlcStorageSpecNode* node) override
    {
        Word(node->IsInput()    ? "input"
             : node->IsOutput() ? "output"
             : node->IsExtern() ? "extern"
                                : "local");
    }
    void Case(SlcShaderTypeNode* node) override { Word(node->ToString()); }
    void Case(SlcTextureTypeNode* node) override { Word(node->ToString()); }

    void Case(SlcDefinitionsNode* node) override { node->WalkIn(this); }
    void Case(SlcDefinitionNode* node) override { List("", node); }
    void Case(SlcFormalsNode* node) override { List("", node); }
    void Case(SlcVarDefsNode* node) override { List("", node); }
    void Case(SlcTypeSpecNode* node) override { node->WalkIn(this); }
    void Case(SlcDefExprNode* node) override
    {
        List(node->IsArray() ? "[" + std::to_string(node->GetArraySize()) + "]" : "", node);
    }

    void Case(SlcStmtNode* node) override { List(node->ToString(), node); }
    void Case(SlcStmtsNode* node) override { List("{}", node); }
    void Case(SlcAssignStmtNode* node) override { node->WalkIn(this); }
    void Case(SlcProcCallStmtNode* node) override { node->WalkIn(this); }
    void Case(SlcVarDefsStmtNode* node) override { node->WalkIn(this); }
    void Case(SlcFuncDefStmtNode* node) override { node->WalkIn(this); }

    void Case(SlcAssignExprNode* node) override { List(std::string(node->ToString()), node); }
    void Case(SlcBinOpExprNode* node) override { List(std::string(node->ToString()), node); }
    void Case(SlcUMinusExprNode* node) override { List("-", node); }
    void Case(SlcCastExprNode* node) override { List("cast", node); }
    void Case(SlcCondExprNode* node) override { List("?:", node); }
    void Case(SlcPointExprNode* node) override { List("triple", node); }
    void Case(SlcMatrixExprNode* node) override { List("matrix", node); }
    void Case(SlcArrayExprNode* node) override { List("{}", node); }
    void Case(SlcProcCallExprNode* node) override { List("call", node); }
    void Case(SlcTextureExprNode* node) override { List("", node); }
    void Case(SlcArrayRefExprNode* node) override { List("[]", node); }
    void Case(SlcArrayRefLValueNode* node) override { List("[]", node); }
    void Case(SlcRelationNode*) override {}
    void Case(SlcCompOpNode* node) override { List(std::string(node->ToString()), node); }
    void Case(SlcLogOpNode* node) override { List(std::string(node->ToString()), node); }
    void Case(SlcNotRelNode* node) override { List("!", node); }
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    void Word(const std::string& word)
    {
        if (!m_text.empty() && m_text.back() != '(')
            m_text += ' ';
        m_text += word;
    }
    void List(const std::string& label, SlcSyntaxNode* node)
    {
        Word("(" + label);
        node->WalkIn(this);
        m_text += ')';
    }

    std::string m_text;
};
