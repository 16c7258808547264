#pragma once

#include <string_view>

#include "sqx/SqxCard.h"

// Cards in the notation of the language:
//
//     card       = { attribute } type [ name ] "(" [ parameter { "," parameter } ] ")"
//                  [ "//" meaning ]
//     parameter  = { "optional" | "named" | "output" | "assigned" | "uniform" } type name
//                  [ "[]" | "[" count "]" ] [ "=" default ] [ "..." ]
//
//     @forms(n, n, n, n)   byte-code numbers: plain, _SIMD, _SIMD_IF_TRUE, _IF_TRUE; "-" for none,
//                          which may be left out at the end
//     @carries(parameter, ...)   the parameters of the instruction, if the lowering changes them
//     @shaded @grid @reduce @answer   see `SqxRun`
//     @fold                the compiler may evaluate calls with constant arguments
//     @cheap @vectors @custom   see `SqxKernelKind`
//     @ordered             calls must not be reordered
//     @simd                a call may use the whole-grid form, and must if there is no plain form
//     @uniform(name, ...)  arguments that are uniform in the whole-grid form, like those marked
//                          `uniform`; the others are varying
//     @detail(varying), @detail(uniform)   detail of the result, whatever the arguments are
//     @writes(rule)        which arguments get the detail of the others, see `SqxInlineRule`
//     @reads(name, ...)    predefined variables that are read in addition to the arguments
//     @lights              the lights must have been evaluated for `P`
//     @unused              part of the instruction set; the lowering never emits it
//
// The reader runs when the table is compiled: if it throws, the C++ compiler reports an error at
// the line of the invalid card. Tested by tests/backends/CardTest.cpp.

/// The error in a card.
struct SqxCardFault {
    const char* what;
};

/// Reads one card from left to right.
class SqxCardReader {
public:
    constexpr SqxCardReader(SqxPrimitive primitive, std::string_view text,
                            std::string_view function = {}, std::string_view expression = {})
    {
        m_card.primitive = primitive;
        m_card.text = text;
        m_card.function = function;
        m_card.expression = expression;
    }

    /// Returns the card. Throws an `SqxCardFault` if the text is invalid. Call it only once.
    [[nodiscard]] constexpr SqxCard Read()
    {
        while (Accept("@"))
            ReadAttribute();
        m_card.result = ReadType(Next());
        if (Peek() != "(")
            m_card.name = NextWord();
        m_card.formalCount = ReadParameters();
        if (Accept("//"))
            m_card.meaning = ReadRest();
        if (!Peek().empty())
            throw SqxCardFault{"text after the end of the card"};
        MarkUniform();
        Check();
        return m_card;
    }

private:
    struct TypeRow {
        std::string_view word;
        SqxCardType type;
    };
    struct AttributeRow {
        std::string_view word;
        void (SqxCardReader::*read)();
    };
    struct InlineRow {
        std::string_view word;
        SqxInlineRule rule;
    };

    static constexpr TypeRow k_types[] = {
        {"void", SqxCardType::Void},
        {"float", SqxCardType::Float},
        {"string", SqxCardType::String},
        {"color", SqxCardType::Color},
        {"point", SqxCardType::Point},
        {"vector", SqxCardType::Vector},
        {"normal", SqxCardType::Normal},
        {"matrix", SqxCardType::Matrix},
        {"any", SqxCardType::Any},
        {"any-point", SqxCardType::AnyPoint},
        {"any-vector", SqxCardType::AnyVector},
        {"bool", SqxCardType::Bool},
        {"any-value", SqxCardType::AnyValue},
        {"array", SqxCardType::Array},
        {"reference", SqxCardType::Reference},
        {"number-or-triple", SqxCardType::NumberOrTriple},
        {"place", SqxCardType::Place},
        {"space", SqxCardType::Space},
        {"literal", SqxCardType::Literal},
        {"shadeop", SqxCardType::Shadeop},
    };
    static constexpr InlineRow k_inlineRules[] = {
        {"point-component", SqxInlineRule::PointComponent},
        {"color-component", SqxInlineRule::ColorComponent},
        {"matrix-component", SqxInlineRule::MatrixComponent},
        {"fresnel", SqxInlineRule::Fresnel},
        {"unpack", SqxInlineRule::Unpack},
        {"outputs", SqxInlineRule::Outputs},
    };
    static const AttributeRow k_attributes[18];

    // Tokens: words of letters, digits, "_", "-" and "."; "//"; any other character by itself.

    [[nodiscard]] static constexpr bool IsWordLetter(char c)
    {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '-' || c == '.';
    }
    constexpr void SkipBlanks()
    {
        while (m_next < m_card.text.size() && m_card.text[m_next] == ' ')
            ++m_next;
    }
    /// Returns the next token without consuming it; empty at the end.
    [[nodiscard]] constexpr std::string_view Peek()
    {
        SkipBlanks();
        const std::string_view rest = m_card.text.substr(m_next);
        std::size_t length = 0;
        while (length < rest.size() && IsWordLetter(rest[length]))
            ++length;
        if (length == 0)
            length = rest.starts_with("//") ? 2 : rest.empty() ? 0 : 1;
        return rest.substr(0, length);
    }
    constexpr std::string_view Next()
    {
        const std::string_view token = Peek();
        m_next += token.size();
        return token;
    }
    [[nodiscard]] constexpr bool Accept(std::string_view token)
    {
        if (Peek() != token)
            return false;
        m_next += token.size();
        return true;
    }
    constexpr void Expect(std::string_view token)
    {
        if (!Accept(token))
            throw SqxCardFault{"another character was expected"};
    }
    [[nodiscard]] constexpr SqxCardWord WordAt(std::size_t at, std::size_t length) const
    {
        return {static_cast<unsigned short>(at), static_cast<unsigned short>(length)};
    }
    [[nodiscard]] constexpr SqxCardWord NextWord()
    {
        const std::string_view token = Peek();
        if (token.empty() || !IsWordLetter(token[0]))
            throw SqxCardFault{"a word was expected"};
        m_next += token.size();
        return WordAt(m_next - token.size(), token.size());
    }
    /// Reads the text up to the end of the card, which must not be empty.
    [[nodiscard]] constexpr SqxCardWord ReadRest()
    {
        SkipBlanks();
        const std::size_t at = m_next;
        m_next = m_card.text.size();
        if (m_next == at)
            throw SqxCardFault{"text was expected"};
        return WordAt(at, m_next - at);
    }

    [[nodiscard]] static constexpr SqxCardType ReadType(std::string_view word)
    {
        for (const TypeRow& row : k_types)
            if (row.word == word)
                return row.type;
        throw SqxCardFault{"a type was expected"};
    }
    [[nodiscard]] static constexpr short ReadNumber(std::string_view word)
    {
        int number = 0;
        for (const char c : word) {
            if (c < '0' || c > '9')
                throw SqxCardFault{"a number was expected"};
            number = number * 10 + (c - '0');
        }
        if (word.empty() || number < 1 || number > 9999)
            throw SqxCardFault{"a number was expected"};
        return static_cast<short>(number);
    }

    // Parameters

    /// Reads a list of parameters in parentheses. Returns their number.
    constexpr unsigned char ReadParameters()
    {
        Expect("(");
        const unsigned char before = m_parameters;
        while (!Accept(")")) {
            if (m_parameters > before)
                Expect(",");
            if (m_parameters == SqxCard::k_mostParameters)
                throw SqxCardFault{"too many parameters"};
            m_card.parameters[m_parameters++] = ReadParameter();
        }
        return static_cast<unsigned char>(m_parameters - before);
    }
    constexpr SqxParameter ReadParameter()
    {
        SqxParameter parameter;
        std::string_view word = Next();
        while (IsMarked(parameter, word))
            word = Next();
        parameter.type = ReadType(word);
        parameter.name = NextWord();
        if (Accept("[")) {
            parameter.isArray = Peek() == "]";
            if (!parameter.isArray)
                parameter.count = static_cast<unsigned char>(ReadNumber(Next()));
            Expect("]");
        }
        if (Accept("="))
            parameter.value = NextWord();
        parameter.isRepeated = Accept("...");
        return parameter;
    }
    /// Sets the property that `word` names. Returns false if `word` does not name a property.
    [[nodiscard]] static constexpr bool IsMarked(SqxParameter& parameter, std::string_view word)
    {
        bool* const mark = word == "optional"   ? &parameter.isOptional
                           : word == "named"    ? &parameter.isNamed
                           : word == "output"   ? &parameter.isOutput
                           : word == "assigned" ? &parameter.isAssigned
                           : word == "uniform"  ? &parameter.isUniform
                                                : nullptr;
        if (mark)
            *mark = true;
        return mark != nullptr;
    }

    // Attributes

    constexpr void ReadAttribute()
    {
        const std::string_view word = Next();
        for (const AttributeRow& row : k_attributes)
            if (row.word == word)
                return (this->*row.read)();
        throw SqxCardFault{"an attribute was expected"};
    }
    template <bool SqxCard::*flag>
    constexpr void SetFlag()
    {
        m_card.*flag = true;
    }
    template <SqxRun run>
    constexpr void SetRun()
    {
        m_card.run = run;
    }
    template <SqxKernelKind kernel>
    constexpr void SetKernel()
    {
        m_card.kernel = kernel;
    }
    constexpr void ReadForms()
    {
        Expect("(");
        for (std::size_t form = 0; !Accept(")"); ++form) {
            if (form > 0)
                Expect(",");
            if (form == SqxCard::k_forms)
                throw SqxCardFault{"there are four forms"};
            if (!Accept("-"))
                m_card.numbers[form] = ReadNumber(Next());
        }
    }
    constexpr void ReadCarried() { m_card.carriedCount = ReadParameters(); }
    template <std::size_t most>
    constexpr void ReadNames(std::array<SqxCardWord, most>& names)
    {
        Expect("(");
        for (std::size_t count = 0; count == 0 || !Accept(")"); ++count) {
            if (count > 0)
                Expect(",");
            if (count == most)
                throw SqxCardFault{"too many names"};
            names[count] = NextWord();
        }
    }
    constexpr void ReadReads() { ReadNames(m_card.reads); }
    constexpr void ReadUniform() { ReadNames(m_uniform); }
    constexpr void ReadDetail()
    {
        Expect("(");
        const bool isVarying = Accept("varying");
        if (!isVarying)
            Expect("uniform");
        Expect(")");
        m_card.detail = isVarying ? SqxDetailRule::Varying : SqxDetailRule::Uniform;
        m_card.inlineDetail = isVarying ? SqxInlineRule::Varying : SqxInlineRule::Uniform;
    }
    constexpr void ReadWrites()
    {
        Expect("(");
        const std::string_view word = Next();
        Expect(")");
        for (const InlineRow& row : k_inlineRules) {
            if (row.word != word)
                continue;
            m_card.inlineDetail = row.rule;
            return;
        }
        throw SqxCardFault{"a rule was expected"};
    }

    // Whole cards

    constexpr void MarkUniform()
    {
        for (SqxParameter& parameter : m_card.parameters)
            parameter.isUniformInGrid = parameter.isUniform;
        for (const SqxCardWord word : m_uniform) {
            if (word.length == 0)
                continue;
            SqxParameter* found = nullptr;
            for (std::size_t i = m_card.carriedCount; i < m_parameters; ++i)
                if (m_card.Text(m_card.parameters[i].name) == m_card.Text(word))
                    found = &m_card.parameters[i];
            if (!found || !m_card.hasGridCall || found->isOutput)
                throw SqxCardFault{"@uniform names no input of a function with @simd"};
            found->isUniformInGrid = true;
        }
    }
    constexpr void Check() const
    {
        if (m_card.isFoldable && (m_card.isOrdered || m_card.name.length == 0))
            throw SqxCardFault{"a call of it cannot be evaluated by the compiler"};
        if (m_card.looksAtLights && m_card.reads[0].length == 0)
            throw SqxCardFault{"what looks at lights reads P"};
        if (m_card.kernel != SqxKernelKind::Each && m_card.function.empty() &&
            m_card.expression.empty())
            throw SqxCardFault{"a kind of kernel without a function"};
        if (m_card.name.length > 0)
            for (const SqxParameter& parameter : m_card.Formals())
                if (parameter.type > SqxCardType::AnyVector || parameter.isAssigned)
                    throw SqxCardFault{"a type of instructions alone in a function"};
        for (const std::span<const SqxParameter> list : {m_card.Formals(), m_card.Carried()})
            CheckOrder(list);
    }
    /// Required parameters must come first, then optional ones, then named ones. Nothing may follow
    /// a repeated one.
    static constexpr void CheckOrder(std::span<const SqxParameter> list)
    {
        for (std::size_t i = 1; i < list.size(); ++i)
            if (list[i - 1].isRepeated || (list[i - 1].isNamed && !list[i].isNamed) ||
                (list[i - 1].isOptional && !list[i].isOptional && !list[i].isNamed))
                throw SqxCardFault{"the order of the parameters is wrong"};
    }

    SqxCard m_card;
    std::size_t m_next = 0;          // position in the text
    unsigned char m_parameters = 0;  // read so far
    std::array<SqxCardWord, 8> m_uniform{};
};

constexpr SqxCardReader::AttributeRow SqxCardReader::k_attributes[] = {
    {"forms", &SqxCardReader::ReadForms},
    {"carries", &SqxCardReader::ReadCarried},
    {"reads", &SqxCardReader::ReadReads},
    {"uniform", &SqxCardReader::ReadUniform},
    {"detail", &SqxCardReader::ReadDetail},
    {"writes", &SqxCardReader::ReadWrites},
    {"fold", &SqxCardReader::SetFlag<&SqxCard::isFoldable>},
    {"ordered", &SqxCardReader::SetFlag<&SqxCard::isOrdered>},
    {"simd", &SqxCardReader::SetFlag<&SqxCard::hasGridCall>},
    {"lights", &SqxCardReader::SetFlag<&SqxCard::looksAtLights>},
    {"unused", &SqxCardReader::SetFlag<&SqxCard::isUnused>},
    {"cheap", &SqxCardReader::SetKernel<SqxKernelKind::Cheap>},
    {"vectors", &SqxCardReader::SetKernel<SqxKernelKind::Vectors>},
    {"custom", &SqxCardReader::SetKernel<SqxKernelKind::Custom>},
    {"shaded", &SqxCardReader::SetRun<SqxRun::Shaded>},
    {"grid", &SqxCardReader::SetRun<SqxRun::Grid>},
    {"reduce", &SqxCardReader::SetRun<SqxRun::Reduce>},
    {"answer", &SqxCardReader::SetRun<SqxRun::Answer>},
};

/// Reads a card of the table while the table is compiled.
[[nodiscard]] consteval SqxCard SqxReadCard(SqxPrimitive primitive, std::string_view text,
                                            std::string_view function = {},
                                            std::string_view expression = {})
{
    return SqxCardReader(primitive, text, function, expression).Read();
}
