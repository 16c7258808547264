#pragma once

#include "support/SlcOptionsControl.h"

class SlcSyntaxNode;

/// Checks a parsed tree and stores the results in its nodes: scopes, types, details and the
/// selected overloads. Throws `SlcCompilationError` if anything was reported as an error.
///
/// `SlcCheckSemantics` checks one statement after the other, since everything is declared before
/// its use, and runs five passes over each expression:
///
///     pass                    direction  leaves on the node, or reports
///     SlcCalculateTypesSets   up         the types that it can have
///     SlcResolveUniqueType    down       the one that its context wants; of a call the overload
///     SlcCheckDetail          up         uniform or varying, as the statement is written
///     SlcCheckInlineDetail    a body     the same in the function that a call reaches
///     SlcCheckUsage           in order   variables that are read before they are set
void SlcSemantics(SlcSyntaxNode* tree, SlcOptionsControl& options);
