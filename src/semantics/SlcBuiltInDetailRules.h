#pragma once

#include "symbols/SlcBuiltInTable.h"

// The rules that give the detail of a call of a built-in. A rule of the first pass also reports
// arguments that the call must not have; its inline twin works on the inline details of a body
// that is being evaluated, and reports nothing.

using SlcFuncEntry = SlcPtr<SlcFuncSymbolEntry>;

/// Uniform if all arguments are; without arguments, what the context wants.
SlcDetailNode* SlcAllArgsUniformReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call);
SlcDetailNode* SlcAllArgsUniformReturnUniformInline(SlcCheckInlineDetail* walker,
                                                    SlcFuncEntry entry, SlcProcCallExprNode* call);
/// Varying, since they read varying data that is not among their arguments.
SlcDetailNode* SlcAlwaysReturnVarying(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnVaryingInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);
/// Uniform: one answer for the grid, whatever is asked.
SlcDetailNode* SlcAlwaysReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);

// The inline rules of built-ins that write to arguments: the combination of the inputs becomes
// the inline detail of what they write to.

SlcDetailNode* SlcCheckInlineSetPointCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call);
SlcDetailNode* SlcCheckInlineSetColorCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call);
SlcDetailNode* SlcCheckInlineSetMatrixCompProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                               SlcProcCallExprNode* call);
SlcDetailNode* SlcCheckInlineFresnelProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                         SlcProcCallExprNode* call);
SlcDetailNode* SlcCheckInlineUnpackProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                        SlcProcCallExprNode* call);
/// For built-ins whose card says which arguments are output. Part of the rules; no card names it.
SlcDetailNode* SlcCheckInlineOutputProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                        SlcProcCallExprNode* call);

/// All of them, by `SqxDetailRule` and `SqxInlineRule`.
[[nodiscard]] const SlcDetailRules& SlcBuiltInDetailRules();
