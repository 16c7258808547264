#pragma once

#include <set>
#include <string>

#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcSymbolEntry.h"

/// Determines the space in which the default value of a parameter is expressed, whether the value
/// can be computed once per shader instance, and whether it names the space "object".
///
/// A function must be added before the functions and default values that call it.
class SlcDefaultValueFacts : public SlcCodeWalker {
public:
    /// Records whether the function uses the shaded grid, and whether it names "object".
    void AddFunction(SlcFuncDefNode* function);

    struct Facts {
        bool dependsOnContext;        // cannot be computed once per shader instance
        bool namesObjectSpace;        // the value, or a function that it calls, names "object"
        SlcStringLiteralNode* space;  // written to the file; "" if the type has no space, or if the
                                      // value is in no single one
    };
    /// Returns the facts about a parameter with this initializer and type. Every expression must
    /// have its type and detail from semantic analysis. The caller stores `dependsOnContext` in the
    /// parameter's entry, where calls for later parameters that name this one read it.
    [[nodiscard]] Facts Of(SlcExprNode* initializer, const SlcTypeNode* type);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode*) override {}  // added separately
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcIdentLValueNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override { node->WalkIn(this); }

    /// Discards the findings of the last walk.
    void Start();
    void RecordAccess(const SlcPtr<SlcVarSymbolEntry>& named);
    void CallBuiltIn(SlcProcCallExprNode* node);
    void CallFunction(const SlcPtr<SlcFuncSymbolEntry>& entry);
    void NameSpace(const SlcStringLiteralNode* space);
    /// Records that a part of the value is in `space`. If an earlier part is in another space, the
    /// value has no single space.
    void UseSpace(const std::string& space);
    /// Records an arithmetic operation between a float and a value in a space; its result is in
    /// `plainSpace`. If the space found so far is another one, the value has no single space.
    void LeaveNamedSpace(const char* plainSpace);
    [[nodiscard]] SlcStringLiteralNode* SpaceOf(const SlcTypeNode* type) const;

    // Found since the walk of the current function or default value began.
    bool m_usesGrid = false;          // accesses predefined variables or textures, or calls a
                                      // built-in that reads such variables, directly or in a
                                      // called function
    bool m_dependsOnContext = false;  // accesses a predefined or varying variable or a parameter
                                      // that depends on its context, or calls a function that
                                      // uses the grid
    bool m_namesObjectSpace = false;
    enum class Space { None, One, Several };
    Space m_space = Space::None;  // in which the value is expressed
    std::string m_spaceName;      // if there is exactly one

    std::set<SlcPtr<SlcFuncSymbolEntry>> m_gridFunctions;
    std::set<SlcPtr<SlcFuncSymbolEntry>> m_objectSpaceFunctions;
};
