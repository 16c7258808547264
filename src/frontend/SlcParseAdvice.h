#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "frontend/SlcTokenValue.h"

/// Watches the tokens on their way to the parser, to tell more of a syntax error than the parser
/// knows: the token by name, and what was most likely meant. It also keeps tokens from the parser
/// that would only bring further reports of the same fault: the rest of the head of a `for`, the
/// body of a class, the `else` of a call with a block.
class SlcParseAdvice {
public:
    /// The next token from the scanner, its value and where its text stands.
    [[nodiscard]] int Next(SlcTokenValue& value, SlcTextRange& range);
    /// The last token is a syntax error. Gives the advice, empty unless advice is shown.
    [[nodiscard]] std::string Refused();
    /// The last token ended the block of a call, which was reported.
    void RefusedBlock() { m_drops = Drops::Else; }

private:
    struct Token {
        int code = 0;
        int line = 0;
        std::string text;              // kept at warning level 2 only
        bool opensDefinition = false;  // of a later revision, which has a block
    };
    struct Brace {
        int line = 0;
        int indent = 0;  // of the line
    };
    enum class Condition { None, Open, Closed };
    /// What is kept from the parser when it wants the next token.
    enum class Drops { Nothing, HeadOfFor, Definition, Else };

    /// A token of the scanner, for the ring.
    [[nodiscard]] int Read();
    /// The next one that is not dropped.
    [[nodiscard]] int ReadKept();
    /// The first token behind the dropped part of the head of a `for`.
    [[nodiscard]] int ReadBehindHead();
    /// The last token of a statement or definition, of which some tokens have been read.
    [[nodiscard]] int ReadToEnd();
    /// Keeps the fields below up with the tokens: each of the next three its part.
    void Follow(const Token& token);
    void FollowParenthesis(const Token& token);
    void FollowBrace(const Token& token);
    void FollowCondition(const Token& token);

    /// What was most likely meant, of all that the next ones know; empty if none of them does.
    [[nodiscard]] std::string Hint() const;
    // `class a`, `a->b`
    [[nodiscard]] std::string HintOnLaterWords() const;
    // `int i`, `float[3] w`
    [[nodiscard]] std::string HintOnTypes() const;
    // `i++`, `a <> b`, `a ** b`
    [[nodiscard]] std::string HintOnSigns() const;
    // `for (float i = 0; ...)`
    [[nodiscard]] std::string HintOnLoops() const;
    // `if (x)`, `float b = x < 1;`
    [[nodiscard]] std::string HintOnConditions() const;
    // parentheses and braces that do not match
    [[nodiscard]] std::string HintOnBraces() const;
    // `surface () {}`, `float f(float x, float y)`
    [[nodiscard]] std::string HintOnDefinitions() const;
    // `return;`, `x == 1;`, a line without its `;`
    [[nodiscard]] std::string HintOnStatements() const;

    /// The token so many places before the last one.
    [[nodiscard]] const Token& Before(std::size_t places) const;

    SlcTokenValue* m_value = nullptr;  // where the parser wants that of the next token
    static constexpr std::size_t k_kept = 8;
    Token m_tokens[k_kept];  // a ring
    std::size_t m_count = 0;

    struct Parenthesis {
        int token;         // in front of it
        std::string text;  // the same
    };
    std::vector<Parenthesis> m_parentheses;  // that are open
    std::string m_called;                    // in front of the one that was closed last
    std::vector<Brace> m_braces;             // that are open
    Brace m_lastClosed;                      // what the last closing brace matched
    int m_lastClosing = 0;                   // its line
    Brace m_suspect;                         // an open brace whose match is not indented like it
    Drops m_drops = Drops::Nothing;
    std::size_t m_depth = 0;  // of parentheses or braces, where dropping ends

    Condition m_condition = Condition::None;  // of an `if` or a loop
    std::size_t m_conditionDepth = 0;         // open parentheses around it
    bool m_compared = false;                  // since its beginning, or its last `&&` or `||`
    bool m_comparison = false;                // in the statement, outside of such a condition

    // How it stood in front of the last token.
    std::size_t m_openParentheses = 0;
    bool m_lacksComparison = false;  // a condition that ends or goes on with that token
    bool m_strayComparison = false;  // the statement holds a comparison outside of a condition
};
