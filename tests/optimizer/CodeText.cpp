#include "CodeText.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "icode/SlcICodes.h"

namespace {

using Words = std::vector<std::string>;

Words Split(const std::string& line)
{
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), {}};
}

std::string NameOf(const SlcOperand& operand)
{
    if (operand->IsIdent())
        return operand->GetName();
    if (operand->IsBool())
        return operand->GetBool() ? "true" : "false";
    std::ostringstream out;
    out << operand->GetFloat();
    return out.str();
}

/// Prints one instruction in the form in which it is written.
class LinePrinter : public SlcAllICodeWalker {
public:
    std::string m_line;

private:
    using SlcAllICodeWalker::Case;
    void Assign(const SlcOperand& dest, const std::string& value)
    {
        m_line = NameOf(dest) + " = " + value;
    }
    void Binary(const SlcOperand& dest, const SlcOperand& left, const char* sign,
                const SlcOperand& right)
    {
        Assign(dest, NameOf(left) + " " + sign + " " + NameOf(right));
    }
    void Case(SlcPtr<SlcAssignICode> c) override { Assign(c->m_dest, NameOf(c->m_source)); }
    void Case(SlcPtr<SlcAssignSIMDICode> c) override
    {
        m_line = NameOf(c->m_dest) + " <- " + NameOf(c->m_source);
    }
    void Case(SlcPtr<SlcAddICode> c) override { Arith(*c, "+"); }
    void Case(SlcPtr<SlcSubICode> c) override { Arith(*c, "-"); }
    void Case(SlcPtr<SlcMultICode> c) override { Arith(*c, "*"); }
    void Case(SlcPtr<SlcDivICode> c) override { Arith(*c, "/"); }
    void Arith(const SlcArithExprICode& c, const char* sign)
    {
        Binary(c.m_resultId, c.m_leftExpr, sign, c.m_rightExpr);
    }
    void Case(SlcPtr<SlcUnaryMinusICode> c) override
    {
        Assign(c->m_dest, "-" + NameOf(c->m_source));
    }
    void Case(SlcPtr<SlcLessThenICode> c) override
    {
        Binary(c->m_resultId, c->m_leftExpr, "<", c->m_rightExpr);
    }
    void Case(SlcPtr<SlcEqualICode> c) override
    {
        Binary(c->m_resultId, c->m_leftExpr, "==", c->m_rightExpr);
    }
    void Case(SlcPtr<SlcBeginParallelICode>) override { m_line = "{"; }
    void Case(SlcPtr<SlcEndParallelICode>) override { m_line = "}"; }
    void Case(SlcPtr<SlcIfTrueICode> c) override
    {
        m_line = "if " + NameOf(c->m_flag) + " " + c->m_label->m_name;
    }
    void Case(SlcPtr<SlcIfFalseICode> c) override
    {
        m_line = "ifnot " + NameOf(c->m_flag) + " " + c->m_label->m_name;
    }
    void Case(SlcPtr<SlcEndIfICode> c) override { m_line = "endif " + c->m_label->m_name; }
    void Case(SlcPtr<SlcLabelICode> c) override { m_line = c->m_name + ":"; }
    void Case(SlcPtr<SlcGotoICode> c) override { m_line = "goto " + c->m_label->m_name; }
    void Case(SlcPtr<SlcIfTrueGotoICode> c) override
    {
        m_line = "goto " + c->m_label->m_name + " if " + NameOf(c->m_flag);
    }
    void Case(SlcPtr<SlcIfFalseGotoICode> c) override
    {
        m_line = "goto " + c->m_label->m_name + " ifnot " + NameOf(c->m_flag);
    }
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> c) override
    {
        Assign(c->m_dest, "any " + NameOf(c->m_source));
    }
    void Case(SlcPtr<SlcInvertBoolFlagICode> c) override
    {
        Assign(c->m_dest, "not " + NameOf(c->m_source) +
                              (c->m_outer ? " in " + NameOf(c->m_outer) : std::string()));
    }
    void Case(SlcPtr<SlcOrBoolFlagICode> c) override
    {
        Binary(c->m_dest, c->m_left, "|", c->m_right);
    }
    void Case(SlcPtr<SlcBreakICode> c) override { Leave("break", *c); }
    void Case(SlcPtr<SlcContinueICode> c) override { Leave("continue", *c); }
    template <class Code>
    void Leave(const char* word, const Code& c)
    {
        m_line = word;
        for (const auto& flag : c.m_flags)
            m_line += " " + NameOf(flag);
        m_line += " " + c.m_label->m_name;
    }
    void Case(SlcPtr<SlcArrayRefICode> c) override
    {
        Assign(c->m_result, "ref " + NameOf(c->m_array) + " " + NameOf(c->m_index));
    }
    void Case(SlcPtr<SlcCallICode> c) override
    {
        m_line = "call " + c->m_name->GetName();
        for (const auto& arg : c->m_args)
            m_line += " " + NameOf(arg);
        if (c->m_result)
            m_line = NameOf(c->m_result) + " = " + m_line;
    }
    void Case(SlcPtr<SlcBeginIlluminanceICode> c) override
    {
        m_line = "illuminance " + c->m_startLabel->m_name + " " + c->m_endLabel->m_name;
    }
    void Case(SlcPtr<SlcEndIlluminanceICode> c) override
    {
        m_line = "again " + c->m_startLabel->m_name;
    }
    void Case(SlcPtr<SlcBeginShaderICode>) override { m_line = "begin"; }
    void Case(SlcPtr<SlcEndShaderICode>) override { m_line = "end"; }
    void Default(SlcPtr<SlcICode>) override { m_line = "?"; }
};

}  // namespace

SlcPtr<SlcListICode> CodeText::List(std::string_view text)
{
    m_list = MakeShared<SlcListICode>();
    m_variables.clear();
    m_labels.clear();
    std::string lines(text);
    std::replace(lines.begin(), lines.end(), ';', '\n');
    std::istringstream in(lines);
    for (std::string line; std::getline(in, line);)
        if (!Split(line).empty())
            m_list->AddICode(Parse(line));
    return m_list;
}

std::string CodeText::Print(const SlcListICode& list)
{
    std::string text;
    for (const auto& code : list.m_icodes) {
        LinePrinter printer;
        code->ApplyWalker(&printer);
        text += (text.empty() ? "" : "; ") + printer.m_line;
    }
    return text;
}

SlcOperand CodeText::Operand(const std::string& name)
{
    if (name == "true" || name == "false")
        return SlcLexType::Bool(name == "true");
    if (std::isdigit(static_cast<unsigned char>(name[0])))
        return SlcLexType::Float(std::stod(name));
    if (const auto known = m_variables.find(name); known != m_variables.end())
        return known->second;
    const char kind = name[0];
    SlcTypeNode* type = SlcTypeNode::AFloat();
    if (kind == 'f' || kind == 'g')
        type = SlcTypeNode::ABoolean();
    else if (kind == 'a' || kind == 'A')
        type = SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat(), 4);
    else if (kind == 'r')
        type = SlcTypeNode::CreateArrayRefType(SlcTypeNode::AFloat());
    SlcStorageSpecNode* storage = SlcStorageSpecNode::ALocal();
    if (kind == 'p')
        storage = SlcStorageSpecNode::AInput();
    else if (kind == 'C')
        storage = SlcStorageSpecNode::AReadWrite();
    SlcDetailNode* detail = kind == 'g' || kind == 'u' || kind == 'A' ? SlcDetailNode::AUniform()
                                                                      : SlcDetailNode::AVarying();
    auto operand = MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), type, detail, storage);
    m_variables.emplace(name, operand);
    if (storage->IsLocal())
        m_list->AddLocalVar(operand);
    else if (storage->IsReadWrite())
        m_list->AddHiddenVar(operand);
    return operand;
}

SlcPtr<SlcLabelICode> CodeText::Label(const std::string& name)
{
    auto& label = m_labels[name];
    if (label.Null())
        label = MakeShared<SlcLabelICode>(name);
    return label;
}

SlcPtr<SlcICode> CodeText::Parse(const std::string& line)
{
    const Words words = Split(line);
    if (words.size() > 1 && words[1] == "<-")
        return MakeShared<SlcAssignSIMDICode>(Operand(words[0]), Operand(words[2]));
    if (words.size() > 1 && words[1] == "=")
        return ParseAssignment(words);
    return ParseControl(words);
}

SlcPtr<SlcICode> CodeText::ParseAssignment(const Words& words)
{
    const std::string& first = words[2];
    if (first == "any")
        return MakeShared<SlcSetUniformBoolFlagICode>(Operand(words[0]), Operand(words[3]));
    if (first == "not")
        return MakeShared<SlcInvertBoolFlagICode>(Operand(words[0]), Operand(words[3]),
                                                  words.size() > 5 ? Operand(words[5])
                                                                   : SlcOperand());
    if (first == "ref")
        return MakeShared<SlcArrayRefICode>(Operand(words[0]), Operand(words[3]),
                                            Operand(words[4]));
    if (first == "call")
        return Call(Operand(words[0]), words, 3);
    if (first[0] == '-')
        return MakeShared<SlcUnaryMinusICode>(Operand(words[0]), Operand(first.substr(1)));
    const SlcOperand left = Operand(first);
    if (words.size() == 3)
        return MakeShared<SlcAssignICode>(Operand(words[0]), left);
    const SlcOperand right = Operand(words[4]);
    const SlcOperand result = Operand(words[0]);
    const std::string& sign = words[3];
    if (sign == "+")
        return MakeShared<SlcAddICode>(result, left, right);
    if (sign == "-")
        return MakeShared<SlcSubICode>(result, left, right);
    if (sign == "*")
        return MakeShared<SlcMultICode>(result, left, right);
    if (sign == "/")
        return MakeShared<SlcDivICode>(result, left, right);
    if (sign == "<")
        return MakeShared<SlcLessThenICode>(result, left, right);
    if (sign == "==")
        return MakeShared<SlcEqualICode>(result, left, right);
    if (sign == "|")
        return MakeShared<SlcOrBoolFlagICode>(result, left, right);
    throw std::invalid_argument("operator " + sign);
}

SlcPtr<SlcICode> CodeText::ParseControl(const Words& words)
{
    const std::string& first = words[0];
    if (first == "{")
        return MakeShared<SlcBeginParallelICode>(Label("run"));
    if (first == "}")
        return MakeShared<SlcEndParallelICode>(Label("run"));
    if (first == "if")
        return MakeShared<SlcIfTrueICode>(Operand(words[1]), Label(words[2]));
    if (first == "ifnot")
        return MakeShared<SlcIfFalseICode>(Operand(words[1]), Label(words[2]));
    if (first == "endif")
        return MakeShared<SlcEndIfICode>(Label(words[1]));
    if (first == "goto" && words.size() == 2)
        return MakeShared<SlcGotoICode>(Label(words[1]));
    if (first == "goto" && words[2] == "if")
        return MakeShared<SlcIfTrueGotoICode>(Operand(words[3]), Label(words[1]));
    if (first == "goto")
        return MakeShared<SlcIfFalseGotoICode>(Operand(words[3]), Label(words[1]));
    if (first == "break")
        return Leave<SlcBreakICode>(words);
    if (first == "continue")
        return Leave<SlcContinueICode>(words);
    if (first == "call")
        return Call(nullptr, words, 1);
    if (first == "illuminance")
        return MakeShared<SlcBeginIlluminanceICode>(Label(words[1]), Label(words[2]));
    if (first == "again")
        return MakeShared<SlcEndIlluminanceICode>(Label(words[1]));
    if (first == "begin")
        return MakeShared<SlcBeginShaderICode>();
    if (first == "end")
        return MakeShared<SlcEndShaderICode>();
    if (first.back() == ':')
        return Label(first.substr(0, first.size() - 1));
    throw std::invalid_argument("instruction " + first);
}

template <class Code>
SlcPtr<SlcICode> CodeText::Leave(const Words& words)
{
    auto code = MakeShared<Code>(Label(words.back()));
    for (std::size_t i = 1; i + 1 < words.size(); ++i)
        code->m_flags.push_back(Operand(words[i]));
    return code;
}

SlcPtr<SlcICode> CodeText::Call(SlcOperand result, const Words& words, std::size_t first)
{
    const std::string& name = words[first];
    std::deque<SlcOperand> args;
    for (std::size_t i = first + 1; i < words.size(); ++i)
        args.push_back(Operand(words[i]));
    SlcFuncSignature signature;
    signature.ident = SlcLexicalNode::CreateIdent(name);
    signature.returnType = SlcTypeNode::AFloat();
    signature.argTypes.assign(args.size(), SlcTypeNode::AFloat());
    signature.argDetails.assign(args.size(), SlcDetailNode::AUnknown());
    signature.argStorages.assign(args.size(), SlcStorageSpecNode::AInput());
    signature.foldable = name != "random";
    signature.orderSensitive = name == "random";
    return MakeShared<SlcCallICode>(SlcLexicalNode::CreateIdent(name), args, std::move(result),
                                    SlcCallICode::ArgumentList::Fixed, SlcGridForm::Plain(),
                                    MakeShared<SlcFuncSymbolEntry>(std::move(signature)));
}
