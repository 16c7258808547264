#pragma once

#include "symbols/SlcFuncSymbolEntry.h"

/// Returns the detail of a call of a user function: that of its body with the details of this
/// call's arguments; uniform after a report. Reports arguments that do not match the formals, light
/// statements of the function that are not allowed here, accesses to the light of an `illuminance`
/// statement if the call is outside of one, and expansions that are too large; warns of a variable
/// that is both input and output. Marks the function as called if shader code reaches it.
SlcDetailNode* SlcCheckArgsDetail(SlcCheckDetail* walker, SlcPtr<SlcFuncSymbolEntry> entry,
                                  SlcProcCallExprNode* call);

/// Does the same for a call in a body that is being evaluated, with the inline details of the
/// arguments, and records the details of the variables that the call writes. Omits the checks of
/// output arguments, of variables that are both input and output, and of the light of an
/// `illuminance` statement. Throws `SlcAlreadyInLightControlStmt` instead of reporting nested light
/// statements.
SlcDetailNode* SlcCheckArgsDetailInline(SlcCheckInlineDetail* walker,
                                        SlcPtr<SlcFuncSymbolEntry> entry,
                                        SlcProcCallExprNode* call);
