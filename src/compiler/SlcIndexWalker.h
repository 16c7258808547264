#pragma once

#include <string>
#include <vector>

#include "compiler/SlcIndexNames.h"
#include "compiler/SlcIndexPlaces.h"
#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"

/// The facts on a value from the checks; open and empty for a value that they did not see.
[[nodiscard]] QxDetail SlcDetailOf(const SlcExprNode* expr);
[[nodiscard]] std::string SlcTypeOf(const SlcExprNode* expr);
/// The detail of what two values are put into.
[[nodiscard]] QxDetail SlcSum(QxDetail a, QxDetail b);

/// Enters what a checked tree defines, names and calls into an index. Of a tree with faults it
/// takes what the checks have found out.
class SlcIndexWalker : public SlcCodeWalker {
public:
    /// All must outlive the walker. `isStrict`: functions see no variables around them.
    SlcIndexWalker(QxSourceIndex& index, SlcIndexNames& names, const SlcIndexPlaces& places,
                   bool isStrict);

    void operator()(SlcDefinitionsNode* tree);

private:
    using SlcCodeWalker::Case;
    void Case(SlcShaderDefNode* node) override;
    void Case(SlcFuncDefNode* node) override;
    void Case(SlcVarDefsNode* node) override;
    void Case(SlcStmtsNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcIfThenStmtNode* node) override;
    void Case(SlcIfThenElseStmtNode* node) override;
    void Case(SlcWhileStmtNode* node) override;
    void Case(SlcForStmtNode* node) override;
    // SlcIndexExpressions.cpp
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcCastExprNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Case(SlcTextureExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// A block that lives as long as the object.
    class Block;

    /// The name of a definition whose place is the first token with that text.
    [[nodiscard]] QxIndexedName Defined(QxNameKind kind, const std::string& name,
                                        const SlcTextRange& range) const;
    /// Numbers the name, and notes its definition as a use.
    int AddDefinition(QxIndexedName name, const SlcTextRange& range);
    void DefineFormal(SlcVarDefsNode* declaration, QxIndexedName& owner);
    void DefineVariable(const SlcVarDefsNode& declaration, SlcDefExprNode* definition);
    [[nodiscard]] QxIndexedName VariableOf(const SlcVarDefsNode& declaration,
                                           const SlcDefExprNode& definition) const;
    /// From the end of the last walked node on, the name is visible in the current block.
    void Show(int name, std::uint32_t offset);
    void AddUse(int name, QxUseRole role, std::size_t token, const SlcExprNode* value);
    void AddUse(int name, QxUseRole role, const SlcTextRange& range, const std::string& text,
                const SlcExprNode* value);
    void AddSpace(std::size_t token);
    void AddCall(int name, const std::string& text, const SlcExprNode* call,
                 const std::vector<const SlcExprNode*>& arguments);
    void WalkBody(SlcStmtsNode* body, const SlcTextRange& definition);
    void FinishDeclaration(int name);
    /// The known detail of a variable here.
    [[nodiscard]] QxDetail DetailHere(int name, const SlcExprNode* use) const;
    /// Walks a value, and returns what is known of its detail.
    QxDetail WalkValue(SlcExprNode* value);
    /// A variable is given a value of that detail here.
    void Give(int name, QxDetail detail);
    /// Locals of a shader whose declarations leave it open have the detail of what they hold.
    void SetDetails();
    void WalkConditionally(SlcRelationNode* condition, SlcSyntaxNode* first, SlcSyntaxNode* second);

    QxSourceIndex& m_index;
    SlcIndexNames& m_names;
    const SlcIndexPlaces& m_places;
    bool m_isStrict;
    int m_block = 0;
    int m_owner = -1;
    bool m_readsFormals = false;
    bool m_isInFunction = false;
    QxDetail m_seen = QxDetail::None;  // of what has been walked of a value
    bool m_writes = false;             // the next name is an output argument
    int m_varyingConditions = 0;       // around the statement
};
