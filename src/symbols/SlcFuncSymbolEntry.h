#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/SlcAnnotation.h"
#include "symbols/SlcFuncVarArgExpr.h"
#include "symbols/SlcSymbolEntry.h"

class SlcCheckDetail;
class SlcCheckInlineDetail;
class SlcFuncSymbolEntry;
class SlcProcCallExprNode;
class SlcSemanticError;

/// How a built-in may be issued for many points at once.
enum class SlcCallSIMD {
    NoSimd,      // one call for each point, or once for uniform data
    Simd,        // also as one call for the whole grid
    AlwaysSimd,  // only as one call for the whole grid: it needs neighbouring points
};

/// Where a function comes from.
enum class SlcFuncOrigin { BuiltIn, User, Shadeop };

/// The expressions of a call, in order; the tree owns them.
using SlcCallArgs = std::vector<SlcExprNode*>;

/// A rule that gives the detail of a call and reports what breaks the detail rules. The library
/// of detail rules lives in `semantics`; entries only hold and call them.
using SlcCheckDetailProc = SlcDetailNode* (*)(SlcCheckDetail*, SlcPtr<SlcFuncSymbolEntry>,
                                              SlcProcCallExprNode*);
using SlcCheckInlineDetailProc = SlcDetailNode* (*)(SlcCheckInlineDetail*,
                                                    SlcPtr<SlcFuncSymbolEntry>,
                                                    SlcProcCallExprNode*);

/// What all kinds of functions are declared by. The three argument lists run in step; a variable
/// tail is no part of them.
struct SlcFuncSignature {
    SlcIdentNode* ident = nullptr;
    SlcTypeNode* returnType = nullptr;
    std::vector<SlcTypeNode*> argTypes;
    std::vector<SlcDetailNode*> argDetails;
    std::vector<SlcStorageSpecNode*> argStorages;
    bool orderSensitive = false;  // calls must keep their order
    bool foldable = false;        // may be evaluated at compile time
    SlcCallSIMD simd = SlcCallSIMD::NoSimd;
    std::vector<SlcDetailNode*> simdDetails;  // wanted of each argument in a whole-grid call
    SlcCheckDetailProc checkDetail = nullptr;
    SlcCheckInlineDetailProc checkInlineDetail = nullptr;
    SlcIdentNode* cName = nullptr;  // name in generated code; null where there is none
    SlcFuncOrigin origin = SlcFuncOrigin::BuiltIn;
};

/// One overload of a function: a built-in, a function of the source or a shadeop. The tables of a
/// scope hold the overloads of a name one behind the other; which one a call means is settled by
/// `SlcResolveCall`.
class SlcFuncSymbolEntry : public SlcSymbolEntry {
public:
    explicit SlcFuncSymbolEntry(SlcFuncSignature signature);
    ~SlcFuncSymbolEntry() override;

    [[nodiscard]] bool IsFunction() const override { return true; }

    /// True if a call with so many arguments can mean this overload.
    [[nodiscard]] virtual bool CheckNumberArgs(const SlcCallArgs& args) const;
    /// True if each argument's set of types holds one that suits the formal; with `promote` also
    /// by promotion, which an output argument never takes. `sink` may be null.
    [[nodiscard]] virtual bool CheckTypeArgs(const SlcCallArgs& args,
                                             const SlcPtr<SlcSemanticError>& sink, bool promote);
    /// How many arguments do not fit their formals even by promotion, the tail left out.
    [[nodiscard]] std::size_t CountMisfits(const SlcCallArgs& args) const;
    /// Reports each argument that does not fit even by promotion, for the catcher of
    /// `SlcFuncArgsTypeError`.
    void ErrorsTypeArgs(const SlcCallArgs& args, const SlcPtr<SlcSemanticError>& sink,
                        std::string_view name);

    /// The walk over a variable tail; without one these answer false and null. A tail keeps the
    /// state of one walk at a time, which `VarArgBegin` starts anew.
    [[nodiscard]] virtual bool IsVarNbArgs() const { return false; }
    virtual SlcFuncVarArgExpr* VarArgBegin() { return nullptr; }
    virtual SlcFuncVarArgLeaf* VarArgFindNextMatch(SlcExprNode*, bool /*promote*/)
    {
        return nullptr;
    }
    virtual SlcFuncVarArgExpr* VarArgNext() { return nullptr; }
    /// Null for a fixed number of arguments.
    [[nodiscard]] virtual SlcFuncVarArgExpr* GetTail() const { return nullptr; }

    /// The detail of a call by the function's own rule, and of one met in a body that is being
    /// evaluated. Both report what the call breaks.
    [[nodiscard]] SlcDetailNode* CheckDetail(SlcCheckDetail* walker, SlcProcCallExprNode* call);
    [[nodiscard]] SlcDetailNode* CheckInlineDetail(SlcCheckInlineDetail* walker,
                                                   SlcProcCallExprNode* call);

    [[nodiscard]] SlcTypeNode* GetReturnType() const { return m_signature.returnType; }
    [[nodiscard]] const std::vector<SlcTypeNode*>& GetArgTypes() const;
    [[nodiscard]] const std::vector<SlcDetailNode*>& GetArgDetails() const;
    [[nodiscard]] const std::vector<SlcStorageSpecNode*>& GetArgStorages() const;
    [[nodiscard]] SlcCallSIMD GetSIMDKind() const { return m_signature.simd; }
    /// Of a tail too, in its fixed places.
    [[nodiscard]] const std::vector<SlcDetailNode*>& GetSIMDDetails() const;
    /// The primitive of a built-in, without suffixes of forms; a unique name for a shadeop; null
    /// for a function of the source, and for a built-in that has none yet.
    [[nodiscard]] SlcIdentNode* GetCName() const { return m_signature.cName; }
    [[nodiscard]] SlcFuncOrigin GetOrigin() const { return m_signature.origin; }
    [[nodiscard]] bool IsOrderSensitive() const { return m_signature.orderSensitive; }
    [[nodiscard]] bool IsFoldable() const { return m_signature.foldable; }
    [[nodiscard]] SlcCheckDetailProc GetCheckDetailProc() const { return m_signature.checkDetail; }

    /// The `SlcFuncInfo` of a user function; null otherwise. It forms a cycle with the function's
    /// tables, which `SlcDeleteTree` cuts.
    [[nodiscard]] const SlcPtr<SlcAnnotation>& GetFuncInfo() const { return m_funcInfo; }
    void SetFuncInfo(SlcPtr<SlcAnnotation> info);

private:
    [[nodiscard]] bool FitsFormal(const SlcExprNode* arg, std::size_t position, bool promote) const;

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
