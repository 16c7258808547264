#pragma once

#include <utility>
#include <vector>

#include "frontend/SlcAnnotation.h"
#include "frontend/SlcDetailNode.h"
#include "frontend/SlcExprNodes.h"
#include "frontend/SlcTypeNode.h"

class SlcLexType;

/// Appends `type` unless `types` contains the same type. The point family counts as one type.
void SlcAddTypeIfNotPresent(std::vector<SlcTypeNode*>& types, SlcTypeNode* type);

/// The results of semantic analysis for an expression, filled in by successive passes: the types
/// that it can have, the chosen type, and the detail. The lowering reads the last two.
///
///     Ci = noise(s)        for the call: {float, color, point}, then color, then varying
class SlcPossibleTypes : public SlcAnnotation {
public:
    /// `types` are in order of discovery.
    explicit SlcPossibleTypes(std::vector<SlcTypeNode*> types);
    /// Makes the set of one type, which most expressions have.
    explicit SlcPossibleTypes(SlcTypeNode* type);

    /// Returns the annotation of an expression; null if it has none yet.
    [[nodiscard]] static SlcPtr<SlcPossibleTypes> Of(const SlcExprNode* expr);

    [[nodiscard]] const std::vector<SlcTypeNode*>& GetTypes() const { return *m_types; }

    /// Returns the first member x with `type->IsSameType(x)` or, unless `type` is void, of type
    /// error. If there is none and `promote` is true, the first x with `type->IsPromotableAs(x)` or
    /// `x->IsPromotableAs(type)` decides: returns x in the first case, `type` in the second. Null
    /// if no member matches.
    [[nodiscard]] SlcTypeNode* IsInTypes(SlcTypeNode* type, bool promote) const;

    /// Void until a pass has chosen the type.
    [[nodiscard]] SlcTypeNode* GetUniqueType() const { return m_uniqueType; }
    void SetUniqueType(SlcTypeNode* type) { m_uniqueType = type; }
    /// Unknown until the detail pass sets it.
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    /// Returns the detail that the last evaluation of the enclosing function's body found: it
    /// depends on the arguments of the call. Unknown before the first evaluation.
    [[nodiscard]] SlcDetailNode* GetInlineDetail() const { return m_inlineDetail; }
    void SetInlineDetail(SlcDetailNode* detail) { m_inlineDetail = detail; }
    /// Returns the operand into which the lowering should compute the expression's value if that
    /// is possible, such as the target of an assignment; null if there is none.
    [[nodiscard]] const SlcPtr<SlcLexType>& GetOperandHint() const { return m_operandHint; }
    void SetOperandHint(SlcPtr<SlcLexType> operand);

private:
    // Never null. Every expression has a set and few of them differ, so equal sets are shared.
    const std::vector<SlcTypeNode*>* m_types;
    SlcTypeNode* m_uniqueType = SlcTypeNode::AVoid();
    SlcDetailNode* m_detail = SlcDetailNode::AUnknown();
    SlcDetailNode* m_inlineDetail = SlcDetailNode::AUnknown();
    SlcPtr<SlcLexType> m_operandHint;  // set and cleared around the lowering of the expression
};

/// The result of semantic analysis for the target of an assignment.
class SlcLValueType : public SlcAnnotation {
public:
    explicit SlcLValueType(SlcTypeNode* type) : m_type(type) {}
    [[nodiscard]] SlcTypeNode* GetType() const { return m_type; }
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    [[nodiscard]] SlcDetailNode* GetInlineDetail() const { return m_inlineDetail; }
    void SetInlineDetail(SlcDetailNode* detail) { m_inlineDetail = detail; }

private:
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail = SlcDetailNode::AUnknown();
    SlcDetailNode* m_inlineDetail = SlcDetailNode::AUnknown();
};
