#pragma once

#include <vector>

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcStringLiteralNode;
class SlcTypeNode;

// The coordinate spaces, but not the color spaces, that expressions name.

/// True if values of the type depend on the coordinate space: the point family and matrices.
[[nodiscard]] bool SlcLivesInSpace(const SlcTypeNode* type);
/// Returns the coordinate space of a cast, "current" if the source names none; null for a type
/// that does not live in a coordinate space, such as color.
[[nodiscard]] SlcStringLiteralNode* SlcSpaceNamedBy(const SlcCastExprNode* cast);
/// Returns the constant space names in a call of the built-in `transform`, `vtransform` or
/// `ntransform`; empty for other built-ins.
[[nodiscard]] std::vector<SlcStringLiteralNode*> SlcSpacesNamedBy(const SlcProcCallExprNode* call);
