#pragma once

#include "shaders/ReferenceTree.h"

// Functions that make the nodes of a reference program.

inline ReferenceExpr Constant(float number)
{
    return {ReferenceExpr::Kind::Number, {}, number};
}

inline ReferenceExpr Reference(const ReferenceVariable* variable)
{
    ReferenceExpr expr = {ReferenceExpr::Kind::Variable};
    expr.variable = variable;
    return expr;
}

inline ReferenceExpr BuiltIn(const std::string& word, std::vector<ReferenceExpr> operands)
{
    ReferenceExpr expr = {ReferenceExpr::Kind::BuiltIn, word};
    expr.operands = std::move(operands);
    return expr;
}

inline ReferenceExpr Operator(const std::string& word, std::vector<ReferenceExpr> operands)
{
    ReferenceExpr expr = {ReferenceExpr::Kind::Operator, word};
    expr.operands = std::move(operands);
    return expr;
}

inline ReferenceExpr Bounded(ReferenceExpr expr, float bound = 64)
{
    return BuiltIn("clamp", {std::move(expr), Constant(-bound), Constant(bound)});
}

inline ReferenceStatement Declare(const ReferenceVariable* variable, ReferenceExpr value)
{
    ReferenceStatement statement = {ReferenceStatement::Kind::Declare};
    statement.variable = variable;
    statement.value = std::move(value);
    return statement;
}

inline ReferenceStatement Assign(ReferenceExpr target, const std::string& word, ReferenceExpr value)
{
    ReferenceStatement statement = {ReferenceStatement::Kind::Assign, word};
    statement.target = std::move(target);
    statement.value = std::move(value);
    return statement;
}

inline ReferenceExpr List(std::vector<ReferenceExpr> elements)
{
    ReferenceExpr list = {ReferenceExpr::Kind::List};
    list.operands = std::move(elements);
    return list;
}

/// True if the value is certainly accepted as the initial value of a uniform variable.
inline bool IsSurelyUniform(const ReferenceExpr& expr)
{
    ReferenceVariable variable;
    variable.detail = ReferenceDetail::Uniform;
    return JudgeStatement(Declare(&variable, expr)) == ReferenceVerdict::Accepted;
}
