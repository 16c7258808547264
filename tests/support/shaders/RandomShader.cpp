#include "shaders/RandomShader.h"

#include <regex>
#include <utility>

namespace {

void WriteAll(const std::vector<RandomStatement>& statements, std::string& text, int depth)
{
    for (const RandomStatement& statement : statements)
        statement.Write(text, depth);
}

/// Returns the expression with limits, so that its value does not grow over iterations of loops.
std::string Bounded(const std::string& expression)
{
    return "clamp(" + expression + ", -8, 8)";
}

/// Replaces the locals in an expression, so that it can be a default value. `previous` is the name
/// of the preceding parameter.
std::string WithoutLocals(std::string expression, const std::string& previous)
{
    const std::pair<const char*, std::string> names[] = {{"u?w\\[[^\\]]*\\]", previous},
                                                         {"a", "u"},
                                                         {"b", "v"},
                                                         {"[co]", previous},
                                                         {"x", "s"},
                                                         {"y", "t"},
                                                         {"ua", "2"},
                                                         {"ub", "Kd"},
                                                         {"k", "Cs"},
                                                         {"q", "P"}};
    for (const auto& [local, other] : names)
        expression = std::regex_replace(
            expression, std::regex(std::string("\\b") + local + "(?![A-Za-z0-9])"), other);
    return expression;
}

}  // namespace

void RandomStatement::Write(std::string& text, int depth) const
{
    const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
    text += indent + head;
    if (hasBody) {
        text += " {\n";
        WriteAll(body, text, depth + 1);
        text += indent + "}";
        if (!otherwise.empty()) {
            text += " else {\n";
            WriteAll(otherwise, text, depth + 1);
            text += indent + "}";
        }
    }
    text += '\n';
}

std::string RandomProgram::Text() const
{
    std::string text;
    for (const Function& function : functions) {
        text += function.head + " {\n  float a = x, b = 1, c = y; uniform float ua = 2, ub = 1;\n"
                                "  float w[3] = {x, 2, y}; uniform float uw[3] = {1, 2, 3};\n"
                                "  color k = x; point q = P;\n";
        WriteAll(function.body, text, 1);
        text += "  o = o + a;\n" + function.tail + "}\n";
    }
    // A default value may call a function with a varying condition.
    text += "float pick(float x; float y) {\n  float r = y; if (x > 0.5) r = x; return r;\n}\n"
            "surface random_shader(float Kd = 0.5; output varying float r0 = 0, r1 = 0;\n"
            "    output varying color rc = 0; output varying point rp = 0";
    for (const std::string& parameter : parameters)
        text += ";\n    output varying " + parameter;
    text += ")\n{\n"
            "  float a = u, b = v, c = d0; uniform float ua = 1, ub = Kd; varying float x = s, "
            "y = t, o = 0;\n"
            "  float w[3] = {u, 0.5, v}; uniform float uw[3] = {1, 2, 3};\n"
            "  color k = Cs; point q = P;\n";
    WriteAll(body, text, 1);
    text += "  r0 = a + 2 * b + c + x + y + o; r1 = w[0] + w[1] + w[2] + ua + ub + uw[0] + uw[1] + "
            "uw[2];\n  rc = k; rp = q; Ci = k; Oi = 1;\n}\n";
    return text;
}

int RandomShader::Below(int count)
{
    return static_cast<int>(m_random() % static_cast<unsigned int>(count));
}

std::string RandomShader::OneOf(const std::vector<std::string>& texts)
{
    return texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))];
}

RandomProgram RandomShader::Make()
{
    RandomProgram program;
    const int functions = Below(3);
    for (int i = 0; i < functions; ++i) {
        program.functions.push_back(MakeFunction(i));
        m_functions = i + 1;
    }
    program.parameters = MakeParameters();
    Scope scope;
    program.body = Statements(scope, 4 + Below(6));
    return program;
}

std::vector<std::string> RandomShader::MakeParameters()
{
    const Scope scope;
    const auto choice = [&] {
        const std::string condition = Relation(scope, 2);
        const std::string value = Float(scope, 2);
        return "(" + condition + " ? " + value + " : " + Float(scope, 1) + ")";
    };
    const std::string picked = Float(scope, 1);
    return {"float d0 = " + WithoutLocals(choice(), "Kd"),
            "float d1 = " + WithoutLocals("pick(" + picked + ", " + choice() + ")", "d0"),
            "color dc = " + WithoutLocals(choice() + " * " + Color(scope, 1), "d1"),
            "point dp = " + WithoutLocals(Point(scope, 2), "d1"),
            "float dw[2] = {0.5, " + WithoutLocals(choice(), "d0") + "}"};
}

RandomProgram::Function RandomShader::MakeFunction(int number)
{
    RandomProgram::Function function;
    function.head = "float f" + std::to_string(number) + "(float x; float y; output float o)";
    Scope scope;
    scope.depth = 1;
    scope.inFunction = true;
    scope.mayReturn = Chance(60);
    const bool early = scope.mayReturn && Chance(60);
    if (!early)
        scope.mayReturn = false;
    function.body = Statements(scope, 2 + Below(3));
    // A function has exactly one `return`: an early one or this.
    if (!early || scope.mayReturn)
        function.tail = "  return " + Float(scope, 1) + ";\n";
    return function;
}

std::vector<RandomStatement> RandomShader::Statements(Scope& scope, int count)
{
    std::vector<RandomStatement> statements;
    for (int i = 0; i < count; ++i)
        statements.push_back(Statement(scope));
    return statements;
}

RandomStatement RandomShader::Statement(Scope& scope)
{
    if (scope.mayReturn && scope.depth > 1 && Chance(25)) {
        scope.mayReturn = false;
        return {"return " + Float(scope, 1) + ";"};
    }
    if (scope.loops > 0 && Chance(15))
        return Leave(scope);
    const int kind = Below(100);
    if (scope.depth >= 5 || kind < 50)
        return Assignment(scope);
    if (kind < 75)
        return If(scope);
    if (kind < 93)
        return Loop(scope);
    return scope.inFunction || scope.inLightLoop ? Assignment(scope) : LightLoop(scope);
}

RandomStatement RandomShader::Assignment(const Scope& scope)
{
    switch (Below(12)) {
    case 0:
        return {"k = clamp(" + Color(scope, 2) + ", color(-8), color(8));"};
    case 1:
        return {"q = clamp(" + Point(scope, 2) + ", point(-8), point(8));"};
    case 2:
        return {OneOf({"ua", "ub"}) + " = " + Bounded(UniformFloat(2)) + ";"};
    case 3:
        return {"w[" +
                OneOf({"0", "1", "2", "clamp(floor(u * 3), 0, 2)", "clamp(floor(ua), 0, 2)"}) +
                "] = " + Bounded(Float(scope, 2)) + ";"};
    case 4:
        return {"uw[" + OneOf({"0", "1", "clamp(floor(ua), 0, 2)"}) +
                "] = " + Bounded(UniformFloat(1)) + ";"};
    case 5:
        return {Target(scope) + OneOf({" += ", " -= "}) + Float(scope, 1) + ";"};
    case 6:
        return {Target(scope) + " *= " + OneOf({"0.5", "u", "0", "1"}) + ";"};
    case 7:
        if (m_functions > 0 && !scope.inFunction)
            return {Target(scope) + " = " + Bounded(Call(scope)) + ";"};
        break;
    case 8:
        return {"k *= " + Float(scope, 1) + " * 0.25;"};
    default:
        break;
    }
    return {Target(scope) + " = " + Bounded(Float(scope, 3)) + ";"};
}

RandomStatement RandomShader::If(Scope& scope)
{
    RandomStatement statement = {"if (" + Relation(scope, 2) + ")"};
    statement.hasBody = true;
    ++scope.depth;
    statement.body = Statements(scope, 1 + Below(3));
    if (Chance(50))
        statement.otherwise = Statements(scope, 1 + Below(2));
    --scope.depth;
    return statement;
}

RandomStatement RandomShader::Loop(Scope& scope)
{
    const std::string counter = "i" + std::to_string(m_counters++);
    const std::string bound =
        Chance(60) ? std::to_string(1 + Below(3)) : OneOf({"floor(u * 3)", "floor(abs(x))", "ua"});
    const std::string detail = Chance(50) ? "uniform float " : "float ";
    const std::string limit = counter + " < " + bound + " && " + counter + " < 4";
    RandomStatement inner;
    inner.hasBody = true;
    ++scope.depth;
    ++scope.loops;
    const bool isFor = Chance(60);
    if (isFor) {
        inner.head = "for (" + counter + " = 0; " + limit + "; " + counter + " += 1)";
    } else {
        inner.head = "while (" + limit + " && (" + Relation(scope, 1) + "))";
        inner.body.push_back({counter + " += 1;"});
    }
    const auto more = Statements(scope, 1 + Below(3));
    inner.body.insert(inner.body.end(), more.begin(), more.end());
    --scope.loops;
    --scope.depth;
    // A separate block limits the scope of the counter, and can be removed as a whole.
    RandomStatement block = {""};
    block.hasBody = true;
    block.body = {{detail + counter + " = 0;"}, inner};
    return block;
}

RandomStatement RandomShader::LightLoop(Scope& scope)
{
    RandomStatement statement = {OneOf({"illuminance(P, N, 1.5)", "illuminance(P)"})};
    statement.hasBody = true;
    Scope inside = scope;
    ++inside.depth;
    inside.loops = 0;  // no `break` or `continue` leaves the light loop
    inside.inLightLoop = true;
    statement.body.push_back({"k += Cl * 0.25;"});
    const auto more = Statements(inside, 1 + Below(2));
    statement.body.insert(statement.body.end(), more.begin(), more.end());
    return statement;
}

RandomStatement RandomShader::Leave(const Scope& scope)
{
    const int level = 1 + Below(scope.loops);
    const std::string word = OneOf({"break", "continue"});
    const std::string leave = word + (level == 1 ? "" : " " + std::to_string(level)) + ";";
    RandomStatement statement = {"if (" + Relation(scope, 1) + ")"};
    statement.hasBody = true;
    statement.body.push_back({leave});
    return statement;
}

std::string RandomShader::Constant()
{
    return OneOf({"0", "1", "2", "-1", "0.5", "0.25", "3"});
}

std::string RandomShader::FloatVariable()
{
    return OneOf({"a", "b", "c", "x", "y", "o"});
}

std::string RandomShader::Target(const Scope& scope)
{
    // The formals x and y of a function may only be read.
    return scope.inFunction ? OneOf({"a", "b", "c", "o"}) : FloatVariable();
}

std::string RandomShader::UniformFloat(int depth)
{
    if (depth == 0 || Chance(30))
        return OneOf({"ua", "ub", "1", "2", "0.5", "uw[1]"});
    return "(" + UniformFloat(depth - 1) + OneOf({" + ", " - ", " * "}) + UniformFloat(depth - 1) +
           ")";
}

std::string RandomShader::Call(const Scope& scope)
{
    // An output argument is a variable, or an element of an array.
    const std::string output = OneOf({"a", "b", "c", "o", "w[1]", "w[clamp(floor(u * 3), 0, 2)]"});
    return "f" + std::to_string(Below(m_functions)) + "(" + Float(scope, 1) + ", " +
           Float(scope, 1) + ", " + output + ")";
}

std::string RandomShader::Float(const Scope& scope, int depth)
{
    if (depth == 0 || Chance(20))
        return Chance(30) ? Constant() : FloatVariable();
    const auto inner = [&] { return Float(scope, depth - 1); };
    switch (Below(16)) {
    case 0:
        return "abs(" + inner() + ")";
    case 1:
        return "min(" + inner() + ", " + inner() + ")";
    case 2:
        return "(" + Relation(scope, 1) + " ? " + inner() + " : " + inner() + ")";
    case 3:
        return "w[" + OneOf({"0", "1", "2", "clamp(floor(u * 3), 0, 2)"}) + "]";
    case 4:
        return OneOf({"u", "v", "ua", "ub"});
    case 5:
        return "comp(k, " + OneOf({"0", "1", "2"}) + ")";
    case 6:
        return "xcomp(q)";
    case 7:
        return "step(" + inner() + ", " + inner() + ")";
    case 8:
        return "(" + inner() + " / " + OneOf({"2", "4", "1"}) + ")";
    case 9:
        return "(-(" + inner() + "))";
    case 10:
        return "mix(" + inner() + ", " + inner() + ", ub * 0.25)";
    case 11:
        return "floor(random() * 4)";
    default:
        break;
    }
    return "(" + inner() + OneOf({" + ", " - ", " * "}) + inner() + ")";
}

std::string RandomShader::Color(const Scope& scope, int depth)
{
    if (depth == 0)
        return OneOf({"k", "Cs", "Os"});
    switch (Below(5)) {
    case 0:
        return "color(" + Float(scope, 1) + ", " + Float(scope, 1) + ", " + Float(scope, 1) + ")";
    case 1:
        return "(" + Float(scope, 1) + " * " + Color(scope, depth - 1) + ")";
    case 2:
        return "mix(" + Color(scope, depth - 1) + ", " + Color(scope, depth - 1) + ", ua * 0.25)";
    default:
        break;
    }
    return "(" + Color(scope, depth - 1) + OneOf({" + ", " - ", " * "}) + Color(scope, depth - 1) +
           ")";
}

std::string RandomShader::Point(const Scope& scope, int depth)
{
    if (depth == 0)
        return OneOf({"q", "P"});
    if (Chance(40))
        return "point(" + Float(scope, 1) + ", " + Float(scope, 1) + ", " + Float(scope, 1) + ")";
    return "(" + Point(scope, depth - 1) + OneOf({" + ", " - "}) + Point(scope, depth - 1) + ")";
}

std::string RandomShader::Relation(const Scope& scope, int depth)
{
    if (depth > 0 && Chance(35)) {
        switch (Below(3)) {
        case 0:
            return "!(" + Relation(scope, depth - 1) + ")";
        case 1:
            return "(" + Relation(scope, depth - 1) + ") && (" + Relation(scope, depth - 1) + ")";
        default:
            return "(" + Relation(scope, depth - 1) + ") || (" + Relation(scope, depth - 1) + ")";
        }
    }
    const bool uniform = Chance(30);
    const std::string op = OneOf({" < ", " <= ", " > ", " >= ", " == ", " != "});
    return uniform ? UniformFloat(1) + op + Constant() : Float(scope, 1) + op + Constant();
}
