#pragma once

#include <cstddef>
#include <map>
#include <tuple>
#include <vector>

#include "icode/SlcLexType.h"

/// The sets of points that guards select, for one walk over a list. Each set has a number. A set
/// stays what it is if its flag changes later: then a guard of the flag selects another set.
class SlcPointSets {
public:
    /// The current set is that of all points.
    SlcPointSets() { StartAgain(); }

    /// Limits the current set to the points where `flag` has the wanted value, until `Leave`.
    void Enter(const SlcOperand& flag, bool wanted) { m_current.push_back(Select(flag, wanted)); }
    void Leave() { m_current.pop_back(); }
    [[nodiscard]] int Current() const { return m_current.back(); }
    /// Returns the set of all points.
    [[nodiscard]] int All() const { return m_all; }
    /// Returns the points of the current set where `flag` has the wanted value.
    [[nodiscard]] int Select(const SlcOperand& flag, bool wanted)
    {
        return Subset(Current(), flag, wanted);
    }
    /// Returns the points of the whole grid where `flag` has the wanted value.
    [[nodiscard]] int SelectFromAll(const SlcOperand& flag, bool wanted)
    {
        return Subset(m_all, flag, wanted);
    }

    /// For an instruction that writes a flag: guards of it select other points from now on.
    void Change(const SlcOperand& flag) { ++m_flags[flag].changes; }
    /// For an instruction that sets a flag to false at the points of the current set.
    void Clear(const SlcOperand& flag);
    /// After `Change` by an instruction that computes all points of the current set: among them,
    /// the flag is true at most in this set.
    void Limit(const SlcOperand& flag, int set) { AddFact(flag, {Current(), set}); }
    /// For a label: nothing is known about the sets before it. The guards stay open.
    void StartAgain();

    /// True for a set from before the last label, and for -1.
    [[nodiscard]] bool IsForgotten(int set) const { return set < m_all; }
    /// True if all points of the first set are known to be in the second.
    [[nodiscard]] bool IsWithin(int inner, int outer) const;
    /// Returns the set of which the two sets, known to be disjoint, are the parts; -1 if they are
    /// not the points of a set where a flag is true and where it is false.
    [[nodiscard]] int UnionOfParts(int first, int second) const;

private:
    /// Where the flag is true among the points of `among`, the point is in `set`.
    struct Fact {
        int among;
        int set;
    };
    struct Flag {
        int changes = 0;
        int changesOfFacts = 0;  // the value of `changes` for which the facts hold
        std::vector<Fact> facts;
    };
    /// A guard: the points of the set `whole` where the flag has the wanted value, after so many
    /// changes of the flag.
    struct Key {
        int whole = -1;
        SlcOperand flag;  // null for a set that is not known as a guard
        int changes = 0;
        bool wanted = false;

        bool operator<(const Key& other) const
        {
            return std::tie(whole, flag, changes, wanted) <
                   std::tie(other.whole, other.flag, other.changes, other.wanted);
        }
    };
    struct Set {
        std::vector<int> supersets;
        Key key;
        int rest = -1;  // the other points of the set that the guard limited, if it is known
    };

    [[nodiscard]] int Subset(int whole, const SlcOperand& flag, bool wanted)
    {
        return SetOf({whole, flag, m_flags[flag].changes, wanted});
    }
    [[nodiscard]] int SetOf(const Key& key);
    void AddFact(const SlcOperand& flag, const Fact& fact);

    std::vector<Set> m_sets;
    std::map<Key, int> m_known;          // for look-up only
    std::map<SlcOperand, Flag> m_flags;  // for look-up only
    std::vector<int> m_current;          // the nested guards; the first is `m_all`
    int m_all = -1;
};
