// Makes the expressions of shaders whose values are known.

#include <algorithm>

#include "shaders/ReferenceNodes.h"
#include "shaders/ReferenceShader.h"

using Expr = ReferenceExpr;

Expr ReferenceShader::NumberLeaf(Scope& scope, Need need)
{
    const auto variables = Variables(scope, Type::Float, false, need);
    if (variables.empty() || Chance(25))
        return Constant(static_cast<float>(Below(5) - 1));
    return Reference(Use(scope, OneOf(variables), false));
}

Expr ReferenceShader::Number(Scope& scope, int depth, Need need)
{
    if (depth == 0 || Chance(15))
        return NumberLeaf(scope, need);
    const auto inner = [&] { return Number(scope, depth - 1, need); };
    // Made one after the other, since the order of evaluation of arguments is unspecified.
    Expr first = inner();
    switch (Below(16)) {
    case 0:
        return BuiltIn("abs", {first});
    case 1:
        return BuiltIn(Chance(50) ? "min" : "max", {first, inner()});
    case 2: {
        Expr choice = {Expr::Kind::Choice};
        choice.operands = {Condition(scope, 1, need), first, NumberLeaf(scope, need)};
        return choice;
    }
    case 3:
    case 4:
        if (const auto arrays = Variables(scope, Type::Float, true, need); !arrays.empty())
            return ElementOf(scope, Use(scope, OneOf(arrays), false), need);
        break;
    case 5:
    case 6:
    case 7:
        return PureCall(scope, need, "float");
    case 8:
        if (need == Need::Any && !scope.plain)
            return BuiltIn(Chance(50) ? "xcomp" : "zcomp", {Point(scope, 0)});
        break;
    case 9:
        return BuiltIn("step", {first, inner()});
    case 10:
        return Operator("*", {Bounded(BuiltIn("floor", {first}), 4), inner()});
    case 11:
        return Operator("-", {first});
    case 12:  // floor(random()) is known to be 0
        if (need == Need::Any)
            return Operator("+", {first, BuiltIn("floor", {BuiltIn("random", {})})});
        break;
    case 13:
        return BuiltIn("match", {{Expr::Kind::Text, Chance(50) ? "b" : "aa"}, Text(scope, need)});
    default:
        break;
    }
    Expr second = Chance(25) ? Constant(2) : inner();
    const bool twice = second.kind == Expr::Kind::Number;
    return Operator(twice && Chance(50) ? "*" : Chance(50) ? "+" : "-", {first, std::move(second)});
}

/// Returns a number from a variable that is not declared varying, or 2. In a function its detail
/// may depend on the call.
Expr ReferenceShader::OpenNumber(Scope& scope)
{
    auto variables = Variables(scope, Type::Float, false, Need::Any);
    std::erase_if(variables, [](Variable v) { return v->detail == ReferenceDetail::Varying; });
    if (variables.empty())
        return Constant(2);
    Expr leaf = Reference(Use(scope, OneOf(variables), false));
    return Chance(60) ? leaf : Operator("+", {std::move(leaf), Constant(1)});
}

Expr ReferenceShader::ElementOf(Scope& scope, Variable array, Need need)
{
    std::vector<Variable> indices;
    for (const Variable index : scope.indices)
        if (need == Need::Any || index->detail == ReferenceDetail::Uniform)
            indices.push_back(index);
    Expr element = {Expr::Kind::Element};
    element.variable = array;
    if (!indices.empty() && Chance(50))
        element.operands = {Reference(Use(scope, OneOf(indices), false))};
    else if (Chance(50))
        element.operands = {Constant(static_cast<float>(Below(3)))};
    else
        element.operands = {BuiltIn(
            "clamp", {BuiltIn("floor", {Number(scope, 1, need)}), Constant(0), Constant(2)})};
    return element;
}

Expr ReferenceShader::Condition(Scope& scope, int depth, Need need)
{
    const int kind = Below(100);
    if (depth > 0 && kind < 30) {
        Expr left = Condition(scope, depth - 1, need);
        if (kind < 6)
            return Operator("!", {std::move(left)});
        // The two sides may differ in detail.
        Expr right = Condition(scope, depth - 1, Chance(50) ? need : Need::Uniform);
        if (Chance(50))
            std::swap(left, right);
        return Operator(Chance(50) ? "&&" : "||", {std::move(left), std::move(right)});
    }
    if (kind < 45)
        if (const auto arrays = Variables(scope, Type::Float, true, need); !arrays.empty())
            return GuardedElement(scope, Use(scope, OneOf(arrays), false), need);
    if (kind < 55) {
        Expr left = Text(scope, need);
        return Operator(Chance(50) ? "==" : "!=", {std::move(left), Text(scope, need)});
    }
    static const std::vector<std::string> relations = {"<", "<=", ">", ">=", "==", "!="};
    Expr left = Number(scope, 1, need);
    return Operator(OneOf(relations), {std::move(left), NumberLeaf(scope, need)});
}

/// Makes a condition that reads an element only at points where the index is valid.
Expr ReferenceShader::GuardedElement(Scope& scope, Variable array, Need need)
{
    const Expr index = NumberLeaf(scope, need);
    Expr element = {Expr::Kind::Element};
    element.variable = array;
    element.operands = {index};
    Expr read = Operator(Chance(50) ? ">" : "<=", {std::move(element), Constant(1)});
    if (Chance(30)) {
        Expr other = Condition(scope, 0, Need::Uniform);
        read = Operator(Chance(50) ? "&&" : "||", {std::move(other), std::move(read)});
    }
    const bool inside = Chance(50);
    Expr low = Operator(inside ? ">=" : "<", {index, Constant(0)});
    Expr high = Operator(inside ? "<" : ">=", {index, Constant(3)});
    const char* word = inside ? "&&" : "||";
    if (Chance(50))
        return Operator(word, {Operator(word, {std::move(low), std::move(high)}), std::move(read)});
    return Operator(word, {std::move(low), Operator(word, {std::move(high), std::move(read)})});
}

Expr ReferenceShader::Text(Scope& scope, Need need)
{
    const Expr literal = {Expr::Kind::Text, Chance(50) ? "a" : "b"};
    const auto variables = Variables(scope, Type::String, false, need);
    const int kind = Below(10);
    if (variables.empty() || kind < 3)
        return literal;
    if (kind < 5)
        return PureCall(scope, need, "string");
    Expr text = Reference(Use(scope, OneOf(variables), false));
    if (kind < 7)
        return text;
    return BuiltIn("concat", Chance(50) ? std::vector{std::move(text), literal}
                                        : std::vector{literal, std::move(text)});
}

Expr ReferenceShader::Point(Scope& scope, int depth)
{
    if (depth > 0 && Chance(30)) {
        Expr x = Number(scope, 1, Need::Any);
        Expr y = Number(scope, 1, Need::Any);
        return BuiltIn("point", {std::move(x), std::move(y), NumberLeaf(scope, Need::Any)});
    }
    if (depth > 0 && Chance(60)) {
        Expr left = Point(scope, depth - 1);
        return Chance(30)
                   ? Operator("*", {std::move(left), Constant(2)})
                   : Operator(Chance(50) ? "+" : "-", {std::move(left), Point(scope, depth - 1)});
    }
    const auto points = Variables(scope, Type::Point, false, Need::Any);
    if (!points.empty() && Chance(40))
        return Reference(Use(scope, OneOf(points), false));
    return Reference(Chance(50) ? m_P : m_Ps);
}

/// Makes a call without side effects, or a variable or constant if no such call is possible.
Expr ReferenceShader::PureCall(Scope& scope, Need need, const std::string& type)
{
    std::vector<Callable> candidates;
    for (const Callable& callable : scope.functions)
        if (!callable.effects.writes && callable.function->type == type)
            candidates.push_back(callable);
    Expr call;
    if (!candidates.empty() && Arguments(scope, OneOf(candidates), need, call) &&
        (need == Need::Any || IsSurelyUniform(call) || (!scope.effects && Chance(3))))
        return call;
    if (type == "float")
        return NumberLeaf(scope, need);
    return {Expr::Kind::Text, "ab"};
}

/// Fills in the arguments of a call. Returns false if the call must not occur here, or if there is
/// no variable for an output or an array. No variable that the call writes has an alias: outputs
/// and arrays are different variables that the body does not use, and the other arguments of such a
/// call are computed values.
bool ReferenceShader::Arguments(Scope& scope, const Callable& callable, Need need, Expr& call)
{
    const Effects& effects = callable.effects;
    for (const Variable variable : effects.uniformWritten)
        if (!IsWritable(scope, variable))
            return false;
    call = {Expr::Kind::Call};
    call.function = callable.function;
    std::vector<Variable> outputs = effects.touched;
    for (const auto& [formal, output] : callable.function->formals) {
        const bool uniform = formal->detail == ReferenceDetail::Uniform;
        const bool array = formal->length > 0;
        if (output || array) {
            auto candidates = output ? Targets(scope, formal->type, array)
                                     : Variables(scope, formal->type, array, need);
            const bool element = output && formal->type == Type::Float && !array && Chance(40);
            if (element)
                candidates = Targets(scope, Type::Float, true);
            std::erase_if(candidates, [&, output = output](Variable v) {
                const bool fits =
                    (v->detail == ReferenceDetail::Uniform) == uniform || (!output && !uniform);
                return !fits || std::find(outputs.begin(), outputs.end(), v) != outputs.end();
            });
            if (candidates.empty())
                return false;
            const Variable variable = Use(scope, OneOf(candidates), output);
            outputs.push_back(variable);
            call.operands.push_back(
                element ? ElementOf(scope, variable, uniform ? Need::Uniform : Need::Any)
                        : Reference(variable));
            continue;
        }
        Need wanted = uniform ? Need::Uniform : need;
        if (uniform && !scope.effects && Chance(6))
            wanted = Need::Any;
        Expr value;
        if (formal->type == Type::String)
            value = Text(scope, wanted);
        else
            value = uniform && scope.effects && need == Need::Any && Chance(40)
                        ? OpenNumber(scope)
                        : Number(scope, 1, wanted);
        if (effects.writes && value.kind == Expr::Kind::Variable)
            value = value.variable->type == Type::String
                        ? BuiltIn("concat", {std::move(value), {Expr::Kind::Text, "a"}})
                        : Operator("+", {std::move(value), Constant(1)});
        if (effects.writes && value.kind == Expr::Kind::Element)
            value = Operator("-", {std::move(value)});
        call.operands.push_back(std::move(value));
    }
    for (const Variable variable : effects.touched)
        (void)Use(scope, variable, false);
    for (const Variable variable : effects.uniformWritten)
        (void)Use(scope, variable, true);
    if (scope.effects)
        scope.effects->writes |= effects.writes;
    return true;
}
