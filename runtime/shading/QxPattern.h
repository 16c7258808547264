#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "QxPatternCode.h"

/// Runs a compiled expression over a text, tracking the set of all possible states: Ken Thompson,
/// "Regular expression search algorithm", 1968. The time is at most proportional to states times
/// characters, for any expression. A list of open states replaces recursion.
class QxPatternRun {
public:
    using State = QxPatternState;

    /// True if some part of the text matches.
    bool Match(const QxPatternCode& code, const char* text)
    {
        if (m_entered.Size() != code.Size())
            m_entered.Reset(code.Size());
        m_here.Clear();
        m_there.Clear();
        NextPosition();
        for (const char* at = text;; ++at) {
            if (at != text && m_here.Size() == 0)
                while (*at != '\0' && !code.MayBeginWith(static_cast<unsigned char>(*at)))
                    ++at;
            const unsigned char before = at == text ? 0 : static_cast<unsigned char>(at[-1]);
            if (Enter(code, 0, m_here, at == text, before, static_cast<unsigned char>(*at)))
                return true;
            if (*at == '\0')
                return false;
            if (Step(code, static_cast<unsigned char>(*at), static_cast<unsigned char>(at[1])))
                return true;
        }
    }
    /// The number of states that all calls of `Match` have visited so far.
    std::size_t Work() const { return m_work; }

private:
    static constexpr int k_none = -1;
    static constexpr int k_matched = -2;

    /// Advances from the states before a character to those after it. True if a match ends after
    /// the character.
    bool Step(const QxPatternCode& code, unsigned char character, unsigned char after)
    {
        NextPosition();
        m_there.Clear();
        for (const int state : m_here)
            if (Accepts(code, code[static_cast<std::size_t>(state)], character) &&
                Enter(code, state + 1, m_there, false, character, after))
                return true;
        m_here.Swap(m_there);
        return false;
    }
    static bool Accepts(const QxPatternCode& code, const State& state, unsigned char character)
    {
        switch (state.kind) {
        case State::Character:
            return character == state.value;
        case State::Set:
            return code.IsInSet(state.value, character);
        default:
            return true;  // Any: the lists contain no other states
        }
    }
    void NextPosition()
    {
        if (++m_position != 0)
            return;
        m_entered.Reset(m_entered.Size());
        m_position = 1;
    }

    /// Follows a state and those that it reaches without a character, each once per position, and
    /// adds the ones that accept a character to `states`. Stops and returns true if the end of the
    /// expression is among them.
    bool Enter(const QxPatternCode& code, int first, QxList<int>& states, bool begins,
               unsigned char before, unsigned char after)
    {
        m_open.Clear();
        for (int state = first;;) {
            state = Follow(code, state, states, begins, before, after);
            if (state == k_matched)
                return true;
            if (state != k_none)
                continue;
            if (m_open.Size() == 0)
                return false;
            state = m_open.TakeLast();
        }
    }
    /// Visits one state and returns the next one; `k_none` if there is none, `k_matched` at the end
    /// of the expression. The second successor of a split is added to the open states.
    int Follow(const QxPatternCode& code, int state, QxList<int>& states, bool begins,
               unsigned char before, unsigned char after)
    {
        unsigned int& entered = m_entered[static_cast<std::size_t>(state)];
        if (entered == m_position)
            return k_none;
        entered = m_position;
        ++m_work;
        const State& at = code[static_cast<std::size_t>(state)];
        switch (at.kind) {
        case State::Match:
            return k_matched;
        case State::Character:
        case State::Any:
        case State::Set:
            states.Add(state);
            return k_none;
        case State::Jump:
            return state + at.value;
        case State::Split:
            m_open.Add(state + at.value);
            return state + 1;
        case State::Skip:
            return state + 1;
        default:
            return IsMet(at.kind, begins, before, after) ? state + 1 : k_none;
        }
    }
    /// Tests a condition between two characters; the characters before and after the text are 0.
    static bool IsMet(State::Kind kind, bool begins, unsigned char before, unsigned char after)
    {
        const bool wordBefore = qxpattern::IsWord(before);
        const bool wordAfter = qxpattern::IsWord(after);
        switch (kind) {
        case State::Begin:
            return begins;
        case State::End:
            return after == 0;
        case State::WordEdge:
            return wordBefore != wordAfter;
        case State::NoWordEdge:
            return wordBefore == wordAfter;
        case State::WordBegin:
            return !wordBefore && wordAfter;
        default:
            return wordBefore && !wordAfter;
        }
    }

    QxList<int> m_here;
    QxList<int> m_there;
    QxList<int> m_open;
    QxArray<unsigned int> m_entered;  // by state: the last position at which it was entered
    unsigned int m_position = 0;
    std::size_t m_work = 0;
};

/// Caches the last regular expression in compiled form. Most calls of match() use the same
/// expression at all points, and compiling it is much slower than searching.
///
/// The size of this class is part of the interface version, as is the position of `m_expression`,
/// since a host destroys the pattern that a shared object has used. The host frees `m_expression`,
/// and `m_kept` only if `m_isKept` is set, which code built with earlier headers does not do.
class QxPattern {
public:
    QxPattern() = default;
    QxPattern(const QxPattern&) = delete;
    QxPattern& operator=(const QxPattern&) = delete;
    ~QxPattern()
    {
        if (m_isKept)
            delete m_kept;
        std::free(m_expression);
    }

    /// True if the text contains a match of the expression; false if the expression is malformed or
    /// exceeds the limits of `QxPatternCode`. Null counts as an empty text. The syntax is that of
    /// POSIX extended regular expressions over single bytes in the C locale, without collating
    /// elements and equivalence classes; also \d \D \s \S \w \W for sets and \b \B \< \> for word
    /// boundaries. There are no back-references, and an operand has at most one repeat. Throws what
    /// `new` throws.
    bool Match(const char* expression, const char* text)
    {
        expression = expression ? expression : "";
        if (!m_isKept) {
            m_kept = new Kept;
            m_isKept = true;
        }
        if (!m_expression || std::strcmp(m_expression, expression) != 0) {
            std::free(m_expression);
            m_expression = nullptr;  // stays so if there is no memory for what follows
            m_kept->compiles = m_kept->code.Compile(expression);
            m_kept->compileWork += std::strlen(expression) + m_kept->code.Size();
            m_expression = strdup(expression);
        }
        return m_kept->compiles && m_kept->run.Match(m_kept->code, text ? text : "");
    }
    /// The work of all calls of `Match` so far: the number of visited states, plus, for each time
    /// that an expression was compiled, its length and the number of its states.
    std::size_t Work() const { return m_isKept ? m_kept->compileWork + m_kept->run.Work() : 0; }

private:
    struct Kept {
        QxPatternCode code;
        QxPatternRun run;
        bool compiles = false;
        std::size_t compileWork = 0;
    };

    char* m_expression = nullptr;  // null: none yet
    Kept* m_kept = nullptr;
    [[maybe_unused]] char m_unused[56] = {};
    [[maybe_unused]] bool m_unusedFlag = false;  // read by hosts with earlier headers
    bool m_isKept = false;
};
static_assert(sizeof(void*) != 8 || sizeof(QxPattern) == 80, "hosts and objects agree on it");
