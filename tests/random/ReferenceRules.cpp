// Judges by the rules of uniform and varying values whether a program is accepted.
//
// A function's variable without a word is uniform as long as it holds what it was declared with,
// from uniform values. Whatever is assigned to it, it is no longer. A function is judged at each
// call, with what the call gives it; a loop is swept until nothing changes. Where it is a matter of
// taste whether a compiler sees that a value is uniform, as behind the other branch of a condition,
// the verdict stays open.

#include <algorithm>
#include <set>
#include <utility>

#include "random/ReferenceTree.h"

namespace {

/// What is known to be uniform, and what is known not to be.
enum class Sure { Uniform, Unsure, Other };

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
            const Sure detail = DetailOf(s.value);
            if (s.variable->detail == ReferenceDetail::Uniform)
                WantUniform(detail);
            m_details[s.variable] = detail;
            break;
        }
        case Kind::Assign: {
            const Sure detail = std::max(IndexDetail(s.target), DetailOf(s.value));
            if (s.target.variable->detail == ReferenceDetail::Uniform)
                WantUniform(detail);
            Changed(*s.target.variable, Sure::Other);
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
            m_result = std::max(DetailOf(s.value), m_guard);
            break;
        case Kind::Function:
            Define(*s.function);
            break;
        case Kind::Break:
        case Kind::Continue:
            break;
        }
    }
    /// A definition is looked at, whether it is called or not: what its own variables will be is
    /// not known then, but what varies for certain must not be given to what is uniform.
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
    using Details = std::map<const ReferenceVariable*, Sure>;

    void WantUniform(Sure detail)
    {
        if (detail != Sure::Uniform && !(m_defining && detail == Sure::Unsure))
            m_verdict = std::max(m_verdict, detail == Sure::Unsure ? ReferenceVerdict::Open
                                                                   : ReferenceVerdict::Refused);
    }

    void Changed(const ReferenceVariable& variable, Sure detail) { m_details[&variable] = detail; }

    Sure DetailOf(const ReferenceVariable& variable)
    {
        if (variable.detail != ReferenceDetail::Open)
            return variable.detail == ReferenceDetail::Uniform ? Sure::Uniform : Sure::Other;
        if (m_defining)
            return Sure::Unsure;
        const Sure detail = m_details.emplace(&variable, Sure::Other).first->second;
        return m_externs.contains(&variable) ? std::max(detail, Sure::Unsure) : detail;
    }

    Sure IndexDetail(const ReferenceExpr& target)
    {
        return target.kind == ReferenceExpr::Kind::Element ? DetailOf(target.operands[0])
                                                           : Sure::Uniform;
    }

    Sure DetailOf(const ReferenceExpr& e)
    {
        using Kind = ReferenceExpr::Kind;
        if (e.kind == Kind::Call)
            return Call(e);
        Sure detail = e.variable ? DetailOf(*e.variable) : Sure::Uniform;
        for (const ReferenceExpr& operand : e.operands)
            detail = std::max(detail, DetailOf(operand));
        if (e.word == "setxcomp")
            Changed(*e.operands[0].variable, Sure::Other);
        return detail;
    }

    void If(const ReferenceStatement& s)
    {
        const Sure outerGuard = m_guard;
        m_guard = std::max(m_guard, DetailOf(s.value));
        const Details before = m_details;
        Body(s.body);
        const Details behind = m_details;
        // Whether the first branch counts in the second one is nobody's business.
        for (auto& [variable, detail] : m_details)
            if (const auto old = before.find(variable); old != before.end() && old->second < detail)
                detail = Sure::Unsure;
        Body(s.otherwise);
        Join(behind);
        m_guard = outerGuard;
    }

    void Loop(const ReferenceStatement& s)
    {
        const Sure outerGuard = std::exchange(m_guard, Sure::Other);
        if (s.kind == ReferenceStatement::Kind::For)
            Changed(*s.variable, Sure::Other);
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
            Sure& here = m_details.emplace(variable, detail).first->second;
            here = std::max(here, detail);
        }
    }

    Sure Call(const ReferenceExpr& e)
    {
        const auto& formals = e.function->formals;
        // First all of them: one may call the same function.
        std::vector<Sure> details;
        for (const ReferenceExpr& argument : e.operands)
            details.push_back(DetailOf(argument));
        for (std::size_t i = 0; i < formals.size(); ++i) {
            const ReferenceVariable& formal = *formals[i].variable;
            const ReferenceVariable* argument = e.operands[i].variable;
            if (formal.detail == ReferenceDetail::Uniform)
                WantUniform(details[i]);
            else if (formals[i].output && argument->detail == ReferenceDetail::Uniform)
                WantUniform(Sure::Other);  // the other way round: it must not be
            m_details[&formal] = details[i];
        }
        const Sure outerGuard = std::exchange(m_guard, Sure::Uniform);
        const Sure outerResult = std::exchange(m_result, Sure::Other);
        const auto outerExterns = m_externs;
        m_externs.insert(e.function->externs.begin(), e.function->externs.end());
        const bool wasDefining = std::exchange(m_defining, false);
        const bool wasInCall = std::exchange(m_inCall, true);
        Body(e.function->body);
        m_inCall = wasInCall;
        m_defining = wasDefining;
        m_externs = outerExterns;
        m_guard = outerGuard;
        const Sure result = std::exchange(m_result, outerResult);
        for (std::size_t i = 0; i < formals.size(); ++i)
            if (formals[i].output)
                Changed(*e.operands[i].variable,
                        std::max(DetailOf(*formals[i].variable), Sure::Unsure));
        return result;
    }

    std::set<const ReferenceVariable*> m_externs;  // as the function at hand declares them
    Details m_details;                             // of variables without a word
    bool m_defining = false;
    bool m_inCall = false;
    Sure m_guard = Sure::Uniform;
    Sure m_result = Sure::Other;  // of the function at hand
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
    rules.Body(program.body);
    return rules.Verdict();
}
