#pragma once

#include "support/SlcOptionsControl.h"

class SlcSyntaxNode;

/// Checks a parsed tree and stores the results in its nodes: scopes, types, details and the
/// selected overloads. Throws `SlcCompilationError` if an error was reported.
///
/// `SlcCheckSemantics` checks one statement after the other, since everything is declared before
/// its use, and runs these passes over each expression:
///
///     pass                    direction  stores in the node, or reports
///     SlcCalculateTypesSets   up         the types that it can have
///     SlcResolveUniqueType    down       the one that its context requests; the overload of a call
///     SlcCheckDetail          up         uniform, varying, or unknown in a function
///     SlcCheckInlineDetail    a body     the same in the body of a user function, for a call
///     SlcCheckUsage           in order   variables that may be read before they are set; skipped
///                                        if warnings are off
void SlcSemantics(SlcSyntaxNode* tree, SlcOptionsControl& options);
