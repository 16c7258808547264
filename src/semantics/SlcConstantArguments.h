#pragma once

class SlcCastExprNode;
class SlcProcCallExprNode;
class SlcSemanticError;

/// Warns, at level 2, of arguments of a built-in that the run time replaces or ignores: unknown
/// names, indices out of range, too few values or an incomplete segment of a spline, formats that
/// do not match their arguments. Only constant names, indices and formats are checked. Does nothing
/// for other functions. The call must have its overload and the types of its arguments.
void SlcCheckConstantArguments(SlcSemanticError& errors, const SlcProcCallExprNode& call);

/// Warns, at level 2, of a cast to a color in an unknown color space.
void SlcCheckColorSpace(SlcSemanticError& errors, const SlcCastExprNode& cast);
