#pragma once

#include <vector>

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcStringLiteralNode;
class SlcTypeNode;

// The coordinate spaces that expressions name; color spaces are none.

/// A value of the type has other numbers in another coordinate space: the point family and
/// matrices.
[[nodiscard]] bool SlcLivesInSpace(const SlcTypeNode* type);
/// The space that a cast takes its value from; null unless it names a coordinate space.
[[nodiscard]] SlcStringLiteralNode* SlcSpaceNamedBy(const SlcCastExprNode* cast);
/// The spaces that a call of a built-in moves its value between, as far as they are constants:
/// those of `transform`, `vtransform` and `ntransform`.
[[nodiscard]] std::vector<SlcStringLiteralNode*> SlcSpacesNamedBy(const SlcProcCallExprNode* call);
