#pragma once

#include "symbols/SlcFuncSymbolEntry.h"

/// Returns the detail of a call of a user function: that of its body with the details of this
/// call's arguments; uniform after a report. Reports arguments that do not match the formals, and
/// light statements of the function that are not allowed here. Marks the function as called if
/// shader code reaches it.
SlcDetailNode* SlcCheckArgsDetail(SlcCheckDetail* walker, SlcPtr<SlcFuncSymbolEntry> entry,
                                  SlcProcCallExprNode* call);

/// Does the same for a call in a body that is being evaluated. Throws
/// `SlcAlreadyInLightControlStmt` instead of reporting nested light statements.
SlcDetailNode* SlcCheckArgsDetailInline(SlcCheckInlineDetail* walker,
                                        SlcPtr<SlcFuncSymbolEntry> entry,
                                        SlcProcCallExprNode* call);
