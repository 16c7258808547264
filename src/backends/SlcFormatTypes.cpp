// Decides whether a format string states the types of its arguments correctly, so that the call
// needs no list of types: each conversion must read as many floats as its argument has, or a string
// if the argument is one, and none may read past the last argument.
//
// Tested by tests/backends/CStatementsTest.cpp, PassesTypesThatTheFormatDoesNotState.

#include "backends/SlcFormatTypes.h"

#include <cctype>
#include <cstring>

#include "backends/SlcLocalFacts.h"

namespace {

struct TypeLetter {
    bool (SlcTypeNode::*test)() const;
    char letter;
};

// clang-format off
constexpr TypeLetter k_typeLetters[] = {
    {&SlcTypeNode::IsPointType,  'p'},
    {&SlcTypeNode::IsColorType,  'c'},
    {&SlcTypeNode::IsMatrixType, 'm'},
    {&SlcTypeNode::IsStringType, 's'},
};
// clang-format on

char LetterOf(const SlcOperand& operand)
{
    for (const TypeLetter& row : k_typeLetters)
        if ((ElementType(operand)->*row.test)())
            return row.letter;
    return 'f';
}

/// Maps conversions that read the same values to one letter.
char ReadAs(char conversion)
{
    switch (conversion) {
    case 'd':
        return 'f';
    case 'c':
        return 'p';
    default:
        return conversion;
    }
}

/// Returns the next conversion of a format at or after `place`, and advances `place` past it; 0 at
/// the end.
char NextConversion(const std::string& format, std::size_t& place)
{
    while (place + 1 < format.size()) {
        if (format[place++] != '%')
            continue;
        const char c = format[place];
        if (c == '%')
            ++place;
        else if (std::strchr("fdpcms", c))
            return format[place++];
    }
    return 0;
}

/// True if the literal has a backslash before a digit: an octal escape may stand for a percent
/// sign.
bool HasOctalEscape(const std::string& literal)
{
    for (std::size_t i = 0; i + 1 < literal.size(); ++i) {
        if (literal[i] != '\\')
            continue;
        if (std::isdigit(static_cast<unsigned char>(literal[++i])))
            return true;
    }
    return false;
}

}  // namespace

std::string SlcTypeLetters(const std::deque<SlcOperand>& args)
{
    std::string letters;
    for (const SlcOperand& arg : args)
        letters += LetterOf(arg);
    return letters;
}

bool SlcFormatMatches(const std::deque<SlcOperand>& args)
{
    if (!args.front()->IsString() || HasOctalEscape(args.front()->GetString()))
        return false;
    const std::string& format = args.front()->GetString();
    std::size_t place = 0;
    for (std::size_t k = 1; k < args.size(); ++k) {
        const char conversion = NextConversion(format, place);
        if (conversion == 0)
            return true;  // the other arguments are not read
        if (ReadAs(conversion) != ReadAs(LetterOf(args[k])))
            return false;
    }
    // A conversion without an argument would read past the list.
    return NextConversion(format, place) == 0;
}
