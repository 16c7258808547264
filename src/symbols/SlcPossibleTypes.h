#pragma once

#include <utility>
#include <vector>

#include "frontend/SlcAnnotation.h"
#include "frontend/SlcDetailNode.h"
#include "frontend/SlcExprNodes.h"
#include "frontend/SlcTypeNode.h"

class SlcLexType;

/// Appends `type` unless a member answers `IsSameType` to it.
void SlcAddTypeIfNotPresent(std::vector<SlcTypeNode*>& types, SlcTypeNode* type);

/// What the semantic passes find out about an expression, one pass after the other: the types that
/// it can have, the one that it has, its detail. The lowering reads the last two.
///
///     Ci = noise(s)        of the call: {float, color, point}, then color, then varying
class SlcPossibleTypes : public SlcAnnotation {
public:
    /// `types` in order of discovery.
    explicit SlcPossibleTypes(std::vector<SlcTypeNode*> types);

    /// The annotation of an expression; null if it has none yet.
    [[nodiscard]] static SlcPtr<SlcPossibleTypes> Of(const SlcExprNode* expr);

    [[nodiscard]] const std::vector<SlcTypeNode*>& GetTypes() const { return *m_types; }

    /// The first member x with `type->IsSameType(x)`, or of type error. Without one, and with
    /// promotion allowed, the first x with `type->IsPromotableAs(x)`, or `type` itself if x
    /// promotes to it. Null if nothing fits.
    [[nodiscard]] SlcTypeNode* IsInTypes(SlcTypeNode* type, bool promote) const;

    /// Void until something has chosen.
    [[nodiscard]] SlcTypeNode* GetUniqueType() const { return m_uniqueType; }
    void SetUniqueType(SlcTypeNode* type) { m_uniqueType = type; }
    /// Unknown until the detail pass.
    [[nodiscard]] SlcDetailNode* GetDetail() const { return m_detail; }
    void SetDetail(SlcDetailNode* detail) { m_detail = detail; }
    /// The detail for the call of the enclosing function that is being evaluated.
    [[nodiscard]] SlcDetailNode* GetInlineDetail() const { return m_inlineDetail; }
    void SetInlineDetail(SlcDetailNode* detail) { m_inlineDetail = detail; }
    /// The operand that is to hold the expression's value, if the parent has one in mind.
    [[nodiscard]] const SlcPtr<SlcLexType>& GetOperandHint() const { return m_operandHint; }
    void SetOperandHint(SlcPtr<SlcLexType> operand);

private:
    // Every expression has a set and few differ, so that equal ones are shared. Never null.
    const std::vector<SlcTypeNode*>* m_types;
    SlcTypeNode* m_uniqueType = SlcTypeNode::AVoid();
    SlcDetailNode* m_detail = SlcDetailNode::AUnknown();
    SlcDetailNode* m_inlineDetail = SlcDetailNode::AUnknown();
    SlcPtr<SlcLexType> m_operandHint;  // set and cleared around the lowering of the expression
};

/// The same for what an assignment writes to.
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
