#pragma once

#include "symbols/SlcFuncSymbolEntry.h"

/// The detail of a call of a user function, which is that of its body with the details of this
/// call's arguments. Reports arguments that do not suit the formals, and light statements that
/// the function must not bring here. Marks the function as called if shader code reaches it.
SlcDetailNode* SlcCheckArgsDetail(SlcCheckDetail* walker, SlcPtr<SlcFuncSymbolEntry> entry,
                                  SlcProcCallExprNode* call);

/// The same for a call met while the body around it is evaluated.
SlcDetailNode* SlcCheckArgsDetailInline(SlcCheckInlineDetail* walker,
                                        SlcPtr<SlcFuncSymbolEntry> entry,
                                        SlcProcCallExprNode* call);
