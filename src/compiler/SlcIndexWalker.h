#pragma once

#include <string>
#include <vector>

#include "compiler/SlcIndexNames.h"
#include "compiler/SlcIndexPlaces.h"
#include "frontend/SlcCodeWalker.h"
#include "frontend/SlcNodes.h"

/// Return the detail and the type that the checks found for a value: `Open` and "" if they did not
/// reach it, and "" also after a report of its type.
[[nodiscard]] QxDetail SlcDetailOf(const SlcExprNode* expr);
[[nodiscard]] std::string SlcTypeOf(const SlcExprNode* expr);
/// Returns the detail of a variable that is assigned values with the details `a` and `b`.
[[nodiscard]] QxDetail SlcSum(QxDetail a, QxDetail b);

/// Records the definitions, names and calls of a checked tree in an index. For a tree with faults,
/// it uses what the checks found out.
class SlcIndexWalker : public SlcCodeWalker {
public:
    /// Index, names and places must outlive the walker. With `isStrict`, functions do not see
    /// enclosing variables.
    SlcIndexWalker(QxSourceIndex& index, SlcIndexNames& names, const SlcIndexPlaces& places,
                   bool isStrict);

    /// Adds the names, uses, calls and blocks of the tree. The index must already contain the
    /// tokens and the block of the whole source.
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

    /// Opens a block for the lifetime of the object.
    class Block;

    /// Returns the name of a definition; its place is the first token in `range` with that text.
    [[nodiscard]] QxIndexedName Defined(QxNameKind kind, const std::string& name,
                                        const SlcTextRange& range) const;
    /// Adds the name, and records its definition as a use. Returns the name's index.
    int AddDefinition(QxIndexedName name, const SlcTextRange& range);
    void DefineVariable(const SlcVarDefsNode& declaration, SlcDefExprNode* definition);
    [[nodiscard]] QxIndexedName VariableOf(const SlcVarDefsNode& declaration,
                                           const SlcDefExprNode& definition) const;
    /// Makes the name visible in the current block, from `offset` on.
    void MakeVisible(int name, std::uint32_t offset);
    void AddUse(int name, QxUseRole role, std::size_t token, const SlcExprNode* value);
    void AddUse(int name, QxUseRole role, const SlcTextRange& range, const std::string& text,
                const SlcExprNode* value);
    void AddSpace(std::size_t token);
    void AddCall(int name, const std::string& text, const SlcExprNode* call,
                 const std::vector<const SlcExprNode*>& arguments);
    void WalkBody(SlcStmtsNode* body, const SlcTextRange& definition);
    /// Sets the declaration of a shader or function, whose formals are known.
    void FinishDeclaration(int name);
    /// Returns the detail of a variable at this use, as far as it is known.
    [[nodiscard]] QxDetail DetailHere(int name, const SlcExprNode* use) const;
    /// Walks a value, and returns its detail as far as it is known.
    QxDetail WalkValue(SlcExprNode* value);
    /// Records that the variable is assigned a value of this detail at the current place. Has an
    /// effect only for locals that are declared without a detail.
    void RecordValue(int name, QxDetail detail);
    /// Sets the detail of all uses of locals that are declared without a detail, if it is known.
    void SetDetails();
    /// Walks a condition and the one or two parts that it controls; `second` may be null.
    void WalkConditionally(SlcRelationNode* condition, SlcSyntaxNode* first, SlcSyntaxNode* second);

    QxSourceIndex& m_index;
    SlcIndexNames& m_names;
    const SlcIndexPlaces& m_places;
    bool m_isStrict;
    int m_block = 0;
    int m_owner = -1;
    bool m_readsFormals = false;
    bool m_isInFunction = false;
    QxDetail m_seen = QxDetail::None;  // detail of the parts of a value that have been walked
    bool m_writes = false;             // the next expression is an output argument
    int m_varyingConditions = 0;       // enclosing conditions in this body that may be varying
};
