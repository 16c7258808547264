#pragma once

#include "symbols/SlcBuiltInTable.h"

// The rules that compute the detail of a call of a built-in; shadeops have the first rule. A rule
// for `SlcCheckDetail` also reports arguments that are not allowed. Its inline counterpart, for a
// call in a function body that `SlcCheckInlineDetail` evaluates, uses the details in this
// evaluation (inline details) and does not repeat these reports.

using SlcFuncEntry = SlcPtr<SlcFuncSymbolEntry>;

/// Returns the combined detail of the arguments, so uniform only if all arguments are; without
/// arguments, the detail that the context requests, or unknown if it requests none.
SlcDetailNode* SlcAllArgsUniformReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call);
SlcDetailNode* SlcAllArgsUniformReturnUniformInline(SlcCheckInlineDetail* walker,
                                                    SlcFuncEntry entry, SlcProcCallExprNode* call);
/// Returns varying, mostly for built-ins that read varying data which is not an argument.
SlcDetailNode* SlcAlwaysReturnVarying(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnVaryingInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);
/// Returns uniform, for built-ins with one result for the grid, regardless of the arguments.
SlcDetailNode* SlcAlwaysReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);

// The inline rules of the built-ins whose written arguments get the combined inline detail of the
// inputs, which is also the detail of the call. The inline rules above treat all written values as
// varying.

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
/// For built-ins whose card declares which arguments are outputs: combines all arguments. Part of
/// the table of rules, but no card uses it.
SlcDetailNode* SlcCheckInlineOutputProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                        SlcProcCallExprNode* call);

/// Returns all rules, indexed by `SqxDetailRule` and `SqxInlineRule`.
[[nodiscard]] const SlcDetailRules& SlcBuiltInDetailRules();
