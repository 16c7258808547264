#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frontend/SlcParserTables.h"
#include "frontend/SlcTokenValue.h"
#include "support/SlcDiagnostics.h"

/// Watches the tokens on their way to the parser, to say more of a syntax error than the parser
/// knows: the token by name, and what was most likely meant. It also lets the recovery from a fault
/// in the head of a statement begin at the block after it, and hides from the parser tokens that
/// would only cause more reports of the same fault: the rest of the head of a `for`, the body of a
/// class, the `else` of a call with a block.
class SlcParseAdvice {
public:
    /// The next token from the scanner, its value and the range of its text.
    [[nodiscard]] int Next(SlcTokenValue& value, SlcTextRange& range);
    /// The parser's stack, as it is before the next token: reductions that any token selects lose
    /// what could have followed.
    template <class State>
    void KeepStates(const State* first, const State* end)
    {
        if (!m_isShown)
            return;
        m_states.clear();
        if (end - first <= k_deepest)
            m_states.assign(first, end);
    }
    /// The last token is a syntax error. Returns the advice, which is empty unless advice is shown.
    [[nodiscard]] std::string Refused(const SlcParserTables& tables);
    /// The same where the grammar itself reports that a ";" is missing; empty if that is all.
    [[nodiscard]] std::string Missing(const SlcParserTables& tables) const;
    /// From here on a brace that ends what the parser drops also closes its block, and the end of
    /// the source closes those that are open: more of a source with faults can be read, while what
    /// is reported of it may follow from the first fault.
    /// Faults that the parser cannot go on after are repaired as `repairs` say, in the order of the
    /// source. From here on advice is made, whether or not it is shown.
    struct Repair {
        std::size_t at = 0;  // counts the tokens of the source
        int token = 0;       // inserted before that one; 0: that one is left out
    };
    void KeepBlocks(std::vector<Repair> repairs);
    /// With which the parser, which has given up, would go on; none at the end of the source.
    [[nodiscard]] std::optional<Repair> NextRepair() const;
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
    /// The code whose tokens are hidden from the parser.
    enum class Drops { Nothing, HeadOfFor, Definition, Else };
    enum class Pending { None, Separator, Block };

    [[nodiscard]] static SlcTextRange RangeOfToken();
    /// The next one that is not dropped.
    [[nodiscard]] int ReadKept();
    /// The first token after the dropped part of the head of a `for`.
    [[nodiscard]] int ReadAfterHead();
    /// The last token of a statement or definition, of which some tokens have been read.
    [[nodiscard]] int ReadToEnd();
    /// The token passed to the parser in place of the next one while tokens are dropped.
    [[nodiscard]] int Resume(int token);
    /// The last token, a brace, begins the block of a head with a fault.
    [[nodiscard]] bool BeginsBlock() const;
    /// Keeps that brace for the parser.
    void KeepBlock();
    /// Keeps another brace, since the parser takes the last one for the end of what it drops.
    void KeepEnd();
    /// The brace that closes the innermost block at the end of the source.
    [[nodiscard]] int CloseBrace();

    /// A token of the scanner, for the ring.
    [[nodiscard]] int Read();
    /// The next token of the scanner that no repair leaves out.
    [[nodiscard]] int Scan();
    /// True if the next repair inserts a token before the next one.
    [[nodiscard]] bool Inserts() const;
    /// That token.
    [[nodiscard]] int Insert(SlcTokenValue& value, SlcTextRange& range);
    /// Enters a token into the ring.
    void Keep(int code);
    /// What the parser could take instead of what it refuses; 0 for nothing.
    [[nodiscard]] int Replacement(const SlcParserTables& tables) const;
    /// Keeps the fields below up with the tokens: each of the next four its part.
    void Follow(const Token& token);
    void FollowHead(const Token& token);
    void FollowParenthesis(const Token& token);
    void FollowBrace(const Token& token);
    void FollowCondition(const Token& token);

    /// The most likely meaning, from the first of the next functions that knows one; empty if none
    /// does.
    [[nodiscard]] std::string Hint(const SlcParserTables& tables) const;
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
    // `f(a b)`, `float f(float x {`
    [[nodiscard]] std::string HintOnMissing(const SlcParserTables& tables) const;
    // `surface () {}`, `float f(float x, float y)`
    [[nodiscard]] std::string HintOnDefinitions() const;
    // `return;`, `x == 1;`, a line without its `;`
    [[nodiscard]] std::string HintOnStatements() const;

    /// The separator or bracket that is missing before the last token; 0 for none.
    [[nodiscard]] int MissingToken(const SlcParserTables& tables) const;
    /// "unexpected 'x'", and the hint if there is one.
    [[nodiscard]] std::string AdviceWith(const std::string& hint) const;
    /// The token so many places before the last one.
    [[nodiscard]] const Token& Before(std::size_t places) const;

    bool m_isShown = AdviceIsShown();                  // asked once, as no parse changes it
    static constexpr std::ptrdiff_t k_deepest = 1000;  // of deeper stacks nothing is said
    std::vector<std::int16_t> m_states;
    SlcTokenValue* m_value = nullptr;  // where the parser wants that of the next token
    static constexpr std::size_t k_kept = 8;
    Token m_tokens[k_kept];  // a ring
    std::size_t m_count = 0;

    struct Parenthesis {
        int token;         // before it
        std::string text;  // the same
    };
    std::vector<Parenthesis> m_parentheses;  // that are open
    std::string m_called;                    // before the one that was closed last
    std::vector<Brace> m_braces;             // that are open
    Brace m_lastClosed;                      // what the last closing brace matched
    int m_lastClosing = 0;                   // its line
    Brace m_suspect;                         // an open brace whose match is not indented like it
    Drops m_drops = Drops::Nothing;
    std::size_t m_depth = 0;  // of braces, where dropping ends

    int m_head = 0;  // the word that began the head of a statement, "(" of a function, 0 in none
    int m_headBefore = 0;         // the same before the last token
    std::size_t m_headDepth = 0;  // open parentheses around it
    int m_semicolons = 0;         // in it
    bool m_headIsClosed = false;  // its parenthesis

    bool m_isRecovering = false;            // the parser drops tokens after a fault
    int m_faultHead = 0;                    // that the fault is in
    bool m_dropsElse = false;               // if it comes next
    std::vector<std::size_t> m_blocksOfIf;  // open braces in those whose head had a fault
    Pending m_pending = Pending::None;      // what the parser gets before the next token
    int m_pendingBrace = '{';
    SlcTokenValue m_blockValue = {};
    bool m_keepsBlocks = false;
    std::vector<Repair> m_repairs;
    std::size_t m_nextRepair = 0;  // in `m_repairs`
    std::size_t m_scanned = 0;     // tokens of the source
    Repair m_found;                // for the last fault
    int m_given = 0;               // the last token that the parser got

    Condition m_condition = Condition::None;  // of an `if` or a loop
    std::size_t m_conditionDepth = 0;         // open parentheses around it
    bool m_compared = false;                  // since its beginning, or its last `&&` or `||`
    bool m_comparison = false;                // in the statement, outside of such a condition

    // The state before the last token.
    std::size_t m_openParentheses = 0;
    bool m_lacksComparison = false;  // a condition that ends or goes on with that token
    bool m_strayComparison = false;  // the statement holds a comparison outside of a condition
};
