#pragma once

#include <deque>
#include <memory>
#include <string>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"

class SlcExprNode;
class SlcFuncVarArgLeaf;

/// A variable tail, or a part of one. The variable tail of a built-in declares the arguments after
/// the fixed ones, which may be omitted, named or repeated. A walk matches it against the arguments
/// of one call. The parts keep the state of the walk, which `Begin` resets, so there can be only
/// one walk at a time.
///
///     tail->Begin();
///     for (argument : arguments after the fixed ones)
///         leaf = tail->FindNextMatch(argument, promote);      null: the call does not match
class SlcFuncVarArgExpr {
public:
    SlcFuncVarArgExpr() = default;
    SlcFuncVarArgExpr(const SlcFuncVarArgExpr&) = delete;
    SlcFuncVarArgExpr& operator=(const SlcFuncVarArgExpr&) = delete;
    virtual ~SlcFuncVarArgExpr() = default;

    /// Starts a walk and returns the first leaf; null for an empty list.
    virtual SlcFuncVarArgExpr* Begin() = 0;
    /// Moves to the leaf to try next and returns it; null at the end. `skip` means that the current
    /// leaf did not match.
    virtual SlcFuncVarArgExpr* Next(bool skip) = 0;
    /// Returns the leaf that the next argument is matched against first; null past the end of a
    /// list.
    [[nodiscard]] virtual SlcFuncVarArgExpr* CurrentExpr() = 0;
    /// Returns the maximum number of arguments, counting the names of pairs if `withNames`;
    /// negative for any number.
    [[nodiscard]] virtual int GetMaxSize(bool withNames) const = 0;
    /// Returns the leaf that accepts the argument; null if none does. A list also moves past parts
    /// that do not match, and past the leaf unless that is repeated. `promote` allows promotion.
    virtual SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) = 0;
};

/// A part that accepts single arguments, and the type, detail and storage that it requires of them.
class SlcFuncVarArgLeaf : public SlcFuncVarArgExpr {
public:
    [[nodiscard]] virtual SlcTypeNode* GetType() const = 0;
    [[nodiscard]] virtual SlcDetailNode* GetDetail() const = 0;
    [[nodiscard]] virtual SlcStorageSpecNode* GetStorage() const = 0;
    /// True if the part accepts the name of a name and value pair.
    [[nodiscard]] virtual bool IsPairName() const = 0;
    /// True if the part accepts a value.
    [[nodiscard]] virtual bool IsPlainValue() const = 0;
};

/// One value, or any number of values if repeated.
class SlcFuncVarArgSingle : public SlcFuncVarArgLeaf {
public:
    SlcFuncVarArgSingle(SlcTypeNode* type, SlcDetailNode* detail, SlcStorageSpecNode* storage,
                        bool repeated, std::string defaultValue);
    SlcFuncVarArgExpr* Begin() override;
    SlcFuncVarArgExpr* Next(bool skip) override;
    [[nodiscard]] SlcFuncVarArgExpr* CurrentExpr() override;
    [[nodiscard]] int GetMaxSize(bool withNames) const override;
    SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) override;
    [[nodiscard]] SlcTypeNode* GetType() const override { return m_type; }
    [[nodiscard]] SlcDetailNode* GetDetail() const override { return m_detail; }
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const override { return m_storage; }
    [[nodiscard]] bool IsPairName() const override { return false; }
    [[nodiscard]] bool IsPlainValue() const override { return true; }
    [[nodiscard]] bool IsRepeated() const { return m_repeated; }
    /// Returns the default as written in the card; empty if there is none.
    [[nodiscard]] const std::string& GetDefault() const { return m_default; }

private:
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail;
    SlcStorageSpecNode* m_storage;
    bool m_repeated;
    std::string m_default;
};

/// A constant name, then its value: `"blur", 0.1`. This leaf accepts the name, and the leaf
/// `GetValue` accepts the next argument.
class SlcFuncVarArgPair : public SlcFuncVarArgLeaf {
public:
    SlcFuncVarArgPair(std::string name, std::unique_ptr<SlcFuncVarArgSingle> value);
    SlcFuncVarArgExpr* Begin() override;
    SlcFuncVarArgExpr* Next(bool skip) override;
    [[nodiscard]] SlcFuncVarArgExpr* CurrentExpr() override;
    [[nodiscard]] int GetMaxSize(bool withNames) const override;
    SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) override;
    /// Return the properties of the name argument: a string, a uniform input.
    [[nodiscard]] SlcTypeNode* GetType() const override;
    [[nodiscard]] SlcDetailNode* GetDetail() const override;
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const override;
    [[nodiscard]] bool IsPairName() const override { return true; }
    [[nodiscard]] bool IsPlainValue() const override { return false; }
    /// Returns the name without quotes.
    [[nodiscard]] const std::string& GetName() const { return m_name; }
    [[nodiscard]] SlcFuncVarArgSingle* GetValue() const { return m_value.get(); }

private:
    std::string m_name;
    std::unique_ptr<SlcFuncVarArgSingle> m_value;
    bool m_live = false;          // the last name matched, or there was none yet
    bool m_valueStarted = false;  // the walk has moved on to the value
    bool m_nameMatched = false;
};

/// A sequence of parts, or a set of named pairs in any order and number.
class SlcFuncVarArgList : public SlcFuncVarArgExpr {
public:
    enum class Order { Positional, Named };

    /// Makes an empty list.
    explicit SlcFuncVarArgList(Order order) : m_order(order) {}
    void Append(std::unique_ptr<SlcFuncVarArgExpr> part) { m_parts.push_back(std::move(part)); }
    SlcFuncVarArgExpr* Begin() override;
    SlcFuncVarArgExpr* Next(bool skip) override;
    [[nodiscard]] SlcFuncVarArgExpr* CurrentExpr() override;
    [[nodiscard]] int GetMaxSize(bool withNames) const override;
    SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) override;
    [[nodiscard]] Order GetOrder() const { return m_order; }
    [[nodiscard]] const std::deque<std::unique_ptr<SlcFuncVarArgExpr>>& GetParts() const;

private:
    Order m_order;
    std::deque<std::unique_ptr<SlcFuncVarArgExpr>> m_parts;
    std::size_t m_current = 0;
};
