#pragma once

#include <set>
#include <string>

#include "frontend/SlcNodes.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcSymbolEntry.h"

/// Tells in which space the default value of a parameter is given, and whether it can be computed
/// once per shader instance.
///
/// Functions are shown to it first, in the order of the source, so that a call in a default value
/// finds what its function does.
class SlcDefaultValueFacts : public SlcCodeWalker {
public:
    /// A function that is called, once those that it calls have been added. What it does is kept as
    /// long as this object lives.
    void AddFunction(SlcFuncDefNode* function);

    struct Facts {
        bool dependsOnContext;        // cannot be computed once per shader instance
        bool namesObjectSpace;        // also in a function that is called
        SlcStringLiteralNode* space;  // the one that goes into the file; "" for none or several
    };
    /// Of a parameter of this initializer and type. The checks have given every expression in it a
    /// type and a detail. A parameter named in it that depends on its context, as its entry says,
    /// makes this one depend too.
    [[nodiscard]] Facts Of(SlcExprNode* initializer, const SlcTypeNode* type);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode*) override {}  // added by itself
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    /// Forgets what the last walk has found.
    void Start();
    void Touch(const SlcPtr<SlcVarSymbolEntry>& named);
    void CallBuiltIn(SlcProcCallExprNode* node);
    void CallFunction(const SlcPtr<SlcFuncSymbolEntry>& entry);
    void NameSpace(const SlcStringLiteralNode* space);
    /// A part of the value is expressed in `space`: two different ones leave none that could be
    /// told.
    void UseSpace(const std::string& space);
    /// A product or sum with a float has its value in `plainSpace`, whatever space its parts name.
    void LeaveNamedSpace(const char* plainSpace);
    [[nodiscard]] SlcStringLiteralNode* SpaceOf(const SlcTypeNode* type) const;

    // Of what has been walked since the function or default value began.
    bool m_usesGrid = false;          // predefined variables, or a call that reads some
    bool m_dependsOnContext = false;  // the same, and parameters that do or vary
    bool m_namesObjectSpace = false;
    enum class Space { None, One, Several };
    Space m_space = Space::None;  // in which the value is expressed
    std::string m_spaceName;      // of the one

    // For look-up only.
    std::set<SlcPtr<SlcFuncSymbolEntry>> m_gridFunctions;
    std::set<SlcPtr<SlcFuncSymbolEntry>> m_objectSpaceFunctions;
};
