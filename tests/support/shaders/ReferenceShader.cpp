// Makes the statements of shaders whose values are known.

#include "shaders/ReferenceShader.h"

#include <algorithm>

#include "shaders/ReferenceNodes.h"

using Expr = ReferenceExpr;
using Statement = ReferenceStatement;

int ReferenceShader::Below(int count)
{
    return static_cast<int>(m_random() % static_cast<unsigned int>(count));
}

ReferenceShader::Variable ReferenceShader::Add(const std::string& name, Type type,
                                               ReferenceDetail detail, std::size_t length,
                                               int guard)
{
    auto& variables = m_program.variables;
    variables.push_back(std::make_unique<ReferenceVariable>(
        ReferenceVariable{name, type, detail, length, 0, guard}));
    std::size_t& count = type == Type::String ? m_program.texts : m_program.numbers;
    variables.back()->place = count;
    count += type == Type::Point ? 3 : std::max<std::size_t>(length, 1);
    return variables.back().get();
}

ReferenceProgram ReferenceShader::Make()
{
    Scope scope;
    Predefine(scope);
    for (int i = Below(4); i > 0; --i) {
        Effects effects;
        Scope outside;
        outside.functions = scope.functions;
        outside.plain = Chance(60);
        if (!outside.plain)
            outside.variables = {m_program.predefined.at("u"), m_program.predefined.at("v")};
        outside.fixed = outside.variables;
        const Function function = MakeFunction(outside, effects);
        Statement definition = {Statement::Kind::Function};
        definition.function = function;
        if (JudgeStatement(definition) == ReferenceVerdict::Refused)
            continue;
        m_program.functions.push_back(function);
        scope.functions.push_back({function, effects, false});
    }
    MakeParameters(scope);
    auto& body = m_program.body;
    const auto declare = [&](const char* name, Type type, ReferenceDetail detail, Expr value) {
        const std::size_t length = value.kind == Expr::Kind::List ? value.operands.size() : 0;
        const Variable variable = Add(name, type, detail, length, 0);
        body.push_back(Declare(variable, std::move(value)));
        scope.variables.push_back(variable);
    };
    constexpr auto uniform = ReferenceDetail::Uniform;
    constexpr auto varying = ReferenceDetail::Varying;
    const Expr u = Reference(m_program.predefined.at("u"));
    const Expr v = Reference(m_program.predefined.at("v"));
    declare("a", Type::Float, varying, Operator("*", {u, Constant(2)}));
    declare("b", Type::Float, varying, Operator("+", {v, Constant(1)}));
    declare("ua", Type::Float, uniform, Constant(1));
    declare("ub", Type::Float, uniform, Reference(m_program.predefined.at("Kd")));
    declare("w", Type::Float, varying, List({u, Constant(2), v}));
    declare("uw", Type::Float, uniform, List({Constant(1), Constant(0), Constant(3)}));
    declare("vs", Type::String, varying, {Expr::Kind::Text, "a"});
    declare("us", Type::String, uniform, {Expr::Kind::Text, "b"});
    declare("q", Type::Point, varying, Reference(m_P));
    const Scope atEnd = scope;
    auto statements = Statements(scope, 5 + Below(7));
    body.insert(body.end(), statements.begin(), statements.end());
    Finish(body, atEnd);
    return std::move(m_program);
}

void ReferenceShader::Predefine(Scope& scope)
{
    const auto add = [&](const char* name, Type type, ReferenceDetail detail) {
        return m_program.predefined[name] = Add(name, type, detail, 0, 0);
    };
    m_P = add("P", Type::Point, ReferenceDetail::Varying);
    auto Ps = std::make_unique<ReferenceVariable>(*m_P);
    Ps->name = "Ps";
    m_Ps = Ps.get();
    m_program.variables.push_back(std::move(Ps));
    for (const char* name : {"u", "v"})
        scope.fixed.push_back(add(name, Type::Float, ReferenceDetail::Varying));
    scope.fixed.push_back(add("Kd", Type::Float, ReferenceDetail::Uniform));
    scope.variables = scope.fixed;
}

/// Makes varying parameters; a default value may depend on the parameters before.
void ReferenceShader::MakeParameters(Scope& scope)
{
    for (int i = Below(4); i > 0; --i) {
        const bool array = Chance(25);
        Expr value = {Expr::Kind::Choice};
        value.operands.push_back(Condition(scope, 1, Need::Any));
        for (int k = 0; k < 2; ++k)
            value.operands.push_back(Bounded(Number(scope, 2, Need::Any)));
        if (array)
            value = List({NumberLeaf(scope, Need::Any), std::move(value), Constant(1)});
        const Variable variable =
            Add(NewName("d"), Type::Float, ReferenceDetail::Varying, array ? 3 : 0, 0);
        Statement parameter = Declare(variable, std::move(value));
        if (JudgeStatement(parameter) != ReferenceVerdict::Accepted)
            continue;
        m_program.parameters.push_back(std::move(parameter));
        if (!array)
            m_program.outputs.push_back(variable);
        scope.variables.push_back(variable);
        scope.fixed.push_back(variable);
    }
}

/// Assigns the final values of the variables to new outputs; of a text, the results of `match` with
/// some patterns. `P` itself also becomes an output.
void ReferenceShader::Finish(std::vector<Statement>& body, const Scope& scope)
{
    const auto show = [&](Type type, Expr value) {
        const Variable output = Add(NewName("r"), type, ReferenceDetail::Varying, 0, 0);
        m_program.outputs.push_back(output);
        body.push_back(Assign(Reference(output), "=", std::move(value)));
    };
    for (const Variable variable : scope.variables) {
        if (variable->type == Type::Point)
            show(Type::Point, Reference(variable));
        if (variable->type == Type::Float && variable->length == 0)
            show(Type::Float, Reference(variable));
        for (std::size_t i = 0; i < variable->length; ++i) {
            Expr element = {Expr::Kind::Element};
            element.variable = variable;
            element.operands = {Constant(static_cast<float>(i))};
            show(Type::Float, element);
        }
        if (variable->type != Type::String)
            continue;
        for (const char* pattern : {"ab", "ba", "bb"})
            show(Type::Float, BuiltIn("match", {{Expr::Kind::Text, pattern}, Reference(variable)}));
    }
    show(Type::Point, Reference(m_Ps));
    m_program.outputs.push_back(m_P);
}

std::vector<Statement> ReferenceShader::Statements(Scope& scope, int count)
{
    std::vector<Statement> statements;
    for (int i = 0; i < count; ++i)
        AddStatement(scope, statements);
    return statements;
}

/// Adds a random statement. In the shader's body, leaves out statements that would be refused,
/// except for one in some programs.
void ReferenceShader::AddStatement(Scope& scope, std::vector<Statement>& statements)
{
    const Scope before = scope;
    Statement statement = AnyStatement(scope);
    if (!scope.effects && JudgeStatement(statement) == ReferenceVerdict::Refused) {
        const bool holdsOthers = !statement.body.empty();
        if (m_planted || holdsOthers || !Chance(15)) {
            scope = before;
            return;
        }
        m_planted = true;
    }
    statements.push_back(std::move(statement));
}

Statement ReferenceShader::AnyStatement(Scope& scope)
{
    if (scope.mayReturn && scope.guard != scope.bodyGuard && scope.depth > 1 && Chance(25)) {
        scope.mayReturn = false;
        Statement leave = {Statement::Kind::Return};
        leave.value = Bounded(Number(scope, 1, Need::Any));
        return leave;
    }
    if (!scope.loops.empty() && Chance(15))
        return Leave(scope);
    const int kind = Below(100);
    if (scope.depth < 4 && kind < 18)
        return If(scope);
    if (scope.depth < 4 && kind < 33)
        return LoopBlock(scope);
    if (scope.depth < 3 && scope.outer <= 2 && kind < 40)
        return NestedFunction(scope);
    if (kind < 60)
        return CallForEffect(scope);
    return kind < 66 ? Declaration(scope) : Assignment(scope);
}

Statement ReferenceShader::Declaration(Scope& scope)
{
    const bool text = Chance(10);
    const bool uniform = Chance(40);
    const bool array = !text && Chance(25);
    ReferenceDetail detail = scope.effects ? ReferenceDetail::Open : ReferenceDetail::Varying;
    if (uniform)
        detail = ReferenceDetail::Uniform;
    const Need need = uniform ? Need::Uniform : Need::Any;
    Expr value;
    if (text)
        value = Text(scope, need);
    else if (array)
        value = List({Number(scope, 1, need), Constant(2), Number(scope, 0, need)});
    else
        value = Bounded(Number(scope, 2, need));
    const Variable variable = Add(NewName(uniform ? "un" : "n"), text ? Type::String : Type::Float,
                                  detail, array ? 3 : 0, scope.guard);
    scope.variables.push_back(variable);
    return Declare(variable, std::move(value));
}

Statement ReferenceShader::Assignment(Scope& scope)
{
    const int kind = Below(10);
    if (kind == 0 && !scope.plain)
        return AssignPoint(scope);
    const auto texts = Targets(scope, Type::String, false);
    if (kind < 3 && !texts.empty())
        return AssignText(scope, OneOf(texts));
    const bool element = Chance(35);
    const auto targets = Targets(scope, Type::Float, element);
    if (targets.empty())
        return Declaration(scope);
    const Variable target = Use(scope, OneOf(targets), true);
    const bool uniform = target->detail == ReferenceDetail::Uniform;
    return AssignNumber(scope, element
                                   ? ElementOf(scope, target, uniform ? Need::Uniform : Need::Any)
                                   : Reference(target));
}

Statement ReferenceShader::AssignNumber(Scope& scope, const Expr& target)
{
    const Need need =
        target.variable->detail == ReferenceDetail::Uniform ? Need::Uniform : Need::Any;
    const int kind = Below(10);
    if (kind < 3)
        return Assign(target, Chance(50) ? "+=" : "-=", Bounded(Number(scope, 2, need), 8));
    if (kind < 4)
        return Assign(target, "*=", BuiltIn("step", {Constant(1), Number(scope, 1, need)}));
    return Assign(target, "=", Bounded(Number(scope, 3, need)));
}

Statement ReferenceShader::AssignPoint(Scope& scope)
{
    const auto points = Targets(scope, Type::Point, false);
    if (scope.effects)
        scope.effects->writes = true;
    if (Chance(30)) {
        Statement set = {Statement::Kind::Evaluate};
        set.value = BuiltIn("setxcomp", {Reference(m_P), Bounded(Number(scope, 2, Need::Any))});
        return set;
    }
    const Variable target = points.empty() || Chance(50) ? m_P : Use(scope, OneOf(points), true);
    const auto corner = [](float x) {
        return BuiltIn("point", {Constant(x), Constant(x), Constant(x)});
    };
    return Assign(Reference(target), "=",
                  BuiltIn("clamp", {Point(scope, 2), corner(-64), corner(64)}));
}

Statement ReferenceShader::AssignText(Scope& scope, Variable target)
{
    const bool uniform = target->detail == ReferenceDetail::Uniform;
    target = Use(scope, target, true);
    return Assign(Reference(target), "=", Text(scope, uniform ? Need::Uniform : Need::Any));
}

/// Makes a call that writes outputs or outer variables, and assigns its result if there is one and
/// a variable for it. An element is no target, since its index could depend on what the call
/// writes. Makes another statement if no call is possible.
Statement ReferenceShader::CallForEffect(Scope& scope)
{
    std::vector<Callable> candidates;
    for (const Callable& callable : scope.functions)
        if (callable.effects.writes)
            candidates.push_back(callable);
    if (candidates.empty())
        return Assignment(scope);
    const Callable callable = OneOf(candidates);
    Expr call;
    if (!Arguments(scope, callable, Need::Any, call))
        return Assignment(scope);
    const std::string& type = callable.function->type;
    const auto targets = Targets(scope, type == "string" ? Type::String : Type::Float, false);
    if (type == "void" || targets.empty()) {
        Statement statement = {Statement::Kind::Evaluate};
        statement.value = std::move(call);
        return statement;
    }
    const Variable target = OneOf(targets);
    if (scope.effects && target->detail == ReferenceDetail::Uniform && !IsSurelyUniform(call))
        return Declaration(scope);
    return Assign(Reference(Use(scope, target, true)), "=", std::move(call));
}

Statement ReferenceShader::If(Scope& scope)
{
    const bool uniform = Chance(35);
    Statement statement = {Statement::Kind::If};
    statement.value = Condition(scope, 2, uniform ? Need::Uniform : Need::Any);
    for (auto* branch : {&statement.body, &statement.otherwise}) {
        if (branch == &statement.otherwise && Chance(50))
            break;
        Scope inside = scope;
        ++inside.depth;
        if (!uniform)
            inside.guard = ++m_guards;
        *branch = Statements(inside, 1 + Below(3));
        scope.mayReturn = inside.mayReturn;
        scope.left |= inside.left;
    }
    if (scope.left)
        scope.guard = ++m_guards;
    return statement;
}

/// Makes a loop and its counter, in a separate block.
Statement ReferenceShader::LoopBlock(Scope& scope)
{
    const bool uniform = Chance(50);
    const bool leavesForSome = !uniform || Chance(50);
    const Need need = uniform ? Need::Uniform : Need::Any;
    ReferenceDetail detail = scope.effects ? ReferenceDetail::Open : ReferenceDetail::Varying;
    if (uniform)
        detail = ReferenceDetail::Uniform;
    Scope inside = scope;
    ++inside.depth;
    if (leavesForSome)
        inside.guard = ++m_guards;
    inside.loops.push_back({leavesForSome, inside.guard});
    const Variable counter = Add(NewName("i"), Type::Float, detail, 0, inside.guard);
    inside.variables.push_back(counter);
    inside.fixed.push_back(counter);
    Statement loop = {Chance(60) ? Statement::Kind::For : Statement::Kind::While};
    const bool isFor = loop.kind == Statement::Kind::For;
    loop.variable = counter;
    loop.value = Operator("<", {Reference(counter), Constant(static_cast<float>(1 + Below(3)))});
    if (Chance(40))
        loop.value = Operator("&&", {loop.value, Condition(scope, 1, need)});
    if (isFor)
        inside.indices.push_back(counter);
    else
        loop.body.push_back(Assign(Reference(counter), "+=", Constant(1)));
    auto statements = Statements(inside, 1 + Below(3));
    loop.body.insert(loop.body.end(), statements.begin(), statements.end());
    scope.mayReturn = inside.mayReturn;
    if (inside.left && !scope.loops.empty()) {
        scope.left = true;
        scope.guard = ++m_guards;
    }
    Statement block = {Statement::Kind::Block};
    block.body = {Declare(counter, Constant(0)), std::move(loop)};
    return block;
}

/// Makes a `break` or `continue` under a condition. If no point may leave the loop before others
/// do, makes a uniform condition or, within varying control flow, only an assignment.
Statement ReferenceShader::Leave(Scope& scope)
{
    int most = 0;
    for (auto loop = scope.loops.rbegin(); loop != scope.loops.rend() && loop->leavesForSome;
         ++loop)
        ++most;
    Statement leave = {Chance(50) ? Statement::Kind::Break : Statement::Kind::Continue};
    const bool forAll = most == 0;
    if (forAll && scope.guard != scope.loops.back().guard)
        return Assignment(scope);
    leave.levels = forAll ? 1 : 1 + Below(most);
    Statement statement = {Statement::Kind::If};
    statement.value = Condition(scope, 1, forAll ? Need::Uniform : Need::Any);
    statement.body = {leave};
    if (!forAll) {
        scope.left = true;
        scope.guard = ++m_guards;
    }
    return statement;
}
