#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frontend/SlcParserTables.h"
#include "frontend/SlcTokenValue.h"
#include "support/SlcDiagnostics.h"

/// A filter between scanner and parser that makes advice on syntax errors: the name of the rejected
/// token, and what was most likely meant. It also improves error recovery: after a fault in the
/// head of a statement, such as `if (x > 1`, parsing resumes at the following block. Tokens that
/// would only lead to more reports of the same fault are not passed on: the rest of the head of a
/// `for`, a class or structure of a later revision of the language, and the `else` of a call with a
/// block or of an `if` with a faulty head.
class SlcParseAdvice {
public:
    /// Returns the next token for the parser. Sets `range` to the range of its text and, if the
    /// token has a value, `value`. Neither means anything for a ";" inserted after a faulty head.
    /// Ends the compilation with status 2 (`EndCompilation`) if a token or a line is too long.
    [[nodiscard]] int Next(SlcTokenValue& value, SlcTextRange& range);
    /// Records the parser's stack before the parser reads the next token, if advice is shown.
    /// Later, default reductions, which do not depend on the token, could hide which tokens were
    /// acceptable.
    template <class State>
    void KeepStates(const State* first, const State* end)
    {
        if (!m_isShown)
            return;
        m_states.clear();
        if (end - first <= k_deepest)
            m_states.assign(first, end);
    }
    /// Handles a syntax error at the last token. Returns the advice; empty unless advice is shown.
    [[nodiscard]] std::string Rejected(const SlcParserTables& tables);
    /// Returns advice for a missing ";" that the grammar itself reports, if another token is more
    /// likely to be missing; otherwise, and unless advice is shown, empty.
    [[nodiscard]] std::string Missing(const SlcParserTables& tables) const;
    /// A change of the source's tokens that repairs a fault after which the parser cannot continue.
    struct Repair {
        std::size_t at = 0;  // index of a token in the source
        int token = 0;       // inserted before the token at `at`; 0 drops that token instead
    };
    /// Makes the parser read more of a source with faults; later reports may be consequences of the
    /// first fault. Applies `repairs`, which are in source order. A brace that ends what the parser
    /// drops also closes its block, and the end of the source closes all open blocks. Advice is
    /// made from here on, whether or not it is shown.
    void KeepBlocks(std::vector<Repair> repairs);
    /// Returns a repair with which the parser, which has given up, could continue. Returns nothing
    /// if the parser has read no token or the whole source, or if an earlier repair is at a later
    /// token.
    [[nodiscard]] std::optional<Repair> NextRepair() const;
    /// Drops an `else` that follows a call with a block, and the statement of the `else`. Call it
    /// after that call has been reported; the last token must end the block.
    void RejectedBlock();

private:
    struct Token {
        int code = 0;
        int line = 0;
        std::string text;              // only if advice is shown
        bool opensDefinition = false;  // the token begins a definition of a later revision
    };
    struct Brace {
        int line = 0;
        int indent = 0;  // of the line
    };
    enum class Condition { None, Open, Closed };
    /// The code whose tokens are not passed to the parser.
    enum class Drops { Nothing, HeadOfFor, Definition, Else };
    enum class Pending { None, Separator, Block };

    /// Reads a token and only logs it; used until the first fault, unless advice is shown.
    [[nodiscard]] int NextLogged(SlcTokenValue& value, SlcTextRange& range);
    /// Follows the tokens that have only been logged, and all later ones.
    void CatchUp();
    /// Does the same as `Next`, and follows the tokens.
    [[nodiscard]] int NextFollowed(SlcTokenValue& value, SlcTextRange& range);
    [[nodiscard]] static SlcTextRange RangeOfToken();
    /// Reads the next token that is not dropped.
    [[nodiscard]] int ReadKept();
    /// Reads up to the first token after the dropped part of the head of a `for`.
    [[nodiscard]] int ReadAfterHead();
    /// Reads up to the last token of a statement or definition that has been read in part.
    [[nodiscard]] int ReadToEnd();
    /// While the parser drops tokens: returns the token to pass to the parser instead of `token`.
    [[nodiscard]] int Resume(int token);
    /// True if the last token, a brace, begins the block after a head with a fault.
    [[nodiscard]] bool BeginsBlock() const;
    /// Saves the brace that begins such a block, to pass it to the parser next.
    void KeepBlock();
    /// Saves a second closing brace, since the parser uses the first to end what it drops.
    void KeepEnd();
    /// Returns a brace that closes the innermost block at the end of the source.
    [[nodiscard]] int CloseBrace();

    /// Reads a token from the scanner into `m_tokens`.
    [[nodiscard]] int Read();
    /// Reads tokens from the scanner up to one that no repair drops, and returns it.
    [[nodiscard]] int Scan();
    /// True if the next repair inserts a token here.
    [[nodiscard]] bool Inserts() const;
    /// Returns the token to insert, which has an empty range after the last token; an inserted
    /// number is 0.
    [[nodiscard]] int Insert(SlcTokenValue& value, SlcTextRange& range);
    /// Adds the last token to `m_tokens` and updates the state.
    void Keep(int code);
    /// Returns the place in `m_tokens` for the next token, which is that of the oldest one.
    [[nodiscard]] Token& NextPlace() { return m_tokens[m_count % k_kept]; }
    /// Returns a token to insert so that the rejected one becomes acceptable; 0 if none would help.
    [[nodiscard]] int Replacement(const SlcParserTables& tables) const;
    /// Updates the state for a token; each of the next four functions updates a part of it.
    void Follow(const Token& token);
    void FollowHead(const Token& token);
    void FollowParenthesis(const Token& token);
    void FollowBrace(const Token& token);
    void FollowCondition(const Token& token);

    /// Returns the advice of the first of the next functions that recognizes the mistake; empty if
    /// none does. The comment of each function shows examples of its mistakes.
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
    // Parentheses and braces that do not match.
    [[nodiscard]] std::string HintOnBraces() const;
    // `f(a b)`, `float f(float x {`
    [[nodiscard]] std::string HintOnMissing(const SlcParserTables& tables) const;
    // `surface () {}`, `float f(float x, float y)`
    [[nodiscard]] std::string HintOnDefinitions() const;
    // `return;`, `x == 1;`, a line without its `;`
    [[nodiscard]] std::string HintOnStatements() const;

    /// Returns the separator or bracket that is missing before the last token; 0 for none.
    [[nodiscard]] int MissingToken(const SlcParserTables& tables) const;
    /// Returns "unexpected 'x'", and the hint if there is one.
    [[nodiscard]] std::string AdviceWith(const std::string& hint) const;
    /// Returns the token that is `places` before the last one; an empty one if it is not kept.
    [[nodiscard]] const Token& Before(std::size_t places) const;

    bool m_isShown = AdviceIsShown();                  // true if advice is made; queried once
    static constexpr std::ptrdiff_t k_deepest = 1000;  // deeper stacks are not recorded
    std::vector<std::int16_t> m_states;
    SlcTokenValue* m_value = nullptr;  // destination for the next token's value
    static constexpr std::size_t k_kept = 8;
    Token m_tokens[k_kept];   // a ring buffer of the last tokens
    std::size_t m_count = 0;  // number of tokens written to `m_tokens`

    struct Parenthesis {
        int token;         // the token before the parenthesis
        std::string text;  // text of that token
    };
    std::vector<Parenthesis> m_parentheses;  // open parentheses
    std::string m_called;                    // text before the last closed pair of parentheses
    std::vector<Brace> m_braces;             // open braces
    Brace m_lastClosed;                      // the match of the last closing brace
    int m_lastClosing = 0;                   // line of the last closing brace
    Brace m_suspect;                         // the first brace whose match is indented less
    Drops m_drops = Drops::Nothing;
    std::size_t m_depth = 0;  // number of open braces at which dropping ends

    int m_head = 0;        // keyword of the current statement head, "(" for a function; 0 for none
    int m_headBefore = 0;  // `m_head` before the last token
    std::size_t m_headDepth = 0;  // number of parentheses open before the head
    int m_semicolons = 0;         // number of ";" in the head of a `for`
    bool m_headIsClosed = false;  // the head's closing parenthesis has been read

    bool m_isRecovering = false;            // the parser drops tokens after a fault
    int m_faultHead = 0;                    // head in which the last fault is; 0 for none
    bool m_dropsElse = false;               // an `else` is dropped if it is the next token
    std::vector<std::size_t> m_blocksOfIf;  // brace depths of blocks of an `if` with a faulty head
    Pending m_pending = Pending::None;      // what is passed to the parser before the next token
    int m_pendingBrace = '{';
    SlcTokenValue m_blockValue = {};
    bool m_keepsBlocks = false;
    bool m_isFollowing = m_isShown;  // false up to the first fault, unless advice is shown
    std::vector<Repair> m_repairs;
    std::size_t m_nextRepair = 0;  // index in `m_repairs`
    std::size_t m_scanned = 0;     // number of tokens read from the scanner
    Repair m_found;                // repair of the last fault
    int m_given = 0;               // the last token passed to the parser

    std::vector<std::int16_t> m_logged;           // the tokens that are not followed yet
    const SlcSyntaxNode* m_lastNode = nullptr;    // the name, if the last of these is a name
    const SlcSyntaxNode* m_nodeBefore = nullptr;  // the same for the one before it

    Condition m_condition = Condition::None;  // the condition of an `if` or a loop
    std::size_t m_conditionDepth = 0;         // number of parentheses open before the condition
    bool m_compared = false;    // a comparison follows its start, or its last `&&` or `||`
    bool m_comparison = false;  // a comparison outside of a condition, not followed by "?"

    // The state before the last token.
    std::size_t m_openParentheses = 0;
    bool m_lacksComparison = false;  // that token ends or continues a condition without comparison
    bool m_strayComparison = false;  // `m_comparison` before that token
};
