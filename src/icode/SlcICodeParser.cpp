// The text is split into tokens. The first tokens of a statement select its parsing function: a
// bracket, `name:`, `name?`, `!name?`, a keyword, `name(`, or the results of an assignment.
//
// Tested by tests/icode/SlcICodeTextTest.cpp.

#include "icode/SlcICodeParser.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <optional>
#include <string>

#include "icode/SlcICodeSigns.h"
#include "icode/SlcICodeTokens.h"
#include "icode/SlcICodeWords.h"
#include "icode/SlcICodes.h"

namespace {

/// Parses all of `text` as a number; nothing if it is none or out of range.
template <class Number>
std::optional<Number> NumberOf(std::string_view text)
{
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

/// Parses a constant that begins with `#`: an integer that the compiler added, or an infinite or
/// NaN float. Null for anything else.
SlcOperand HashConstant(const std::string& token)
{
    if (token == "#inf" || token == "#-inf" || token == "#nan") {
        const double value = token == "#nan" ? std::numeric_limits<double>::quiet_NaN()
                                             : std::numeric_limits<double>::infinity();
        return SlcLexType::Float(token == "#-inf" ? -value : value);
    }
    const auto number = NumberOf<int>(std::string_view(token).substr(1));
    return number ? SlcLexType::Int(*number, true) : SlcOperand();
}

/// Primitives are spelled in upper case, the keywords of the text form in lower case.
bool IsPrimitive(const std::string& word)
{
    return std::none_of(word.begin(), word.end(),
                        [](char c) { return std::islower(static_cast<unsigned char>(c)) != 0; });
}

}  // namespace

std::deque<SlcPtr<SlcICode>> SlcICodeParser::Parse(std::string_view text)
{
    m_tokens = SlcSplitICodeText(text);
    m_next = 0;
    m_labels.clear();
    m_brackets.clear();
    std::deque<SlcPtr<SlcICode>> codes;
    while (!AtEnd())
        codes.push_back(Statement());
    if (!m_brackets.empty())
        Fail("a closing bracket");
    return codes;
}

SlcPtr<SlcICode> SlcICodeParser::Statement()
{
    if (Accept("{"))
        return MakeShared<SlcBeginParallelICode>(NewBracket());
    if (Accept("}"))
        return MakeShared<SlcEndParallelICode>(CloseBracket());
    if (Accept(")"))
        return MakeShared<SlcEndIfICode>(CloseBracket());
    const bool wanted = !Accept("!");
    const std::string word = Next();
    if (Accept("?"))
        return Guarded(word, wanted);
    if (Accept(":"))
        return Label(word);
    SlcPtr<SlcICode> code = Words(word);
    if (!code) {
        Operands results;
        if (Peek() == "(")
            code = Call(results, word);
        else {
            results.push_back(Operand(word));
            while (Accept(","))
                results.push_back(Operand(Next()));
            code = Assignment(std::move(results));
        }
    }
    if (!AtEnd())
        Expect(";");
    return code;
}

SlcPtr<SlcICode> SlcICodeParser::Guarded(const std::string& flag, bool wanted)
{
    const SlcOperand operand = Operand(flag);
    if (Accept("(")) {
        if (wanted)
            return MakeShared<SlcIfTrueICode>(operand, NewBracket());
        return MakeShared<SlcIfFalseICode>(operand, NewBracket());
    }
    Expect("goto");
    const SlcLabel label = Label(Next());
    if (!AtEnd())
        Expect(";");
    if (wanted)
        return MakeShared<SlcIfTrueGotoICode>(operand, label);
    return MakeShared<SlcIfFalseGotoICode>(operand, label);
}

/// Parses a statement that begins with a keyword; returns null for any other word.
SlcPtr<SlcICode> SlcICodeParser::Words(const std::string& word)
{
    if (word == "goto")
        return MakeShared<SlcGotoICode>(Label(Next()));
    if (word == "break")
        return Leave<SlcBreakICode>();
    if (word == "continue")
        return Leave<SlcContinueICode>();
    if (word == "lights") {
        const SlcLabel start = Label(Next());
        return MakeShared<SlcBeginIlluminanceICode>(start, Label(Next()));
    }
    if (word == "next")
        return MakeShared<SlcEndIlluminanceICode>(Label(Next()));
    if (word == "begin")
        return MakeShared<SlcBeginShaderICode>();
    if (word == "end")
        return MakeShared<SlcEndShaderICode>();
    if (word == "note" && !AtEnd() && Peek() == ";") {
        static const std::string noFile;
        return MakeShared<SlcCommentICode>("", 0, &noFile);
    }
    return nullptr;
}

template <class Code>
SlcPtr<SlcICode> SlcICodeParser::Leave()
{
    std::deque<SlcOperand> flags;
    while (!Accept("to"))
        flags.push_back(Operand(Next()));
    auto code = MakeShared<Code>(Label(Next()));
    code->m_flags = std::move(flags);
    return code;
}

SlcPtr<SlcICode> SlcICodeParser::Assignment(Operands results)
{
    const SlcOperand& result = results.front();
    if (Accept("<-"))
        return MakeShared<SlcAssignSIMDICode>(result, Operand(Next()));
    Expect("=");
    if (Accept("&")) {
        const SlcOperand array = Operand(Next());
        Expect("[");
        const SlcOperand index = Operand(Next());
        Expect("]");
        return MakeShared<SlcArrayRefICode>(result, array, index);
    }
    if (Accept("-")) {
        const bool isConst = Accept("(");
        const SlcOperand source = Operand(Next());
        if (isConst)
            Expect(")");
        return MakeShared<SlcUnaryMinusICode>(result, source);
    }
    const std::string word = Next();
    return !AtEnd() && Peek() == "(" ? Call(results, word) : Value(result, word);
}

/// Parses the text after `result =` that begins with `word`: a keyword, or the first operand.
SlcPtr<SlcICode> SlcICodeParser::Value(const SlcOperand& result, const std::string& word)
{
    if (word == "any")
        return MakeShared<SlcSetUniformBoolFlagICode>(result, Operand(Next()));
    if (word == "not")
        return MakeShared<SlcInvertBoolFlagICode>(result, Operand(Next()), SlcOperand());
    const SlcOperand left = Operand(word);
    if (AtEnd() || Peek() == ";")
        return MakeShared<SlcAssignICode>(result, left);
    if (Accept("but")) {
        Expect("not");
        return MakeShared<SlcInvertBoolFlagICode>(result, Operand(Next()), left);
    }
    for (const SlcICodeSign& row : k_slcICodeSigns)
        if (Accept(row.sign))
            return row.make(result, left, Operand(Next()));
    Fail("an operator");
}

SlcPtr<SlcICode> SlcICodeParser::Call(const Operands& results, const std::string& word)
{
    const Operands arguments = Arguments();
    if (IsPrimitive(word))
        return Primitive(results, word, arguments);
    const SlcGridForm form = Form();
    if (const SlcPtr<SlcICode> code = SlcMakeICodeOfWord(word, results, arguments, form))
        return code;
    Fail("an instruction in place of '" + word + "'");
}

SlcPtr<SlcICode> SlcICodeParser::Primitive(const Operands& results, const std::string& word,
                                           const Operands& arguments)
{
    if (results.size() > 1)
        Fail("one result of a call");
    const auto list =
        Accept("counted") ? SlcCallICode::ArgumentList::Counted : SlcCallICode::ArgumentList::Fixed;
    const SlcGridForm form = Form();
    const auto primitive = SqxPrimitiveNamed(
        word.starts_with("CALL_") ? word : std::string(k_slcPrimitivePrefix) + word);
    if (!primitive)
        Fail("a primitive in place of '" + word + "'");
    return MakeShared<SlcCallICode>(*primitive, arguments,
                                    results.empty() ? SlcOperand() : results[0], list, form,
                                    m_scope.FindFunction(*primitive, arguments));
}

SlcOperand SlcICodeParser::Operand(const std::string& token)
{
    if (token == "true" || token == "false")
        return SlcLexType::Bool(token == "true");
    if (token.front() == '"')
        return SlcLexType::String(token);
    if (token.front() == '#') {
        if (SlcOperand constant = HashConstant(token))
            return constant;
    } else if (SlcIsICodeNumber(token)) {
        if (const auto number = NumberOf<double>(token))
            return SlcLexType::Float(*number);
    } else if (SlcIsICodeWordChar(token.front())) {
        return m_scope.FindVariable(token);
    }
    Fail("an operand");
}

SlcICodeParser::Operands SlcICodeParser::Arguments()
{
    Expect("(");
    Operands arguments;
    if (Accept(")"))
        return arguments;
    do
        arguments.push_back(Operand(Next()));
    while (Accept(","));
    Expect(")");
    return arguments;
}

SlcGridForm SlcICodeParser::Form()
{
    SlcGridForm form;
    form.simd = Accept("simd");
    if (Accept("at"))
        form.condition = Operand(Next());
    return form;
}

SlcLabel SlcICodeParser::Label(const std::string& name)
{
    SlcLabel& label = m_labels[name];
    if (label.Null())
        label = MakeShared<SlcLabelICode>(name);
    return label;
}

SlcLabel SlcICodeParser::NewBracket()
{
    m_brackets.push_back(MakeShared<SlcLabelICode>("bracket " + std::to_string(++m_bracketCount)));
    return m_brackets.back();
}

SlcLabel SlcICodeParser::CloseBracket()
{
    if (m_brackets.empty())
        Fail("an opening bracket");
    SlcLabel label = m_brackets.back();
    m_brackets.pop_back();
    return label;
}

const std::string& SlcICodeParser::Peek() const
{
    if (AtEnd())
        Fail("more");
    return m_tokens[m_next];
}

std::string SlcICodeParser::Next()
{
    std::string token = Peek();
    ++m_next;
    return token;
}

bool SlcICodeParser::Accept(std::string_view token)
{
    const bool isNext = !AtEnd() && m_tokens[m_next] == token;
    m_next += isNext ? 1 : 0;
    return isNext;
}

void SlcICodeParser::Expect(std::string_view token)
{
    if (!Accept(token))
        Fail('\'' + std::string(token) + '\'');
}

void SlcICodeParser::Fail(const std::string& expected) const
{
    std::string text = "expected " + expected + " after '";
    for (std::size_t i = m_next < 6 ? 0 : m_next - 6; i < m_next; ++i)
        text += ' ' + m_tokens[i];
    throw SlcICodeSyntaxError(text + " '");
}
