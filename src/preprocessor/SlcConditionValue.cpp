// Precedence climbing with one table of binary operators (Pratt, "Top down operator precedence",
// 1973). An operand that cannot affect the result, such as the right one of `0 && 1 / 0`, is
// parsed, but a division by zero in it is not reported.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcConditionValue.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace {

using enum SlcSourceTokenKind;

constexpr int k_mostConditionDepth = 500;

/// All arithmetic uses the unsigned bits; the type determines only how values are compared,
/// divided, shifted right and used as shift counts.
struct Value {
    std::uint64_t bits = 0;
    bool isUnsigned = false;

    [[nodiscard]] std::int64_t Signed() const { return static_cast<std::int64_t>(bits); }
};

/// Thrown after a report, to end the evaluation.
class ConditionFault {};

struct BinaryRow {
    std::string_view sign;
    int level;  // a higher level binds tighter
};

//   sign   level
constexpr BinaryRow k_binary[] = {
    {",", 1},  {"||", 3}, {"&&", 4}, {"|", 5},  {"^", 6},  {"&", 7},   {"==", 8},
    {"!=", 8}, {"<", 9},  {">", 9},  {"<=", 9}, {">=", 9}, {"<<", 10}, {">>", 10},
    {"+", 11}, {"-", 11}, {"*", 12}, {"/", 12}, {"%", 12},
};
constexpr int k_commaLevel = 1;
constexpr int k_choiceLevel = 2;  // of ?:
constexpr int k_noLevel = 0;

int LevelOf(const SlcSourceToken& token)
{
    if (token.kind != Sign)
        return k_noLevel;
    if (token.text == "?")
        return k_choiceLevel;
    for (const BinaryRow& row : k_binary)
        if (row.sign == token.text)
            return row.level;
    return k_noLevel;
}

Value Truth(bool truth)
{
    return {truth ? 1U : 0U, false};
}

/// Counts of 64 and more shift out all bits; a negative count shifts in the other direction.
Value ShiftRight(Value value, std::int64_t count);

Value ShiftLeft(Value value, std::int64_t count)
{
    if (count < 0)
        return ShiftRight(value, count == std::numeric_limits<std::int64_t>::min() ? 64 : -count);
    return {count >= 64 ? 0 : value.bits << count, value.isUnsigned};
}

Value ShiftRight(Value value, std::int64_t count)
{
    if (count < 0)
        return ShiftLeft(value, count == std::numeric_limits<std::int64_t>::min() ? 64 : -count);
    const bool fillsWithOnes = !value.isUnsigned && value.Signed() < 0;
    if (count >= 64)
        return {fillsWithOnes ? ~std::uint64_t{0} : 0, value.isUnsigned};
    if (value.isUnsigned)
        return {value.bits >> count, true};
    return {static_cast<std::uint64_t>(value.Signed() >> count), false};
}

class ConditionReader {
public:
    ConditionReader(SlcPreprocessorRun& run, const SlcSourceToken& directive,
                    const std::vector<SlcSourceToken>& tokens)
        : m_run(run),
          m_directive(directive),
          m_tokens(tokens)
    {
    }

    [[nodiscard]] bool IsTrue()
    {
        if (m_tokens.empty())
            Fail(m_directive, "'#" + std::string(m_directive.text) + "' has no condition");
        const Value value = Read(k_commaLevel);
        if (m_next < m_tokens.size())
            Refuse();
        return value.bits != 0;
    }

private:
    [[noreturn]] void Fail(const SlcSourceToken& token, std::string text)
    {
        m_run.Error(token, std::move(text));
        throw ConditionFault();
    }
    [[noreturn]] void Refuse()
    {
        if (m_next >= m_tokens.size())
            Fail(m_directive,
                 "The condition of '#" + std::string(m_directive.text) + "' is not complete");
        Fail(m_tokens[m_next],
             "'" + std::string(m_tokens[m_next].text) + "' cannot stand there in a condition");
    }

    [[nodiscard]] bool TakeSign(std::string_view sign)
    {
        const bool isHere = m_next < m_tokens.size() && m_tokens[m_next].IsSign(sign);
        m_next += isHere ? 1 : 0;
        return isHere;
    }

    /// Evaluates an expression whose binary operators have at least this level.
    [[nodiscard]] Value Read(int level)
    {
        if (++m_depth > k_mostConditionDepth)
            Fail(m_directive, "The condition is nested too deeply");
        Value left = ReadUnary();
        while (m_next < m_tokens.size()) {
            const SlcSourceToken& sign = m_tokens[m_next];
            const int found = LevelOf(sign);
            if (found == k_noLevel || found < level)
                break;
            ++m_next;
            left = found == k_choiceLevel ? ReadChoice(left) : ReadRight(left, sign, found);
        }
        --m_depth;
        return left;
    }

    [[nodiscard]] Value ReadChoice(Value condition)
    {
        const Value whenTrue = ReadUnless(condition.bits == 0, k_commaLevel);
        if (!TakeSign(":"))
            Refuse();
        const Value whenFalse = ReadUnless(condition.bits != 0, k_choiceLevel);
        const bool isUnsigned = whenTrue.isUnsigned || whenFalse.isUnsigned;
        return {condition.bits != 0 ? whenTrue.bits : whenFalse.bits, isUnsigned};
    }

    [[nodiscard]] Value ReadRight(Value left, const SlcSourceToken& sign, int level)
    {
        const bool isAnd = sign.text == "&&";
        if (isAnd || sign.text == "||") {
            const Value right = ReadUnless((left.bits == 0) == isAnd, level + 1);
            return Truth(isAnd ? left.bits != 0 && right.bits != 0
                               : left.bits != 0 || right.bits != 0);
        }
        return Compute(left, sign, Read(level + 1));
    }

    /// Evaluates an operand. If `isIgnored`, its value does not matter, and a division by zero in
    /// it is not reported.
    [[nodiscard]] Value ReadUnless(bool isIgnored, int level)
    {
        m_ignored += isIgnored ? 1 : 0;
        const Value value = Read(level);
        m_ignored -= isIgnored ? 1 : 0;
        return value;
    }

    [[nodiscard]] Value Compute(Value left, const SlcSourceToken& sign, Value right)
    {
        const std::string_view text = sign.text;
        if (text == ",")
            return right;
        if (text == "<<")
            return right.isUnsigned && right.bits > 63 ? Value{0, left.isUnsigned}
                                                       : ShiftLeft(left, right.Signed());
        if (text == ">>")
            return ShiftRight(left, right.isUnsigned && right.bits > 63 ? 64 : right.Signed());
        const bool isUnsigned = left.isUnsigned || right.isUnsigned;
        left.isUnsigned = right.isUnsigned = isUnsigned;
        if (text == "/" || text == "%")
            return Divide(left, sign, right);
        if (const Value* const compared = Compare(left, text, right))
            return *compared;
        const auto bits = [&]() -> std::uint64_t {
            switch (text.front()) {
            case '+':
                return left.bits + right.bits;
            case '-':
                return left.bits - right.bits;
            case '*':
                return left.bits * right.bits;
            case '&':
                return left.bits & right.bits;
            case '|':
                return left.bits | right.bits;
            default:
                return left.bits ^ right.bits;
            }
        };
        return {bits(), isUnsigned};
    }

    /// Returns null if the sign is not a comparison.
    [[nodiscard]] const Value* Compare(Value left, std::string_view sign, Value right)
    {
        const bool isLess =
            left.isUnsigned ? left.bits < right.bits : left.Signed() < right.Signed();
        const bool isSame = left.bits == right.bits;
        if (sign == "==")
            m_compared = Truth(isSame);
        else if (sign == "!=")
            m_compared = Truth(!isSame);
        else if (sign == "<")
            m_compared = Truth(isLess);
        else if (sign == ">")
            m_compared = Truth(!isLess && !isSame);
        else if (sign == "<=")
            m_compared = Truth(isLess || isSame);
        else if (sign == ">=")
            m_compared = Truth(!isLess);
        else
            return nullptr;
        return &m_compared;
    }

    [[nodiscard]] Value Divide(Value left, const SlcSourceToken& sign, Value right)
    {
        const bool isQuotient = sign.text == "/";
        if (right.bits == 0) {
            if (m_ignored == 0)
                Fail(sign, "Division by zero in a condition");
            return left;
        }
        if (left.isUnsigned)
            return {isQuotient ? left.bits / right.bits : left.bits % right.bits, true};
        // The smallest value divided by -1 has no result in 64 bits.
        if (right.Signed() == -1)
            return {isQuotient ? 0 - left.bits : 0, false};
        return {static_cast<std::uint64_t>(isQuotient ? left.Signed() / right.Signed()
                                                      : left.Signed() % right.Signed()),
                false};
    }

    [[nodiscard]] Value ReadUnary()
    {
        if (m_next >= m_tokens.size())
            Refuse();
        const SlcSourceToken& token = m_tokens[m_next];
        if (token.IsSign("+") || token.IsSign("-") || token.IsSign("~") || token.IsSign("!"))
            return ReadSigned(token.text.front());
        if (TakeSign("(")) {
            const Value value = Read(k_commaLevel);
            if (!TakeSign(")"))
                Refuse();
            return value;
        }
        return ReadOperand(token);
    }

    [[nodiscard]] Value ReadSigned(char sign)
    {
        if (++m_depth > k_mostConditionDepth)
            Fail(m_directive, "The condition is nested too deeply");
        ++m_next;
        Value value = ReadUnary();
        --m_depth;
        if (sign == '-')
            value.bits = 0 - value.bits;
        else if (sign == '~')
            value.bits = ~value.bits;
        else if (sign == '!')
            value = Truth(value.bits == 0);
        return value;
    }

    [[nodiscard]] Value ReadOperand(const SlcSourceToken& token)
    {
        if (token.kind == Number)
            return ++m_next, ReadNumber(token);
        if (token.kind == Character)
            return ++m_next, ReadCharacter(token);
        if (token.kind != Name)
            Refuse();
        ++m_next;
        return {};
    }

    [[nodiscard]] Value ReadNumber(const SlcSourceToken& token)
    {
        std::string_view text = token.text;
        int base = text.size() > 1 && text.front() == '0' ? 8 : 10;
        if (base == 8 && (text[1] == 'x' || text[1] == 'X' || text[1] == 'b' || text[1] == 'B')) {
            base = text[1] == 'x' || text[1] == 'X' ? 16 : 2;
            text.remove_prefix(2);
        }
        Value value;
        const auto [end, fault] =
            std::from_chars(text.data(), text.data() + text.size(), value.bits, base);
        const std::string_view suffix = text.substr(static_cast<std::size_t>(end - text.data()));
        const bool isUnsigned = suffix.find_first_of("uU") != std::string_view::npos;
        if (fault != std::errc() || !IsSuffix(suffix))
            Fail(token, "'" + std::string(token.text) + "' is no integer of 64 bits");
        value.isUnsigned =
            isUnsigned || value.bits > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        return value;
    }

    /// True for an optional `u` and an optional `l` or `ll`, in either order and either case.
    [[nodiscard]] static bool IsSuffix(std::string_view suffix)
    {
        const std::size_t unsignedCount = suffix.starts_with('u') || suffix.starts_with('U') ||
                                          suffix.ends_with('u') || suffix.ends_with('U');
        std::string_view rest = suffix;
        if (unsignedCount > 0 && (rest.front() == 'u' || rest.front() == 'U'))
            rest.remove_prefix(1);
        else if (unsignedCount > 0)
            rest.remove_suffix(1);
        return rest.empty() || rest == "l" || rest == "L" || rest == "ll" || rest == "LL";
    }

    [[nodiscard]] Value ReadCharacter(const SlcSourceToken& token);

    SlcPreprocessorRun& m_run;
    const SlcSourceToken& m_directive;
    const std::vector<SlcSourceToken>& m_tokens;
    std::size_t m_next = 0;
    int m_depth = 0;
    int m_ignored = 0;  // nesting depth of operands that do not matter
    Value m_compared;
};

struct EscapeRow {
    char letter;
    unsigned int code;
};

//   letter  code
constexpr EscapeRow k_escapes[] = {
    {'n', 10}, {'t', 9},   {'r', 13},  {'a', 7},  {'b', 8},  {'f', 12},
    {'v', 11}, {'\\', 92}, {'\'', 39}, {'"', 34}, {'?', 63}, {'e', 27},
};

/// Removes one character or escape sequence from the front of the text and returns its code, of
/// which an octal or hexadecimal escape sequence keeps only the lowest byte. For an unknown escape
/// sequence, returns the code of the character after the backslash.
unsigned int TakeCharacter(std::string_view& text)
{
    const auto take = [&] {
        const auto c = static_cast<unsigned char>(text.front());
        text.remove_prefix(1);
        return c;
    };
    const unsigned int first = take();
    if (first != '\\' || text.empty())
        return first;
    for (const EscapeRow& row : k_escapes)
        if (row.letter == text.front())
            return take(), row.code;
    const int base = text.front() == 'x' ? 16 : 8;
    if (base == 16)
        take();
    unsigned int code = 0;
    const std::size_t most = base == 16 ? text.size() : 3;
    const auto [end, fault] =
        std::from_chars(text.data(), text.data() + std::min(most, text.size()), code, base);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return fault == std::errc() ? code & 0xff : (text.empty() ? 0 : take());
}

/// Combines several characters as C compilers do: the last one is the lowest byte.
Value ConditionReader::ReadCharacter(const SlcSourceToken& token)
{
    std::string_view text = token.text.substr(1, token.text.size() - 2);
    if (text.empty())
        Fail(token, "A character constant is empty");
    std::uint32_t value = 0;
    int count = 0;
    for (; !text.empty(); ++count)
        value = value << 8 | TakeCharacter(text);
    const std::int64_t number =
        count == 1 ? static_cast<std::int8_t>(value) : static_cast<std::int32_t>(value);
    return {static_cast<std::uint64_t>(number), false};
}

}  // namespace

bool SlcConditionHolds(SlcPreprocessorRun& run, const SlcSourceToken& directive,
                       const std::vector<SlcSourceToken>& tokens)
{
    try {
        return ConditionReader(run, directive, tokens).IsTrue();
    } catch (const ConditionFault&) {
        return false;
    }
}
