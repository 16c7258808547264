#pragma once

#include <cstring>

#include "QxArray.h"
#include "QxCharacterSet.h"

// Regular expressions as small programs, and their compiler. A program has states that accept a
// character, states for conditions such as ^, and states that only lead to other states:
//
//     a(b|c)*      skip, skip, skip, char a, split to the match, split to the second alternative,
//                  skip, char b, jump to the repeat, skip, skip, char c, repeat: split back to the
//                  branch of the alternatives, match
//
// The states of an operand are contiguous, and all jumps are relative, so an operand is repeated by
// copying its states. A slot, which is initially Skip, precedes each operand and each alternative:
// it can become the branch of the operand's repeat, or the branch to the next alternative. So one
// pass with a list of the open groups is enough, without recursion.

/// A state. `value` is the character, the number of the set, or the distance to another state.
struct QxPatternState {
    enum Kind : int {
        Skip,   // to the next state
        Jump,   // to the state at distance `value`
        Split,  // to the next state and to the one at distance `value`
        Character,
        Any,
        Set,
        Begin,  // start of the text; from here to WordEnd: conditions between two characters
        End,
        WordEdge,
        NoWordEdge,
        WordBegin,
        WordEnd,
        Match,
    };
    Kind kind;
    int value;
};

namespace qxpattern {

// Limits: the number of states of a program before `Match`, and the numbers in {m,n}. An expression
// that exceeds them is treated as malformed.
constexpr int k_states = 2000;
constexpr int k_repeats = 1000;

}  // namespace qxpattern

/// A compiled expression.
class QxPatternCode {
public:
    using State = QxPatternState;

    /// Compiles an expression, in place of the previous one. False if it is malformed, or exceeds
    /// the limits of states or repeats; then the program must not be run.
    bool Compile(const char* expression)
    {
        m_states.Clear();
        m_sets.Clear();
        m_groups.Clear();
        m_next = expression;
        m_operand = -1;
        Open();
        while (*m_next != '\0')
            if (!Item() || m_states.Size() > qxpattern::k_states)
                return false;
        if (m_groups.Size() != 1)
            return false;
        Close();
        Add(State::Match, 0);
        FindFirst();
        return true;
    }
    const State& operator[](std::size_t state) const { return m_states[state]; }
    std::size_t Size() const { return m_states.Size(); }
    /// False if no match can start with this character, except at the start of the text.
    bool MayBeginWith(unsigned char c) const { return m_first.Has(c); }
    bool IsInSet(int set, unsigned char c) const { return m_sets[Place(set)].Has(c); }

private:
    struct Group {
        int slot;         // before the group
        int alternative;  // slot before its last alternative
        int jumps;        // last of the chain of jumps from the ends of alternatives; -1 for none
    };

    static std::size_t Place(int number) { return static_cast<std::size_t>(number); }
    int End() const { return static_cast<int>(m_states.Size()); }
    void Add(State::Kind kind, int value) { m_states.Add({kind, value}); }

    /// Compiles the next part: an operand, a repeat, an anchor, or one of ( ) |. False if it is
    /// malformed or a repeat of it is too large.
    bool Item()
    {
        const char c = *m_next++;
        switch (c) {
        case '(':
            m_operand = -1;
            Open();
            return true;
        case ')':
            if (m_groups.Size() == 1)
                return Operand(State::Character, c);
            Close();
            return true;
        case '|':
            NextAlternative();
            return true;
        case '^':
            return Anchor(State::Begin);
        case '$':
            return Anchor(State::End);
        case '*':
            return Repeat(0, -1);
        case '+':
            return Repeat(1, -1);
        case '?':
            return Repeat(0, 1);
        case '{':
            return Bounds();
        case '.':
            return Operand(State::Any, 0);
        case '[':
            return Bracket();
        case '\\':
            return Escape();
        default:
            return Operand(State::Character, static_cast<unsigned char>(c));
        }
    }
    bool Operand(State::Kind kind, int value)
    {
        m_operand = End();
        Add(State::Skip, 0);
        Add(kind, value);
        return true;
    }
    bool Anchor(State::Kind kind)
    {
        m_operand = -1;
        Add(kind, 0);
        return true;
    }
    bool AddSet(const QxCharacterSet& set)
    {
        m_sets.Add(set);
        return Operand(State::Set, static_cast<int>(m_sets.Size()) - 1);
    }

    void Open()
    {
        m_groups.Add({End(), End() + 1, -1});
        Add(State::Skip, 0);
        Add(State::Skip, 0);
    }
    void NextAlternative()
    {
        Group& group = m_groups.Last();
        const int jump = End();
        Add(State::Jump, group.jumps);
        group.jumps = jump;
        m_states[Place(group.alternative)] = {State::Split, End() - group.alternative};
        group.alternative = End();
        Add(State::Skip, 0);
        m_operand = -1;
    }
    void Close()
    {
        const Group group = m_groups.TakeLast();
        Patch(group.jumps);
        m_operand = group.slot;
    }
    /// Makes a chain of jumps or splits lead to the end of the program so far. Until then, the
    /// value of each is the number of the previous one, or -1.
    void Patch(int last)
    {
        while (last >= 0) {
            int& value = m_states[Place(last)].value;
            const int before = value;
            value = End() - last;
            last = before;
        }
    }

    /// Compiles a repeat of the preceding operand; `most` is -1 if there is no limit. False if no
    /// operand precedes, or if it has a repeat already, or if there would be too many states.
    bool Repeat(int least, int most)
    {
        if (m_operand < 0)
            return false;
        const int slot = m_operand;
        const int length = End() - slot - 1;
        m_operand = -1;
        if (most == 0) {
            m_states[Place(slot)] = {State::Jump, length + 1};
            return true;
        }
        int splits = -1;
        if (least == 0) {
            m_states[Place(slot)] = {State::Split, splits};
            splits = slot;
        }
        const int copies = most < 0 ? (least > 1 ? least : 1) : most;
        for (int copy = 1; copy < copies; ++copy) {
            if (End() + length > qxpattern::k_states)
                return false;
            const int split = End();
            Add(State::Skip, 0);
            if (copy >= least) {
                m_states[Place(split)] = {State::Split, splits};
                splits = split;
            }
            for (int i = 0; i < length; ++i)
                m_states.Add(m_states[Place(slot + 1 + i)]);
        }
        if (most < 0)
            Add(State::Split, -length);
        Patch(splits);
        return true;
    }
    /// Compiles the rest of {m}, {m,} or {m,n}, after the brace.
    bool Bounds()
    {
        int least = 0;
        if (!Number(least))
            return false;
        int most = least;
        if (*m_next == ',') {
            ++m_next;
            most = -1;
            if (*m_next != '}' && (!Number(most) || most < least))
                return false;
        }
        return *m_next++ == '}' && Repeat(least, most);
    }
    bool Number(int& number)
    {
        if (!qxpattern::IsDigit(*m_next))
            return false;
        for (number = 0; qxpattern::IsDigit(*m_next) && number <= qxpattern::k_repeats; ++m_next)
            number = 10 * number + (*m_next - '0');
        return number <= qxpattern::k_repeats;
    }

    /// Compiles the rest of a set in brackets.
    bool Bracket()
    {
        QxCharacterSet set = {};
        const bool inverted = *m_next == '^';
        m_next += inverted ? 1 : 0;
        const char* const begin = m_next;
        while (*m_next != ']' || m_next == begin)
            if (*m_next == '\0' || !BracketItem(set))
                return false;
        ++m_next;
        if (inverted)
            set.Invert();
        return AddSet(set);
    }
    bool BracketItem(QxCharacterSet& set)
    {
        if (*m_next == '[' && (m_next[1] == ':' || m_next[1] == '=' || m_next[1] == '.'))
            return ClassInBracket(set);
        const unsigned char first = static_cast<unsigned char>(*m_next++);
        unsigned char last = first;
        if (*m_next == '-' && m_next[1] != ']' && m_next[1] != '\0') {
            last = static_cast<unsigned char>(m_next[1]);
            if (last < first || (last == '[' && m_next[2] != '\0' && std::strchr(":=.", m_next[2])))
                return false;
            m_next += 2;
        }
        for (int c = first; c <= last; ++c)
            set.Add(static_cast<unsigned char>(c));
        return true;
    }
    bool ClassInBracket(QxCharacterSet& set)
    {
        const char* const name = m_next + 2;
        const char* const end = m_next[1] == ':' ? std::strstr(name, ":]") : nullptr;
        const qxpattern::Class* const found =
            end ? qxpattern::FindClass(name, static_cast<std::size_t>(end - name)) : nullptr;
        if (!found)
            return false;
        AddClass(set, found->has);
        m_next = end + 2;
        return true;
    }
    static void AddClass(QxCharacterSet& set, bool (*has)(int))
    {
        for (int c = 0; c < 256; ++c)
            if (has(c))
                set.Add(static_cast<unsigned char>(c));
    }

    /// Collects the characters that a match can start with, except at the start of the text. All
    /// conditions between characters other than Begin are assumed to hold.
    void FindFirst()
    {
        m_first = {};
        QxArray<bool> seen(m_states.Size());
        QxList<int> open;
        open.Add(0);
        while (open.Size() != 0) {
            const int state = open.TakeLast();
            if (seen[Place(state)])
                continue;
            seen[Place(state)] = true;
            const State& at = m_states[Place(state)];
            if (at.kind == State::Jump || at.kind == State::Split)
                open.Add(state + at.value);
            if (at.kind == State::Character)
                m_first.Add(static_cast<unsigned char>(at.value));
            else if (at.kind == State::Set)
                m_first.Add(m_sets[Place(at.value)]);
            else if (at.kind == State::Any || at.kind == State::Match)
                m_first = {{~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u}};
            else if (at.kind != State::Jump && at.kind != State::Begin)
                open.Add(state + 1);
        }
    }

    /// Compiles the character after a backslash: one that denotes a set or a word boundary, or an
    /// escaped character. False for any other letter or digit, and at the end of the expression.
    bool Escape()
    {
        const char c = *m_next;
        if (c == '\0')
            return false;
        ++m_next;
        switch (c) {
        case 'b':
            return Anchor(State::WordEdge);
        case 'B':
            return Anchor(State::NoWordEdge);
        case '<':
            return Anchor(State::WordBegin);
        case '>':
            return Anchor(State::WordEnd);
        case 'd':
        case 'D':
            return Class(qxpattern::IsDigit, c == 'D');
        case 's':
        case 'S':
            return Class(qxpattern::IsSpace, c == 'S');
        case 'w':
        case 'W':
            return Class(qxpattern::IsWord, c == 'W');
        default:
            return !qxpattern::IsAlnum(c) &&
                   Operand(State::Character, static_cast<unsigned char>(c));
        }
    }
    bool Class(bool (*has)(int), bool inverted)
    {
        QxCharacterSet set = {};
        AddClass(set, has);
        if (inverted)
            set.Invert();
        return AddSet(set);
    }

    QxList<State> m_states;
    QxList<QxCharacterSet> m_sets;
    QxCharacterSet m_first = {};
    QxList<Group> m_groups;        // open groups, innermost last
    const char* m_next = nullptr;  // next character of the expression
    int m_operand = -1;            // slot of the operand that a repeat would apply to; -1 for none
};
