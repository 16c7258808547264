// Decides by the rules of uniform and varying values whether a program is accepted.
//
// If a formal or local of a function is declared without a detail, it is uniform while it has its
// initial value, if that is uniform, and not uniform after any assignment. A function is checked at
// each call, with the details of the arguments; a loop is repeated until nothing changes. In a
// function that the shader does not call, and in functions that such a function calls, only
// certainly varying values are refused. Where compilers may differ in whether they recognize a
// uniform value, such as in the second branch of a condition whose first branch assigns the
// variable, the verdict stays open.

#include <algorithm>
#include <set>
#include <utility>

#include "shaders/ReferenceTree.h"

namespace {

/// `Open` is a detail that depends on a call, or was uniform until an assignment.
enum class Detail { Uniform, Open, Varying };

/// The least and the most varying detail that a compiler may derive.
struct Range {
    Detail least = Detail::Uniform;
    Detail most = Detail::Uniform;

    friend bool operator==(const Range&, const Range&) = default;
};

constexpr Range k_uniform = {Detail::Uniform, Detail::Uniform};
constexpr Range k_open = {Detail::Open, Detail::Open};
constexpr Range k_notUniform = {Detail::Open, Detail::Varying};
constexpr Range k_varying = {Detail::Varying, Detail::Varying};
constexpr Range k_unsure = {Detail::Uniform, Detail::Varying};

/// Returns the detail of a value that is computed from both.
Range Combine(const Range& a, const Range& b)
{
    return {std::max(a.least, b.least), std::max(a.most, b.most)};
}

class Rules {
public:
    void Body(const std::vector<ReferenceStatement>& statements)
    {
        for (const ReferenceStatement& statement : statements)
            One(statement);
    }
    void One(const ReferenceStatement& s)
    {
        using Kind = ReferenceStatement::Kind;
        switch (s.kind) {
        case Kind::Declare: {
            const Range detail = DetailOf(s.value);
            if (s.variable->detail == ReferenceDetail::Uniform)
                WantUniform(detail);
            m_details[s.variable] = detail;
            break;
        }
        case Kind::Assign: {
            const Range detail = Combine(IndexDetail(s.target), DetailOf(s.value));
            if (s.target.variable->detail == ReferenceDetail::Uniform)
                WantUniform(detail);
            Assigned(*s.target.variable, Combine(detail, m_guard));
            break;
        }
        case Kind::Evaluate:
            (void)DetailOf(s.value);
            break;
        case Kind::If:
            If(s);
            break;
        case Kind::While:
        case Kind::For:
            Loop(s);
            break;
        case Kind::Block:
            Body(s.body);
            break;
        case Kind::Return:
            m_result = Combine(DetailOf(s.value), m_guard);
            break;
        case Kind::Function:
            Define(*s.function);
            break;
        case Kind::Break:
        case Kind::Continue:
            break;
        }
    }
    /// Checks a function, whether it is called or not. Details that are not declared are not known,
    /// but a certainly varying value must not be assigned to a uniform variable. Does nothing
    /// within a call, since the definition has been checked with that of the called function.
    void Define(const ReferenceFunction& function)
    {
        if (m_inCall)
            return;
        const bool outer = std::exchange(m_defining, true);
        Body(function.body);
        m_defining = outer;
    }
    [[nodiscard]] ReferenceVerdict Verdict() const { return m_verdict; }

private:
    using Details = std::map<const ReferenceVariable*, Range>;

    void WantUniform(const Range& detail)
    {
        const Detail accepted = m_defining ? Detail::Open : Detail::Uniform;
        if (detail.most > accepted)
            m_verdict = std::max(m_verdict, detail.least > accepted ? ReferenceVerdict::Refused
                                                                    : ReferenceVerdict::Open);
    }

    void Changed(const ReferenceVariable& variable, const Range& detail)
    {
        m_details[&variable] = detail;
    }

    /// An assignment under a condition keeps the old value at some points.
    void Assigned(const ReferenceVariable& variable, const Range& detail)
    {
        Range changed = Combine(k_open, detail);
        changed.most = std::max(changed.most, DetailOf(variable).most);
        Changed(variable, changed);
    }

    Range DetailOf(const ReferenceVariable& variable)
    {
        if (variable.detail != ReferenceDetail::Open)
            return variable.detail == ReferenceDetail::Uniform ? k_uniform : k_varying;
        if (m_defining && !m_inCall)
            return k_open;
        const Range detail = m_details.emplace(&variable, k_notUniform).first->second;
        return m_externs.contains(&variable) ? Combine(detail, k_unsure) : detail;
    }

    Range IndexDetail(const ReferenceExpr& target)
    {
        return target.kind == ReferenceExpr::Kind::Element ? DetailOf(target.operands[0])
                                                           : k_uniform;
    }

    Range DetailOf(const ReferenceExpr& e)
    {
        using Kind = ReferenceExpr::Kind;
        if (e.kind == Kind::Call)
            return Call(e);
        if (e.word == "random")
            return k_unsure;  // has the detail of its context
        Range detail = e.variable ? DetailOf(*e.variable) : k_uniform;
        for (const ReferenceExpr& operand : e.operands)
            detail = Combine(detail, DetailOf(operand));
        if (e.word == "setxcomp")
            Changed(*e.operands[0].variable, k_notUniform);
        return detail;
    }

    void If(const ReferenceStatement& s)
    {
        const Range outerGuard = m_guard;
        m_guard = Combine(m_guard, DetailOf(s.value));
        const Details before = m_details;
        Body(s.body);
        const Details after = m_details;
        // Compilers may or may not take over details from the first branch to the second.
        for (auto& [variable, detail] : m_details)
            if (const auto old = before.find(variable); old != before.end())
                detail.least = std::min(old->second.least, detail.least);
        Body(s.otherwise);
        Join(after);
        m_guard = outerGuard;
    }

    void Loop(const ReferenceStatement& s)
    {
        const Range outerGuard = std::exchange(m_guard, k_notUniform);
        if (s.kind == ReferenceStatement::Kind::For)
            Changed(*s.variable, k_notUniform);
        for (Details before; before != m_details;) {
            before = m_details;
            (void)DetailOf(s.value);
            Body(s.body);
            Join(before);
        }
        m_guard = outerGuard;
    }

    void Join(const Details& others)
    {
        for (const auto& [variable, detail] : others) {
            Range& here = m_details.emplace(variable, detail).first->second;
            here = Combine(here, detail);
        }
    }

    Range Call(const ReferenceExpr& e)
    {
        const auto& formals = e.function->formals;
        // All arguments are evaluated first, since one may call the same function.
        std::vector<Range> details;
        for (const ReferenceExpr& argument : e.operands)
            details.push_back(DetailOf(argument));
        for (std::size_t i = 0; i < formals.size(); ++i) {
            const ReferenceVariable& formal = *formals[i].variable;
            const ReferenceVariable* argument = e.operands[i].variable;
            if (formal.detail == ReferenceDetail::Uniform)
                WantUniform(details[i]);
            else if (formals[i].output && argument->detail == ReferenceDetail::Uniform)
                WantUniform(k_varying);  // the formal may become varying
            m_details[&formal] = details[i];
        }
        const Range outerGuard = std::exchange(m_guard, k_uniform);
        const Range outerResult = std::exchange(m_result, k_notUniform);
        const auto outerExterns = m_externs;
        m_externs.insert(e.function->externs.begin(), e.function->externs.end());
        const bool wasInCall = std::exchange(m_inCall, true);
        Body(e.function->body);
        m_inCall = wasInCall;
        m_externs = outerExterns;
        m_guard = outerGuard;
        const Range result = std::exchange(m_result, outerResult);
        for (std::size_t i = 0; i < formals.size(); ++i)
            if (formals[i].output)
                Changed(*e.operands[i].variable, Combine(DetailOf(*formals[i].variable), k_unsure));
        return result;
    }

    std::set<const ReferenceVariable*> m_externs;  // of the current function and its callers
    Details m_details;                             // read for variables without a declared detail
    bool m_defining = false;                       // in `Define` and in functions called from it
    bool m_inCall = false;
    Range m_guard = k_uniform;
    Range m_result = k_notUniform;  // of the current function
    ReferenceVerdict m_verdict = ReferenceVerdict::Accepted;
};

}  // namespace

ReferenceVerdict JudgeStatement(const ReferenceStatement& statement)
{
    Rules rules;
    rules.One(statement);
    return rules.Verdict();
}

ReferenceVerdict JudgeProgram(const ReferenceProgram& program)
{
    Rules rules;
    for (const auto& function : program.functions)
        rules.Define(*function);
    rules.Body(program.parameters);
    rules.Body(program.body);
    return rules.Verdict();
}
