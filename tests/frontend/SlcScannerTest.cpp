#include "frontend/SlcScanner.h"

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcMissingToken.h"
#include "frontend/SlcTokenValue.h"
#include "grammar.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcSourcePosition.h"

namespace {

SlcTokenValue yylval;

int yylex()
{
    return SlcScanner::Next(yylval);
}

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Makes the scanner read a text as long as the object exists. Resets the counts of reports.
class Source {
public:
    explicit Source(std::string_view text) : m_file(std::tmpfile())
    {
        EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), m_file.get()), text.size());
        std::rewind(m_file.get());
        ResetNbErrorsAndWarnings();
        SlcScanner::Begin(m_file.get());
    }

private:
    std::unique_ptr<std::FILE, Close> m_file;
};

/// Returns the number of read calls of this process; -1 if the system does not count them.
long ReadsSoFar()
{
    std::ifstream counts("/proc/self/io");
    std::string word;
    long count = 0;
    while (counts >> word >> count)
        if (word == "syscr:")
            return count;
    return -1;
}

std::string TokenText(int token)
{
    switch (token) {
    case FLOAT_CONST:
        return "F" + std::to_string(dynamic_cast<SlcFloatConstNode&>(*yylval.node).GetValue());
    case INT_CONST:
        return "I" + std::to_string(dynamic_cast<SlcIntConstNode&>(*yylval.node).GetValue());
    case STRING_CONST:
        return "S" + dynamic_cast<SlcStringLiteralNode&>(*yylval.node).GetText();
    case IDENTIFIER:
        return dynamic_cast<SlcIdentNode&>(*yylval.node).GetName();
    default:
        return token < 256 ? std::string(1, static_cast<char>(token))
                           : "#" + std::to_string(token - LIGHT);
    }
}

/// Returns the tokens of a text, separated by blanks. A keyword or operator of several characters
/// is "#" and its number, counted from that of `light`. "F", "I" or "S" precedes a float, an
/// integer or a string.
std::string Tokens(std::string_view text)
{
    const Source source(text);
    std::string tokens;
    while (const int token = yylex())
        tokens += (tokens.empty() ? "" : " ") + TokenText(token);
    return tokens;
}

std::string Number(int token)
{
    return "#" + std::to_string(token - LIGHT);
}

/// Returns "file:line:column" for each token, separated by blanks. Operators other than `-` and `{`
/// repeat the place before them.
std::string Places(std::string_view text)
{
    const Source source(text);
    std::string places;
    while (yylex() != 0)
        places += (places.empty() ? "" : " ") + (yylval.file ? *yylval.file : std::string()) + ":" +
                  std::to_string(yylval.line) + ":" + std::to_string(yylval.column);
    return places;
}

std::string ErrorOutput(std::string_view text)
{
    testing::internal::CaptureStderr();
    static_cast<void>(Tokens(text));
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(SlcScanner, TakesTheLongestToken)
{
    struct TokenCase {
        std::string text;
        std::string tokens;
    };
    const TokenCase cases[] = {
        {"1.e3 1.5e-3 .5 1e5 1.", "F1000.000000 F0.001500 F0.500000 F100000.000000 F1.000000"},
        {"1.5f 0x10 1e 2e+", "F1.500000 f I0 x10 I1 e I2 e +"},
        {"3.4028235e38", "F340282346638528859811704183484516925440.000000"},
        {"lights light _a9 PI true ifs if",
         "lights " + Number(LIGHT) + " _a9 PI true ifs " + Number(IF)},
        {"a<=b", "a " + Number(LE) + " b"},
        {"a<b==-c", "a < b " + Number(EQ) + " - c"},
        {"a=!b", "a = ! b"},
        {"a+=b-=c*=d/=e", "a " + Number(ADD_ASSIGN) + " b " + Number(SUB_ASSIGN) + " c " +
                              Number(MUL_ASSIGN) + " d " + Number(DIV_ASSIGN) + " e"},
        {"a||b&&c!=d>=e",
         "a " + Number(OR) + " b " + Number(AND) + " c " + Number(NE) + " d " + Number(GE) + " e"},
        {R"("a\"b\\" "" c)", R"(S"a\"b\\" S"" c)"},
        {"a/**/b/* * / ***/c//d\ne", "a b c e"},
        {"a\r\nb\v\fc\td", "a b c d"},
        {"a\n#pragma b c\nd\n#ident \"x\"\ne", "a d e"},
        {"a /* to the end", "a"},
        {"a // to the end", "a"},
    };
    for (const TokenCase& c : cases)
        EXPECT_EQ(Tokens(c.text), c.tokens) << c.text;
}

// The tokens of the rest of a line, from which advice is derived.
TEST(SlcTokensOfLine, AreThoseOfTheScanner)
{
    static const char* const lines[] = {
        "12abc + 0x10 1.5f 1e 2e+ 3.x .5.5 1..2 1e5 2.e-3 1.5e+b",
        R"(x = mix("a \" b", "", "\\") + "c";)",
        "a<=b&&c!=d||-e>=f lights light _a9",
        "a @",
        "a \"b",
    };
    for (const char* line : lines) {
        const Source source(line);
        std::vector<int> tokens;
        testing::internal::CaptureStderr();
        for (int token = yylex(); token != 0 && NbErrors() == 0; token = yylex())
            tokens.push_back(token);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(SlcTokensOfLine(line, 99), tokens) << line;
    }
}

TEST(SlcScanner, FollowsTheLineMarkers)
{
    struct PlaceCase {
        const char* text;
        const char* places;
    };
    static const PlaceCase cases[] = {
        {"a\n b", ":1:1 :2:2"},
        {"# 12 \"x.sl\"\na\nb", "x.sl:12:1 x.sl:13:1"},
        {"#line 12 \"x.sl\"\na", "x.sl:12:1"},
        {"a\n# 3 \"dir with blanks/y.h\" 1 3\nb\n# 2 \"x.sl\" 2\nc",
         ":1:1 dir with blanks/y.h:3:1 x.sl:2:1"},
        {"# 1 \"<built-in>\"\na", "<built-in>:1:1"},
        {"# 5\na", ":2:1"},         // has no name
        {"# \"x.sl\"\na", ":2:1"},  // has no number
        {"# 5 \"x.sl\na", ":2:1"},  // one quote is no name
        {"# 99999999999 \"x.sl\"\na", ":2:1"},
        {"# 2147483647 \"x.sl\"\n\na", "x.sl:2147483647:1"},
        {"/* a\n b */ c\nd", ":2:7 :3:1"},  // comments count their lines
        {"// a\n b", ":2:2"},
        {"#pragma a\nb", ":2:1"},
        {"  # 8 \"x.sl\"\na", "x.sl:8:1"},
        {"a\r\nb", ":1:1 :3:1"},      // both characters end a line
        {"\"a\nb\" c", ":1:5 :1:7"},  // a string does not count its newlines
    };
    for (const PlaceCase& c : cases)
        EXPECT_EQ(Places(c.text), c.places) << c.text;
}

TEST(SlcScanner, SharesOneFileNameAmongItsTokens)
{
    const Source source("# 1 \"x.sl\"\na\n# 1 \"y.h\"\nb\n# 2 \"x.sl\"\nc");
    const std::string* files[3] = {};
    for (const std::string*& file : files) {
        EXPECT_EQ(yylex(), IDENTIFIER);
        file = yylval.file;
    }
    EXPECT_EQ(files[0], files[2]);
    EXPECT_NE(files[0], files[1]);
}

TEST(SlcScanner, DoesNotChangeTheValueForPlainOperators)
{
    const Source source("a\n+\n-\n{");
    yylex();
    yylex();
    EXPECT_EQ(yylval.line, 1);
    EXPECT_NE(yylval.node, nullptr);
    yylex();
    EXPECT_EQ(yylval.line, 3);
    EXPECT_EQ(yylval.node, nullptr);
    yylex();
    EXPECT_EQ(yylval.line, 4);
}

TEST(SlcScanner, ReportsInvalidTokens)
{
    struct ErrorCase {
        const char* text;
        const char* output;
    };
    static const ErrorCase cases[] = {
        {"a\n\tb $ c", ":2: ERROR: Invalid charcacter:\n\n   \tb $ c\n   \t  ^\n"},
        {"\na = \u201Cb", ":2: ERROR: Invalid charcacter:\n\n   a = \u201Cb\n       ^\n"},
        {"\na \xE2\x80", ":2: ERROR: Invalid charcacter:\n\n   a \xE2\x80\n     ^\n"},
        {"\n\"a", ":2: ERROR: Invalid charcacter:\n\n   \"a\n   ^\n"},
        {"\n1e39", ":2: ERROR: Number is too large for a float:\n\n   1e39\n   ^\n"},
        {"\na 2147483648",
         ":2: ERROR: Number is too large for an integer:\n\n   a 2147483648\n     ^\n"},
        // After a line marker, a pragma or a comment the report shows the line at fault. '#' begins
        // a marker only if nothing but blanks precedes it in its line.
        {"# 7 \"x\"\na # b", "x:7: ERROR: Invalid charcacter:\n\n    a # b\n      ^\n"},
        {"#line 7 \"x\"\na $", "x:7: ERROR: Invalid charcacter:\n\n    a $\n      ^\n"},
        {"\n#pragma a\na $", ":3: ERROR: Invalid charcacter:\n\n   a $\n     ^\n"},
        {"\nb // c\na $", ":3: ERROR: Invalid charcacter:\n\n   a $\n     ^\n"},
        {"/*\n*\n\t* */ a $", ":3: ERROR: Invalid charcacter:\n\n   \t* */ a $\n   \t       ^\n"},
    };
    for (const ErrorCase& c : cases)
        EXPECT_EQ(ErrorOutput(c.text), c.output) << c.text;
    EXPECT_EQ(Tokens("a"), "a");

    testing::internal::CaptureStderr();
    EXPECT_EQ(Tokens(std::string_view("a\0b$\xff c", 7)), "a b c");
    EXPECT_EQ(NbErrors(), 3);
    testing::internal::GetCapturedStderr();
}

TEST(SlcScanner, ContinuesAfterAnUnterminatedString)
{
    struct QuoteCase {
        const char* text;
        const char* tokens;
        int errors;
    };
    static const QuoteCase cases[] = {
        {R"(a "b)", "a b", 1},
        {R"(a "b" c\" d)", R"(a S"b" c d)", 2},
        {R"(a "b\" c)", "a b c", 3},
        // A backslash before a newline ends the search for the closing quote; the literal "d" after
        // it is found.
        {"a \"b\n\\\" c \\\n\"d\"\n\"e", "a b c S\"d\" e", 5},
    };
    for (const QuoteCase& c : cases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(Tokens(c.text), c.tokens) << c.text;
        EXPECT_EQ(NbErrors(), c.errors) << c.text;
        testing::internal::GetCapturedStderr();
    }
}

TEST(SlcScanner, SearchesForTheEndOfAStringOnce)
{
    std::string escapedQuotes = "\"";
    for (int i = 0; i < 200000; ++i)
        escapedQuotes += "\\\"\n";
    testing::internal::CaptureStderr();
    EXPECT_EQ(Tokens(escapedQuotes + "a"), "a");
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(NbErrors(), 400001);
}

// The generated scanner rescans the whole token with each piece that it reads, so the pieces must
// grow with the token.
TEST(SlcScanner, ReadsLongLinesInFewPieces)
{
    const Source source(std::string(std::size_t{1} << 24, '/'));
    const long before = ReadsSoFar();
    if (before < 0)
        GTEST_SKIP() << "the system does not count reads";
    EXPECT_EQ(yylex(), 0);
    EXPECT_LT(ReadsSoFar() - before, 200);
}

TEST(SlcScannerDeathTest, EndsTheProcessAtATokenThatIsTooLong)
{
    const std::string longest(8190, 'a');
    EXPECT_EQ(Tokens("\n" + longest), longest);
    EXPECT_EQ(Tokens(longest + "a"), longest + "a");  // only a later line counts its newline
    EXPECT_EQ(Tokens("# 1 \"a\"\n" + longest + " " + longest), longest + " " + longest);
    EXPECT_EXIT(Tokens("\n" + longest + " "), testing::ExitedWithCode(2),
                "^token too large, exceeds YYLMAX\n:2: ERROR: A token, or a line with its line "
                "break, has more than 8191 characters\n$");
    EXPECT_EXIT(Tokens(longest + "aa"), testing::ExitedWithCode(2),
                "^token too large, exceeds YYLMAX\n:1: ERROR: A token, or a line with its line "
                "break, has more than 8191 characters\n$");
}
