#pragma once

#include <vector>

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcStringLiteralNode;
class SlcTypeNode;

// The coordinate spaces that expressions name, without color spaces.

/// True if values of the type depend on the coordinate space: the point family and matrices.
[[nodiscard]] bool SlcLivesInSpace(const SlcTypeNode* type);
/// Returns the coordinate space that a cast names, also if that is the current one; null if it
/// names none.
[[nodiscard]] SlcStringLiteralNode* SlcSpaceNamedBy(const SlcCastExprNode* cast);
/// Returns the constant space names in a call of the built-in `transform`, `vtransform` or
/// `ntransform`; empty for other built-ins.
[[nodiscard]] std::vector<SlcStringLiteralNode*> SlcSpacesNamedBy(const SlcProcCallExprNode* call);
