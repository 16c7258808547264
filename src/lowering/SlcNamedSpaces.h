#pragma once

#include <vector>

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcStringLiteralNode;
class SlcTypeNode;

// The coordinate spaces that expressions name, without color spaces.

/// True if values of the type depend on the coordinate space: the point family and matrices.
[[nodiscard]] bool SlcLivesInSpace(const SlcTypeNode* type);
/// Returns the space from which a cast transforms its value; null unless it names a coordinate
/// space.
[[nodiscard]] SlcStringLiteralNode* SlcSpaceNamedBy(const SlcCastExprNode* cast);
/// Returns the constant space names in a call of `transform`, `vtransform` or `ntransform`.
[[nodiscard]] std::vector<SlcStringLiteralNode*> SlcSpacesNamedBy(const SlcProcCallExprNode* call);
