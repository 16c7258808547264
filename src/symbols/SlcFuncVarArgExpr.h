#pragma once

#include <deque>
#include <memory>
#include <string>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"

class SlcExprNode;
class SlcFuncVarArgLeaf;

/// The description of a variable tail of arguments, walked along with the arguments of one call.
/// Each part is a small state machine, which `Begin` starts anew: one walk at a time.
///
///     tail->Begin();
///     for (argument : those behind the fixed ones)
///         leaf = tail->FindNextMatch(argument, promote);      null: the call does not fit
class SlcFuncVarArgExpr {
public:
    SlcFuncVarArgExpr() = default;
    SlcFuncVarArgExpr(const SlcFuncVarArgExpr&) = delete;
    SlcFuncVarArgExpr& operator=(const SlcFuncVarArgExpr&) = delete;
    virtual ~SlcFuncVarArgExpr() = default;

    /// Starts a walk and gives the first part; null for an empty list.
    virtual SlcFuncVarArgExpr* Begin() = 0;
    /// The part behind the current one, null at the end. `skip`: the last argument did not match.
    virtual SlcFuncVarArgExpr* Next(bool skip) = 0;
    /// The part that the next argument is tried on; null behind the last.
    [[nodiscard]] virtual SlcFuncVarArgExpr* CurrentExpr() = 0;
    /// The most arguments that it takes, counting the names of pairs if `withNames`; negative for
    /// any number.
    [[nodiscard]] virtual int GetMaxSize(bool withNames) const = 0;
    /// The leaf that takes the argument, behind which a list then stands; null if none does.
    /// `promote` allows promotion.
    virtual SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) = 0;
};

/// A part that takes one argument. Type, detail and storage are what the argument must suit.
class SlcFuncVarArgLeaf : public SlcFuncVarArgExpr {
public:
    [[nodiscard]] virtual SlcTypeNode* GetType() const = 0;
    [[nodiscard]] virtual SlcDetailNode* GetDetail() const = 0;
    [[nodiscard]] virtual SlcStorageSpecNode* GetStorage() const = 0;
    /// It takes the name of a name and value pair.
    [[nodiscard]] virtual bool IsPairName() const = 0;
    /// It takes a value by its place.
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
    /// As the row writes it; empty when it gives none.
    [[nodiscard]] const std::string& GetDefault() const { return m_default; }

private:
    SlcTypeNode* m_type;
    SlcDetailNode* m_detail;
    SlcStorageSpecNode* m_storage;
    bool m_repeated;
    std::string m_default;
};

/// A constant name, then its value: `"blur", 0.1`. It stands for the name itself, and hands the
/// argument behind it to the value.
class SlcFuncVarArgPair : public SlcFuncVarArgLeaf {
public:
    SlcFuncVarArgPair(std::string name, std::unique_ptr<SlcFuncVarArgSingle> value);
    SlcFuncVarArgExpr* Begin() override;
    SlcFuncVarArgExpr* Next(bool skip) override;
    [[nodiscard]] SlcFuncVarArgExpr* CurrentExpr() override;
    [[nodiscard]] int GetMaxSize(bool withNames) const override;
    SlcFuncVarArgLeaf* FindNextMatch(SlcExprNode* expr, bool promote) override;
    /// Those of the name argument: a string, a uniform input.
    [[nodiscard]] SlcTypeNode* GetType() const override;
    [[nodiscard]] SlcDetailNode* GetDetail() const override;
    [[nodiscard]] SlcStorageSpecNode* GetStorage() const override;
    [[nodiscard]] bool IsPairName() const override { return true; }
    [[nodiscard]] bool IsPlainValue() const override { return false; }
    /// Without quotes.
    [[nodiscard]] const std::string& GetName() const { return m_name; }
    [[nodiscard]] SlcFuncVarArgSingle* GetValue() const { return m_value.get(); }

private:
    std::string m_name;
    std::unique_ptr<SlcFuncVarArgSingle> m_value;
    bool m_live = false;
    bool m_valueStarted = false;
    bool m_nameMatched = false;
};

/// Parts in a row, or a set of named pairs in any order and number.
class SlcFuncVarArgList : public SlcFuncVarArgExpr {
public:
    enum class Order { Positional, Named };

    /// Empty at first.
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
