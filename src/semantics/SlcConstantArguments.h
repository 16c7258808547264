#pragma once

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcSemanticError;

/// Warns, at level 2, of constant arguments of a built-in that the run time replaces or ignores:
/// unknown names, indices out of range, incomplete segments of a spline, formats that do not match
/// their arguments. The call must have its overload and the types of its arguments.
void SlcCheckConstantArguments(SlcSemanticError& errors, const SlcProcCallExprNode& call);

/// Warns of a cast to a color in an unknown color space.
void SlcCheckColorSpace(SlcSemanticError& errors, const SlcCastExprNode& cast);
