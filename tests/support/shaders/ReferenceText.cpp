// Writes the source of reference programs.

#include <cstdio>

#include "shaders/ReferenceTree.h"

namespace {

std::string Indent(int depth)
{
    return std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

void WriteBody(const std::vector<ReferenceStatement>& statements, std::string& text, int depth)
{
    text += " {\n";
    for (const ReferenceStatement& statement : statements)
        statement.Write(text, depth + 1);
    text += Indent(depth) + '}';
}

std::string Number(float number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(number));
    return text;
}

const char* TypeName(ReferenceType type)
{
    switch (type) {
    case ReferenceType::Float:
        return "float";
    case ReferenceType::Point:
        return "point";
    case ReferenceType::String:
        break;
    }
    return "string";
}

std::string Declared(const ReferenceVariable& variable)
{
    std::string text;
    if (variable.detail == ReferenceDetail::Uniform)
        text += "uniform ";
    if (variable.detail == ReferenceDetail::Varying)
        text += "varying ";
    text += TypeName(variable.type);
    text += ' ' + variable.name;
    if (variable.length > 0)
        text += '[' + std::to_string(variable.length) + ']';
    return text;
}

void WriteList(const std::vector<ReferenceExpr>& exprs, std::string& text)
{
    for (std::size_t i = 0; i < exprs.size(); ++i) {
        text += i > 0 ? ", " : "";
        exprs[i].Write(text);
    }
}

}  // namespace

void ReferenceExpr::Write(std::string& text) const
{
    switch (kind) {
    case Kind::Number:
        text += Number(number);
        break;
    case Kind::Text:
        text += '"' + word + '"';
        break;
    case Kind::Variable:
        text += variable->name;
        break;
    case Kind::Element:
        text += variable->name + '[';
        operands[0].Write(text);
        text += ']';
        break;
    case Kind::List:
        text += '{';
        WriteList(operands, text);
        text += '}';
        break;
    case Kind::Operator:
        text += '(' + (operands.size() == 1 ? word : "");
        operands[0].Write(text);
        if (operands.size() > 1) {
            text += ' ' + word + ' ';
            operands[1].Write(text);
        }
        text += ')';
        break;
    case Kind::Choice:
        text += '(';
        operands[0].Write(text);
        text += " ? ";
        operands[1].Write(text);
        text += " : ";
        operands[2].Write(text);
        text += ')';
        break;
    case Kind::BuiltIn:
    case Kind::Call:
        text += (function ? function->name : word) + '(';
        WriteList(operands, text);
        text += ')';
        break;
    }
}

void ReferenceStatement::Write(std::string& text, int depth) const
{
    const std::string levelsText = levels > 1 ? ' ' + std::to_string(levels) : "";
    if (kind == Kind::Function) {
        function->Write(text, depth);
        return;
    }
    text += Indent(depth);
    switch (kind) {
    case Kind::Declare:
        text += Declared(*variable) + " = ";
        value.Write(text);
        break;
    case Kind::Assign:
        target.Write(text);
        text += ' ' + word + ' ';
        value.Write(text);
        break;
    case Kind::Evaluate:
        value.Write(text);
        break;
    case Kind::If:
        text += "if (";
        value.Write(text);
        text += ')';
        WriteBody(body, text, depth);
        if (!otherwise.empty()) {
            text += " else";
            WriteBody(otherwise, text, depth);
        }
        text += '\n';
        return;
    case Kind::While:
    case Kind::For:
        text += kind == Kind::While ? "while (" : "for (" + variable->name + " = 0; ";
        value.Write(text);
        text += kind == Kind::While ? ")" : "; " + variable->name + " += 1)";
        WriteBody(body, text, depth);
        text += '\n';
        return;
    case Kind::Block:
        WriteBody(body, text, depth);
        text += '\n';
        return;
    case Kind::Break:
        text += "break" + levelsText;
        break;
    case Kind::Continue:
        text += "continue" + levelsText;
        break;
    case Kind::Return:
        text += "return ";
        value.Write(text);
        break;
    case Kind::Function:
        break;
    }
    text += ";\n";
}

void ReferenceFunction::Write(std::string& text, int depth) const
{
    text += Indent(depth) + type + ' ' + name + '(';
    for (const Formal& formal : formals) {
        text += &formal == formals.data() ? "" : "; ";
        text += (formal.output ? "output " : "") + Declared(*formal.variable);
    }
    text += ") {\n";
    for (const ReferenceVariable* variable : externs)
        text += Indent(depth + 1) + "extern " + Declared(*variable) + ";\n";
    for (const ReferenceStatement& statement : body)
        statement.Write(text, depth + 1);
    text += Indent(depth) + "}\n";
}

std::string ReferenceProgram::Text() const
{
    std::string text;
    for (const auto& function : functions)
        function->Write(text, 0);
    text += "surface random_shader(uniform float Kd = 2;";
    for (const ReferenceStatement& parameter : parameters) {
        text += " output " + Declared(*parameter.variable) + " = ";
        parameter.value.Write(text);
        text += ';';
    }
    for (const ReferenceVariable* output : outputs)
        if (output->name[0] == 'r')
            text += " output " + Declared(*output) + " = 0;";
    text += ")\n{\n";
    for (const ReferenceStatement& statement : body)
        statement.Write(text, 1);
    return text + "}\n";
}
