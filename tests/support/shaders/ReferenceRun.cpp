// Evaluates a reference program at one point in the most direct way: executes one statement after
// the other, skips statements whose condition is false, and keeps one value for each variable.

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "shaders/ReferenceTree.h"

namespace {

struct Value {
    std::array<float, 3> number = {};  // three equal numbers for a float or a truth value
    std::string text;
};

Value Of(float number)
{
    return {{number, number, number}, {}};
}

class Run {
public:
    explicit Run(const ReferenceProgram& program)
        : m_numbers(program.numbers),
          m_texts(program.texts)
    {
    }

    void Body(const std::vector<ReferenceStatement>& body) { (void)List(body); }
    void Set(const ReferenceVariable& variable, std::size_t element, const Value& value)
    {
        if (variable.type == ReferenceType::String)
            m_texts.at(variable.place) = value.text;
        else if (variable.type == ReferenceType::Point)
            std::copy(value.number.begin(), value.number.end(), &m_numbers.at(variable.place));
        else
            m_numbers.at(variable.place + element) = value.number[0];
    }
    [[nodiscard]] Value Get(const ReferenceVariable& variable, std::size_t element) const
    {
        if (variable.type == ReferenceType::String)
            return {{}, m_texts.at(variable.place)};
        if (variable.type == ReferenceType::Float)
            return Of(m_numbers.at(variable.place + element));
        const float* p = &m_numbers.at(variable.place);
        return {{p[0], p[1], p[2]}, {}};
    }

private:
    /// How a statement ends. Each loop consumes one level of a break or continue.
    struct End {
        enum Kind { Next, Break, Continue, Return } kind = Next;
        int levels = 0;
    };

    End List(const std::vector<ReferenceStatement>& statements)
    {
        for (const ReferenceStatement& statement : statements)
            if (const End end = One(statement); end.kind != End::Next)
                return end;
        return {};
    }

    End One(const ReferenceStatement& s)
    {
        using Kind = ReferenceStatement::Kind;
        if (++m_steps > 200000)
            throw std::runtime_error("does not end");
        switch (s.kind) {
        case Kind::Declare:
            Declare(s);
            return {};
        case Kind::Assign:
            Assign(s);
            return {};
        case Kind::Evaluate:
            (void)Evaluate(s.value);
            return {};
        case Kind::If:
            return List(IsTrue(s.value) ? s.body : s.otherwise);
        case Kind::While:
        case Kind::For:
            return Loop(s);
        case Kind::Block:
            return List(s.body);
        case Kind::Break:
            return {End::Break, s.levels};
        case Kind::Continue:
            return {End::Continue, s.levels};
        case Kind::Return:
            m_result = Evaluate(s.value);
            return {End::Return, 0};
        case Kind::Function:
            break;
        }
        return {};
    }

    End Loop(const ReferenceStatement& s)
    {
        const bool counts = s.kind == ReferenceStatement::Kind::For;
        if (counts)
            Set(*s.variable, 0, Of(0));
        while (IsTrue(s.value)) {
            End end = List(s.body);
            if (end.kind == End::Return || end.levels > 1)
                return {end.kind, end.levels - 1};
            if (end.kind == End::Break)
                break;
            if (counts)
                Set(*s.variable, 0, Of(Get(*s.variable, 0).number[0] + 1));
        }
        return {};
    }

    void Declare(const ReferenceStatement& s)
    {
        if (s.value.kind != ReferenceExpr::Kind::List) {
            Set(*s.variable, 0, Evaluate(s.value));
            return;
        }
        for (std::size_t i = 0; i < s.value.operands.size(); ++i)
            Set(*s.variable, i, Evaluate(s.value.operands[i]));
    }

    void Assign(const ReferenceStatement& s)
    {
        const std::size_t element = ElementOf(s.target);
        Value value = Evaluate(s.value);
        if (s.word != "=") {
            const Value old = Get(*s.target.variable, element);
            for (std::size_t i = 0; i < 3; ++i)
                value.number[i] = Apply(s.word.substr(0, 1), old.number[i], value.number[i]);
        }
        Set(*s.target.variable, element, value);
    }

    std::size_t ElementOf(const ReferenceExpr& target)
    {
        if (target.kind != ReferenceExpr::Kind::Element)
            return 0;
        const float index = Evaluate(target.operands[0]).number[0];
        if (!(index > -1) || index >= static_cast<float>(target.variable->length))
            throw std::runtime_error("reads outside an array");
        return static_cast<std::size_t>(std::max(index, 0.0F));
    }

    bool IsTrue(const ReferenceExpr& condition) { return Evaluate(condition).number[0] != 0; }

    static float Apply(const std::string& word, float a, float b)
    {
        if (word == "+")
            return a + b;
        if (word == "-")
            return a - b;
        if (word == "*")
            return a * b;
        if (word == "/")
            return a / b;
        if (word == "<")
            return a < b ? 1.0F : 0.0F;
        if (word == "<=")
            return a <= b ? 1.0F : 0.0F;
        if (word == ">")
            return a > b ? 1.0F : 0.0F;
        if (word == ">=")
            return a >= b ? 1.0F : 0.0F;
        throw std::logic_error("unknown operator " + word);
    }

    Value Evaluate(const ReferenceExpr& e)
    {
        using Kind = ReferenceExpr::Kind;
        switch (e.kind) {
        case Kind::Number:
            return Of(e.number);
        case Kind::Text:
            return {{}, e.word};
        case Kind::Variable:
            return Get(*e.variable, 0);
        case Kind::Element:
            return Get(*e.variable, ElementOf(e));
        case Kind::Operator:
            return Operator(e);
        case Kind::BuiltIn:
            return BuiltIn(e);
        case Kind::Choice:
            return Evaluate(e.operands[IsTrue(e.operands[0]) ? 1 : 2]);
        case Kind::Call:
            return Call(e);
        case Kind::List:
            break;
        }
        throw std::logic_error("no value");
    }

    Value Operator(const ReferenceExpr& e)
    {
        if (e.word == "&&")
            return Of(IsTrue(e.operands[0]) && IsTrue(e.operands[1]) ? 1.0F : 0.0F);
        if (e.word == "||")
            return Of(IsTrue(e.operands[0]) || IsTrue(e.operands[1]) ? 1.0F : 0.0F);
        Value left = Evaluate(e.operands[0]);
        if (e.operands.size() == 1) {
            if (e.word == "!")
                return Of(left.number[0] != 0 ? 0.0F : 1.0F);
            for (float& number : left.number)
                number = -number;
            return left;
        }
        const Value right = Evaluate(e.operands[1]);
        if (e.word == "==" || e.word == "!=") {
            const bool same = left.number == right.number && left.text == right.text;
            return Of(same == (e.word == "==") ? 1.0F : 0.0F);
        }
        for (std::size_t i = 0; i < 3; ++i)
            left.number[i] = Apply(e.word, left.number[i], right.number[i]);
        return left;
    }

    Value BuiltIn(const ReferenceExpr& e)
    {
        std::vector<Value> args;
        for (const ReferenceExpr& operand : e.operands)
            args.push_back(Evaluate(operand));
        const auto each = [&](auto function) {
            Value value;
            for (std::size_t i = 0; i < 3; ++i)
                value.number[i] = function(i);
            return value;
        };
        const auto arg = [&](std::size_t a, std::size_t i) { return args[a].number[i]; };
        if (e.word == "concat")
            return {{}, args[0].text + args[1].text};
        if (e.word == "match")
            return Of(args[1].text.find(args[0].text) != std::string::npos ? 1.0F : 0.0F);
        if (e.word == "point")
            return {{arg(0, 0), arg(1, 0), arg(2, 0)}, {}};
        if (e.word == "xcomp")
            return Of(arg(0, 0));
        if (e.word == "ycomp")
            return Of(arg(0, 1));
        if (e.word == "zcomp")
            return Of(arg(0, 2));
        if (e.word == "setxcomp") {
            Value value = args[0];
            value.number[0] = arg(1, 0);
            Set(*e.operands[0].variable, 0, value);
            return value;
        }
        if (e.word == "random")
            return Of(0.5F);
        if (e.word == "abs")
            return each([&](std::size_t i) { return std::abs(arg(0, i)); });
        if (e.word == "floor")
            return each([&](std::size_t i) { return std::floor(arg(0, i)); });
        if (e.word == "min")
            return each([&](std::size_t i) { return std::min(arg(0, i), arg(1, i)); });
        if (e.word == "max")
            return each([&](std::size_t i) { return std::max(arg(0, i), arg(1, i)); });
        if (e.word == "step")
            return each([&](std::size_t i) { return arg(0, i) <= arg(1, i) ? 1.0F : 0.0F; });
        if (e.word == "clamp")
            return each([&](std::size_t i) { return std::clamp(arg(0, i), arg(1, i), arg(2, i)); });
        throw std::logic_error("unknown function " + e.word);
    }

    /// Arguments are evaluated at the call; at the end output arguments get the values of their
    /// formals.
    Value Call(const ReferenceExpr& e)
    {
        const auto& formals = e.function->formals;
        std::vector<std::vector<Value>> values(formals.size());
        std::vector<std::size_t> elements(formals.size());
        for (std::size_t i = 0; i < formals.size(); ++i) {
            const ReferenceExpr& argument = e.operands[i];
            elements[i] = ElementOf(argument);
            if (formals[i].variable->length == 0)
                values[i].push_back(Evaluate(argument));
            for (std::size_t k = 0; k < formals[i].variable->length; ++k)
                values[i].push_back(Get(*argument.variable, k));
        }
        for (std::size_t i = 0; i < formals.size(); ++i)
            for (std::size_t k = 0; k < values[i].size(); ++k)
                Set(*formals[i].variable, k, values[i][k]);
        const Value outerResult = std::exchange(m_result, Value());
        (void)List(e.function->body);
        const Value result = std::exchange(m_result, outerResult);
        for (std::size_t i = 0; i < formals.size(); ++i)
            for (std::size_t k = 0; formals[i].output && k < values[i].size(); ++k)
                Set(*e.operands[i].variable, elements[i] + k, Get(*formals[i].variable, k));
        return result;
    }

    std::vector<float> m_numbers;
    std::vector<std::string> m_texts;
    Value m_result;  // of the current function
    int m_steps = 0;
};

}  // namespace

std::vector<float> EvaluateAtPoint(const ReferenceProgram& program, float u, float v)
{
    Run run(program);
    run.Set(*program.predefined.at("u"), 0, Of(u));
    run.Set(*program.predefined.at("v"), 0, Of(v));
    run.Set(*program.predefined.at("P"), 0, {{u, v, 0.25F * u * v}, {}});
    run.Set(*program.predefined.at("Kd"), 0, Of(2));
    run.Body(program.parameters);
    run.Body(program.body);
    std::vector<float> numbers;
    for (const ReferenceVariable* output : program.outputs) {
        const Value value = run.Get(*output, 0);
        numbers.insert(numbers.end(), value.number.begin(),
                       value.number.begin() + (output->type == ReferenceType::Point ? 3 : 1));
    }
    return numbers;
}
