// Makes the functions of shaders whose values are known, and selects the variables that statements
// may use.

#include <algorithm>

#include "shaders/ReferenceNodes.h"
#include "shaders/ReferenceShader.h"

namespace {

using Expr = ReferenceExpr;
using Statement = ReferenceStatement;

bool Contains(const std::vector<const ReferenceVariable*>& list, const ReferenceVariable* variable)
{
    return std::find(list.begin(), list.end(), variable) != list.end();
}

}  // namespace

Statement ReferenceShader::NestedFunction(Scope& scope)
{
    Effects effects;
    Statement statement = {Statement::Kind::Function};
    statement.function = MakeFunction(scope, effects);
    scope.functions.push_back({statement.function, effects, true});
    return statement;
}

ReferenceShader::Function ReferenceShader::MakeFunction(Scope& scope, Effects& effects)
{
    auto function = std::make_shared<ReferenceFunction>();
    function->name = NewName("f");
    function->type = OneOf(std::vector<std::string>{"float", "float", "float", "void", "string"});
    Scope inside = scope;
    inside.loops.clear();
    inside.indices.clear();
    std::erase_if(inside.functions, [](const Callable& callable) { return callable.nested; });
    inside.depth = std::max(inside.depth, 1);
    inside.guard = inside.bodyGuard = ++m_guards;
    inside.outer = scope.variables.size();
    inside.effects = &effects;
    inside.left = false;
    MakeFormals(inside, *function, effects);
    const bool early = function->type == "float" && Chance(20);
    inside.mayReturn = early;
    if (early)
        inside.guard = ++m_guards;  // not all points continue after the return
    if (inside.plain || Chance(30))
        function->body.push_back(Declaration(inside));
    if (Chance(20))
        AddRounds(inside, function->body);
    const int count = Below(4);
    for (int i = 0; i < count; ++i)
        AddStatement(inside, function->body);
    if (function->type != "void" && !(early && !inside.mayReturn)) {
        function->body.push_back({Statement::Kind::Return});
        function->body.back().value = Result(inside, function);
    }
    DeclareExterns(*function, effects);
    return function;
}

/// Adds a loop that passes a local to a uniform formal and may change the local afterwards, so that
/// the next iteration passes another value. Does nothing if no function has such a formal or can be
/// called.
void ReferenceShader::AddRounds(Scope& scope, std::vector<Statement>& body)
{
    Expr call;
    ReferenceExpr* argument = nullptr;
    for (const Callable& callable : scope.functions) {
        const auto& formals = callable.function->formals;
        for (std::size_t i = 0; i < formals.size() && !argument; ++i)
            if (callable.function->type == "float" && !callable.effects.writes &&
                formals[i].variable->detail == ReferenceDetail::Uniform &&
                formals[i].variable->type == Type::Float && formals[i].variable->length == 0 &&
                Arguments(scope, callable, Need::Any, call))
                argument = &call.operands[i];
    }
    if (!argument)
        return;
    const auto local = [&](Expr value) {
        const Variable variable =
            Add(NewName("n"), Type::Float, ReferenceDetail::Open, 0, scope.guard);
        body.push_back(Declare(variable, std::move(value)));
        scope.variables.push_back(variable);
        return variable;
    };
    const Variable given = local(OpenNumber(scope));
    const Variable sum = local(Constant(0));
    *argument = Reference(given);
    Scope inside = scope;
    inside.guard = ++m_guards;
    Statement loop = {Statement::Kind::For};
    loop.variable = Add(NewName("i"), Type::Float, ReferenceDetail::Open, 0, inside.guard);
    loop.value = Operator("<", {Reference(loop.variable), Constant(2)});
    loop.body = {Assign(Reference(sum), "+=", Bounded(std::move(call), 8))};
    if (Chance(60))
        loop.body.push_back(AssignNumber(inside, Reference(Chance(80) ? given : sum)));
    body.push_back(Declare(loop.variable, Constant(0)));
    body.push_back(std::move(loop));
}

/// Makes the result of a function. For a plain function, tries up to six times to make one that is
/// uniform if the arguments are.
Expr ReferenceShader::Result(Scope& scope, const Function& function)
{
    Expr& value = function->body.back().value;
    for (int tries = scope.plain ? 6 : 1; tries > 0; --tries) {
        value = function->type == "string" ? Text(scope, Need::Any)
                                           : Bounded(Number(scope, 2, Need::Any));
        if (IsUniformIfArgumentsAre(function))
            break;
    }
    return value;
}

bool ReferenceShader::IsUniformIfArgumentsAre(const Function& function)
{
    static const ReferenceVariable uniform = {{}, Type::Float, ReferenceDetail::Uniform};
    static const ReferenceVariable varying;
    Expr call = {Expr::Kind::Call};
    call.function = function;
    for (const auto& [formal, output] : function->formals)
        call.operands.push_back(
            Reference(output && formal->detail != ReferenceDetail::Uniform ? &varying : &uniform));
    return IsSurelyUniform(call);
}

/// Declares some of the outer variables as extern; the others are visible without that.
void ReferenceShader::DeclareExterns(ReferenceFunction& function, const Effects& effects)
{
    for (const Variable variable : effects.touched)
        if (!Contains(function.externs, variable) && Chance(40))
            function.externs.push_back(variable);
}

void ReferenceShader::MakeFormals(Scope& inside, ReferenceFunction& function, Effects& effects)
{
    for (int i = 1 + Below(3); i > 0; --i) {
        const bool uniform = Chance(40);
        const bool output = Chance(30);
        const bool array = Chance(20);
        const bool text = function.type == "string" || Chance(10);
        const Variable formal =
            Add(NewName(uniform ? "ux" : "x"), text ? Type::String : Type::Float,
                uniform ? ReferenceDetail::Uniform : ReferenceDetail::Open, array && !text ? 3 : 0,
                inside.guard);
        inside.variables.push_back(formal);
        if (!output)
            inside.fixed.push_back(formal);
        effects.writes |= output;
        function.formals.push_back({formal, output});
    }
}

// Which variables may be used

bool ReferenceShader::IsWritable(const Scope& scope, Variable variable) const
{
    if (Contains(scope.fixed, variable))
        return false;
    if (variable->detail != ReferenceDetail::Uniform)
        return true;
    // A uniform variable may be written only where all points are active. For an outer variable,
    // `Arguments` checks that at each call of the function.
    const auto place = std::find(scope.variables.begin(), scope.variables.end(), variable);
    const bool isOuter = place - scope.variables.begin() < static_cast<std::ptrdiff_t>(scope.outer);
    return isOuter ? scope.guard == scope.bodyGuard : scope.guard == variable->guard;
}

std::vector<ReferenceShader::Variable> ReferenceShader::Variables(const Scope& scope, Type type,
                                                                  bool array, Need need) const
{
    std::vector<Variable> found;
    for (const Variable variable : scope.variables)
        if (variable->type == type && (variable->length > 0) == array &&
            (need == Need::Any || variable->detail == ReferenceDetail::Uniform))
            found.push_back(variable);
    return found;
}

std::vector<ReferenceShader::Variable> ReferenceShader::Targets(const Scope& scope, Type type,
                                                                bool array) const
{
    auto found = Variables(scope, type, array, Need::Any);
    std::erase_if(found, [&](Variable variable) { return !IsWritable(scope, variable); });
    return found;
}

/// Records the use of a variable if it is outside of the current function. Returns the variable.
ReferenceShader::Variable ReferenceShader::Use(Scope& scope, Variable variable, bool write)
{
    const auto place = std::find(scope.variables.begin(), scope.variables.end(), variable);
    const bool isOuter = place - scope.variables.begin() < static_cast<std::ptrdiff_t>(scope.outer);
    if (!scope.effects || !isOuter)
        return variable;
    scope.effects->touched.push_back(variable);
    scope.effects->writes |= write;
    if (write && variable->detail == ReferenceDetail::Uniform)
        scope.effects->uniformWritten.push_back(variable);
    return variable;
}
