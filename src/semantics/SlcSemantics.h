#pragma once

#include "support/SlcOptionsControl.h"

class SlcSyntaxNode;

/// Checks a parsed tree and leaves the results on its nodes: scopes, types, details and the
/// chosen overloads. Throws `SlcCompilationError` if anything was reported as an error.
void SlcSemantics(SlcSyntaxNode* tree, SlcOptionsControl& options);
