#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/SlcAnnotation.h"
#include "sqx/SqxPrimitive.h"
#include "symbols/SlcFuncVarArgExpr.h"
#include "symbols/SlcSymbolEntry.h"

class SlcCheckDetail;
class SlcCheckInlineDetail;
class SlcFuncSymbolEntry;
class SlcProcCallExprNode;
class SlcSemanticError;

/// How a built-in may be called: for single points, for the whole grid, or both.
enum class SlcCallSIMD {
    NoSimd,      // one call for each point, or once for uniform data
    Simd,        // also one call for the whole grid
    AlwaysSimd,  // only one call for the whole grid, since it needs adjacent points
};

/// The origin of a function.
enum class SlcFuncOrigin { BuiltIn, User, Shadeop };

/// The arguments of a call, in source order; the tree owns them.
using SlcCallArgs = std::vector<SlcExprNode*>;

/// The rules that compute the detail of a call: for the call as it is written, and for a call in a
/// function body that is evaluated with the details of certain arguments. They also report
/// violations. The rules are in `semantics`; entries only hold and call them.
using SlcCheckDetailProc = SlcDetailNode* (*)(SlcCheckDetail*, SlcPtr<SlcFuncSymbolEntry>,
                                              SlcProcCallExprNode*);
using SlcCheckInlineDetailProc = SlcDetailNode* (*)(SlcCheckInlineDetail*,
                                                    SlcPtr<SlcFuncSymbolEntry>,
                                                    SlcProcCallExprNode*);

/// The properties that functions of all kinds have. `argTypes`, `argDetails` and `argStorages` have
/// the same length and do not include a variable tail (`SlcFuncVarArgExpr`).
struct SlcFuncSignature {
    SlcIdentNode* ident = nullptr;
    SlcTypeNode* returnType = nullptr;
    std::vector<SlcTypeNode*> argTypes;
    std::vector<SlcDetailNode*> argDetails;
    std::vector<SlcStorageSpecNode*> argStorages;
    bool orderSensitive = false;  // calls must not be reordered
    bool foldable = false;        // may be evaluated at compile time
    SlcCallSIMD simd = SlcCallSIMD::NoSimd;
    std::vector<SlcDetailNode*> simdDetails;  // required of each argument of a whole-grid call
    SlcCheckDetailProc checkDetail = nullptr;
    SlcCheckInlineDetailProc checkInlineDetail = nullptr;
    std::optional<SqxPrimitive> primitive;  // of a built-in
    SlcFuncOrigin origin = SlcFuncOrigin::BuiltIn;
};

/// One overload of a function: a built-in, a function of the source or a shadeop. Symbol tables
/// have an entry for each overload of a name; `SlcResolveCall` selects the one for a call.
class SlcFuncSymbolEntry : public SlcSymbolEntry {
public:
    explicit SlcFuncSymbolEntry(SlcFuncSignature signature);
    ~SlcFuncSymbolEntry() override;

    [[nodiscard]] bool IsFunction() const override { return true; }

    /// True if a call with as many arguments can match this overload.
    [[nodiscard]] virtual bool CheckNumberArgs(const SlcCallArgs& args) const;
    /// True if each argument's set of types contains one that matches the formal; with `promote`
    /// also by promotion, except for output arguments. False if the last argument is a name of the
    /// variable tail, since its value is missing. A void argument of a variable tail is reported to
    /// `sink`, which may be null. The number of arguments must have been checked.
    [[nodiscard]] virtual bool CheckTypeArgs(const SlcCallArgs& args,
                                             const SlcPtr<SlcSemanticError>& sink, bool promote);
    /// Returns the number of fixed arguments that do not match their formals even with promotion.
    [[nodiscard]] std::size_t CountMismatches(const SlcCallArgs& args) const;
    /// Reports each fixed argument that does not match even with promotion. If all match, reports
    /// the first argument of the tail that does not match, or a name at the end of the tail without
    /// a value. An argument without possible types has been reported before, and is not reported
    /// again. For a call with `SlcOverloads::Outcome::WrongTypes`.
    void ErrorsTypeArgs(const SlcCallArgs& args, const SlcPtr<SlcSemanticError>& sink,
                        std::string_view name);

    /// Query a variable tail and walk over it: `IsVarNbArgs` is true if there is one, and the other
    /// operations call those of `SlcFuncVarArgExpr`, or return null if there is none. `VarArgNext`
    /// skips a part that did not match. A tail keeps the state of only one walk, which
    /// `VarArgBegin` restarts.
    [[nodiscard]] virtual bool IsVarNbArgs() const { return false; }
    virtual SlcFuncVarArgExpr* VarArgBegin() { return nullptr; }
    virtual SlcFuncVarArgLeaf* VarArgFindNextMatch(SlcExprNode*, bool /*promote*/)
    {
        return nullptr;
    }
    virtual SlcFuncVarArgExpr* VarArgNext() { return nullptr; }
    /// Returns the variable tail; null if the number of arguments is fixed.
    [[nodiscard]] virtual SlcFuncVarArgExpr* GetTail() const { return nullptr; }

    /// Return the detail of a call by the function's rules: for a call as written, and for a call
    /// in a function body that is being evaluated. The first reports violations; so does the second
    /// for user functions, but not for built-ins and shadeops.
    [[nodiscard]] SlcDetailNode* CheckDetail(SlcCheckDetail* walker, SlcProcCallExprNode* call);
    [[nodiscard]] SlcDetailNode* CheckInlineDetail(SlcCheckInlineDetail* walker,
                                                   SlcProcCallExprNode* call);

    [[nodiscard]] SlcTypeNode* GetReturnType() const { return m_signature.returnType; }
    [[nodiscard]] const std::vector<SlcTypeNode*>& GetArgTypes() const;
    [[nodiscard]] const std::vector<SlcDetailNode*>& GetArgDetails() const;
    [[nodiscard]] const std::vector<SlcStorageSpecNode*>& GetArgStorages() const;
    [[nodiscard]] SlcCallSIMD GetSIMDKind() const { return m_signature.simd; }
    /// Returns the detail that a whole-grid call requires of each argument, in the order of the
    /// instruction; includes the values of a tail that is not repeated. Empty if no call can be a
    /// whole-grid call.
    [[nodiscard]] const std::vector<SlcDetailNode*>& GetSIMDDetails() const;
    /// Returns the primitive of a built-in; nothing for other functions.
    [[nodiscard]] std::optional<SqxPrimitive> GetPrimitive() const { return m_signature.primitive; }
    [[nodiscard]] SlcFuncOrigin GetOrigin() const { return m_signature.origin; }
    [[nodiscard]] bool IsOrderSensitive() const { return m_signature.orderSensitive; }
    [[nodiscard]] bool IsFoldable() const { return m_signature.foldable; }
    [[nodiscard]] SlcCheckDetailProc GetCheckDetailProc() const { return m_signature.checkDetail; }

    /// Returns the `SlcFuncInfo` of a user function, the facts about its body; null otherwise. The
    /// info and the function's tables form a reference cycle, which `SlcDeleteTree` breaks.
    [[nodiscard]] const SlcPtr<SlcAnnotation>& GetFuncInfo() const { return m_funcInfo; }
    void SetFuncInfo(SlcPtr<SlcAnnotation> info);

private:
    [[nodiscard]] bool MatchesFormal(const SlcExprNode* arg, std::size_t position,
                                     bool promote) const;

    SlcFuncSignature m_signature;
    SlcPtr<SlcAnnotation> m_funcInfo;
};

/// An overload whose fixed arguments are followed by a variable tail.
class SlcFuncVarListSymbolEntry : public SlcFuncSymbolEntry {
public:
    SlcFuncVarListSymbolEntry(SlcFuncSignature signature, std::unique_ptr<SlcFuncVarArgExpr> tail);
    ~SlcFuncVarListSymbolEntry() override;
    [[nodiscard]] bool CheckNumberArgs(const SlcCallArgs& args) const override;
    [[nodiscard]] bool CheckTypeArgs(const SlcCallArgs& args, const SlcPtr<SlcSemanticError>& sink,
                                     bool promote) override;
    [[nodiscard]] bool IsVarNbArgs() const override { return true; }
    SlcFuncVarArgExpr* VarArgBegin() override;
    SlcFuncVarArgLeaf* VarArgFindNextMatch(SlcExprNode* expr, bool promote) override;
    SlcFuncVarArgExpr* VarArgNext() override;
    [[nodiscard]] SlcFuncVarArgExpr* GetTail() const override { return m_tail.get(); }

private:
    std::unique_ptr<SlcFuncVarArgExpr> m_tail;
};
