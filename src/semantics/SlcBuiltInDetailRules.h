#pragma once

#include "symbols/SlcBuiltInTable.h"

// The rules for the detail of a call of a built-in. A rule for `SlcCheckDetail` also reports
// invalid arguments. Its inline counterpart uses the inline details of a body that is being
// evaluated, and does not repeat these reports.

using SlcFuncEntry = SlcPtr<SlcFuncSymbolEntry>;

/// Returns uniform if all arguments are; without arguments, the detail that the context requests.
SlcDetailNode* SlcAllArgsUniformReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                              SlcProcCallExprNode* call);
SlcDetailNode* SlcAllArgsUniformReturnUniformInline(SlcCheckInlineDetail* walker,
                                                    SlcFuncEntry entry, SlcProcCallExprNode* call);
/// Returns varying, for built-ins that read varying data which is not an argument.
SlcDetailNode* SlcAlwaysReturnVarying(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnVaryingInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);
/// Returns uniform, for built-ins with one result for the grid, regardless of the arguments.
SlcDetailNode* SlcAlwaysReturnUniform(SlcCheckDetail* walker, SlcFuncEntry entry,
                                      SlcProcCallExprNode* call);
SlcDetailNode* SlcAlwaysReturnUniformInline(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                            SlcProcCallExprNode* call);

// The inline rules of built-ins that write to arguments: the written variables get the combined
// inline detail of the inputs.

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
/// For built-ins whose card declares which arguments are outputs. Part of the table of rules, but
/// no card uses it.
SlcDetailNode* SlcCheckInlineOutputProc(SlcCheckInlineDetail* walker, SlcFuncEntry entry,
                                        SlcProcCallExprNode* call);

/// Returns all rules, indexed by `SqxDetailRule` and `SqxInlineRule`.
[[nodiscard]] const SlcDetailRules& SlcBuiltInDetailRules();
